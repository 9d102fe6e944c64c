# The warnings of our own code; system headers are exempt because they are included as such.
add_library(trellivar_warnings INTERFACE)
target_compile_options(trellivar_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)

# trellivar_library(NAME LINKS libs... SOURCES files...)
# A static library of one folder. Includes are written from the root: "core/key.h".
function(trellivar_library name)
  cmake_parse_arguments(ARG "" "" "LINKS;SOURCES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE trellivar_warnings)
endfunction()

# trellivar_executable(NAME LINKS libs... SOURCES files...)
function(trellivar_executable name)
  cmake_parse_arguments(ARG "" "" "LINKS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} trellivar_warnings)
endfunction()
