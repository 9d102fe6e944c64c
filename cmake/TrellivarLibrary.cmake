# The warnings of our own code; system headers are exempt because they are included as such. Files that
# are compiled as one may use for a local what another has at its top.
add_library(trellivar_warnings INTERFACE)
target_compile_options(trellivar_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(NOT CMAKE_UNITY_BUILD)
  target_compile_options(trellivar_warnings INTERFACE -Wshadow)
endif()

# compiled_alone(files...): files whose names would meet those of their neighbours if they were compiled as one.
function(compiled_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

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
