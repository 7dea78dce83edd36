# Icon, version and manifest of tarvessa.exe, made from the icon that both systems share.
enable_language(RC)
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)

set(icon_source ${CMAKE_SOURCE_DIR}/packaging/icon/tarvessa.svg)
set(pictures)
foreach(size 16 20 24 32 40 48 64 256)
  set(picture ${CMAKE_CURRENT_BINARY_DIR}/tarvessa-${size}.png)
  add_custom_command(OUTPUT ${picture}
    COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${picture} ${icon_source}
    DEPENDS ${icon_source})
  list(APPEND pictures ${picture})
endforeach()
set(TARVESSA_ICON ${CMAKE_BINARY_DIR}/tarvessa.ico)
# The largest stands in the file as it is; older readers expect the others as bitmaps.
list(GET pictures -1 largest)
list(REMOVE_AT pictures -1)
add_custom_command(OUTPUT ${TARVESSA_ICON}
  COMMAND ${ICOTOOL} --create --output ${TARVESSA_ICON} ${pictures} --raw=${largest}
  DEPENDS ${pictures} ${largest})

set(TARVESSA_MANIFEST ${CMAKE_CURRENT_BINARY_DIR}/tarvessa.manifest)
configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/tarvessa.manifest.in ${TARVESSA_MANIFEST} @ONLY)
set(resources ${CMAKE_CURRENT_BINARY_DIR}/tarvessa.rc)
configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/tarvessa.rc.in ${resources} @ONLY)
set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS "${TARVESSA_ICON};${TARVESSA_MANIFEST}")
target_sources(tarvessa PRIVATE ${resources})
