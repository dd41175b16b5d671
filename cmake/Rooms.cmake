include(GoogleTest)

# The headers that most files include, compiled once and reused by every target with the same flags: one set for the
# rooms and one for the tests. Each is kept small, since every compilation reads it whole.
function(quorvane_precompile name)
  cmake_parse_arguments(PCH "" "" "HEADERS;USES" ${ARGN})
  file(WRITE ${CMAKE_BINARY_DIR}/${name}.cpp "")
  add_library(${name} STATIC ${CMAKE_BINARY_DIR}/${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${name} PRIVATE Qt6::Widgets ${PCH_USES} quorvane_warnings)
  target_precompile_headers(${name} PRIVATE ${PCH_HEADERS})
endfunction()

if(QUORVANE_PCH)
  set(common <algorithm> <functional> <map> <memory> <optional> <string> <vector>
    <QApplication> <QCheckBox> <QComboBox> <QDir> <QFile> <QGridLayout> <QHash> <QKeyEvent> <QLabel> <QLineEdit> <QMenu>
    <QPainter> <QPlainTextEdit> <QPointer> <QPushButton> <QScrollBar> <QTimer> <QToolButton> <QTreeView> <QVBoxLayout>)
  quorvane_precompile(quorvane_pch HEADERS ${common})
  quorvane_precompile(quorvane_pch_tests HEADERS ${common} <gtest/gtest.h> USES GTest::gtest)
endif()

# Lets a target use one of the sets: quorvane_pch without a second argument.
function(quorvane_use_pch target)
  if(NOT QUORVANE_PCH)
    return()
  endif()
  set(pch quorvane_pch)
  if(ARGC GREATER 1)
    set(pch ${ARGV1})
  endif()
  target_precompile_headers(${target} REUSE_FROM ${pch})
  target_link_libraries(${target} PRIVATE Qt6::Widgets)
endfunction()

# Lets AUTOMOC look through files that globbing has found since: it goes by what it looked through the last time.
function(quorvane_follow_new_files target)
  get_target_property(sources ${target} SOURCES)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_sources.txt)
  set(former "")
  if(EXISTS ${list})
    file(READ ${list} former)
  endif()
  if(NOT former STREQUAL "${sources}")
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/timestamp)
    file(WRITE ${list} "${sources}")
  endif()
endfunction()

# A room: one static library from the sources of the current folder, which exposes that folder alone.
# The rooms and libraries named behind USES are the arrows that leave it.
function(quorvane_room name)
  cmake_parse_arguments(ROOM "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(quorvane_${name} STATIC ${sources})
  target_include_directories(quorvane_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(quorvane_${name} PUBLIC ${ROOM_USES} PRIVATE quorvane_warnings)
  quorvane_use_pch(quorvane_${name})
  quorvane_follow_new_files(quorvane_${name})
endfunction()

# One test program from the *Test.cpp files of the current folder; every test in it is a CTest test.
function(quorvane_tests name)
  cmake_parse_arguments(TESTS "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE ${TESTS_USES} GTest::gtest quorvane_warnings)
  quorvane_use_pch(test_${name} quorvane_pch_tests)
  quorvane_follow_new_files(test_${name})
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
