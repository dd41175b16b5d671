# One interface target that every target of the project links: its warnings and nothing else.
add_library(quorvane_warnings INTERFACE)
target_compile_options(quorvane_warnings INTERFACE -Wall -Wextra -Wpedantic)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Optimised code that joins strings is taken for copies of impossible sizes.
  target_compile_options(quorvane_warnings INTERFACE -Wno-restrict -Wno-stringop-overflow)
endif()
if(QUORVANE_WERROR)
  target_compile_options(quorvane_warnings INTERFACE -Werror)
endif()
