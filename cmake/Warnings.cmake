# One interface target that every target of the project links: its warnings and nothing else.
add_library(quorvane_warnings INTERFACE)
target_compile_options(quorvane_warnings INTERFACE -Wall -Wextra -Wpedantic)
if(QUORVANE_WERROR)
  target_compile_options(quorvane_warnings INTERFACE -Werror)
endif()
