# lumo_package_resources(OUT): the package's compiled resources, as sources for the target that embeds
# them. Catalogues are compiled from resources/language/*.ts and icons drawn from resources/icons/*.svg,
# so only their sources are kept. The collection is named lumo_asset, in format version 2, which every
# Qt 5 reads.
find_program(RSVG_CONVERT rsvg-convert)
if(NOT RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert is missing (Debian package librsvg2-bin): it draws the icons.")
endif()

function(lumo_package_resources out)
  set(folder ${CMAKE_CURRENT_SOURCE_DIR}/resources)
  set(catalogue_entries "")
  set(icon_entries "")

  file(GLOB catalogues CONFIGURE_DEPENDS ${folder}/language/*.ts)
  qt5_add_translation(compiled_catalogues ${catalogues})
  foreach(file ${compiled_catalogues})
    get_filename_component(name ${file} NAME)
    string(APPEND catalogue_entries "    <file alias=\"language/${name}\">${file}</file>\n")
  endforeach()

  file(GLOB drawings CONFIGURE_DEPENDS ${folder}/icons/*.svg)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/img)
  foreach(drawing ${drawings})
    get_filename_component(name ${drawing} NAME_WE)
    set(icon ${CMAKE_CURRENT_BINARY_DIR}/img/${name}.png)
    add_custom_command(OUTPUT ${icon}
      COMMAND ${RSVG_CONVERT} --width 96 --height 96 --output ${icon} ${drawing}
      DEPENDS ${drawing}
      COMMENT "Drawing ${name}.png")
    string(APPEND icon_entries "    <file alias=\"${name}.png\">${icon}</file>\n")
  endforeach()

  string(STRIP "${catalogue_entries}" catalogue_entries)
  string(STRIP "${icon_entries}" icon_entries)
  set(collection ${CMAKE_CURRENT_BINARY_DIR}/lumo_asset.qrc)
  configure_file(${folder}/lumo_asset.qrc.in ${collection} @ONLY)
  qt5_add_resources(sources ${collection} OPTIONS --format-version 2 --compress 9)
  set(${out} ${sources} PARENT_SCOPE)
endfunction()
