# Makes the program an application of macOS: Trellivar.app, with its icon and the program for the
# simulated desk. Included where the programs are made.

set(iconset "${CMAKE_CURRENT_BINARY_DIR}/Trellivar.iconset")
set(icns "${CMAKE_CURRENT_BINARY_DIR}/Trellivar.icns")
set(copies)
set(pictures)
foreach(size 16 32 128 256 512)
  math(EXPR double "2 * ${size}")
  foreach(picture "${size}:icon_${size}x${size}" "${double}:icon_${size}x${size}@2x")
    string(REPLACE ":" ";" picture "${picture}")
    list(GET picture 0 pixels)
    list(GET picture 1 name)
    set(source "${PROJECT_SOURCE_DIR}/packaging/icon/icon-${pixels}.png")
    list(APPEND pictures "${source}")
    list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy "${source}" "${iconset}/${name}.png")
  endforeach()
endforeach()
list(REMOVE_DUPLICATES pictures)
add_custom_command(
  OUTPUT "${icns}"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${iconset}"
  ${copies}
  COMMAND iconutil --convert icns --output "${icns}" "${iconset}"
  DEPENDS ${pictures}
  VERBATIM)

target_sources(trellivar PRIVATE "${icns}")
set_source_files_properties("${icns}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(trellivar PROPERTIES
  MACOSX_BUNDLE ON
  OUTPUT_NAME Trellivar
  MACOSX_BUNDLE_INFO_PLIST "${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in")

# Beside the program that becomes it.
add_dependencies(trellivar trellivar-desk)
add_custom_command(TARGET trellivar POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy "$<TARGET_FILE:trellivar-desk>" "$<TARGET_FILE_DIR:trellivar>"
  VERBATIM)
