# lumo_package_resources(OUT): sets OUT to the sources of the package's compiled resources. Catalogues are
# compiled from resources/language/*.ts; icons and images of the theme are drawn from *.svg. The collection
# lumo_asset has format version 2, which every Qt 5 reads.
find_program(RSVG_CONVERT rsvg-convert)
if(NOT RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert is missing (Debian package librsvg2-bin): it draws the icons.")
endif()

# lumo_drawings(OUT FOLDER BUILT SIZE): draws a folder's SVG files with SIZE pixels to a folder of the build, and
# sets OUT to their entries for the collection.
function(lumo_drawings out folder built size)
  set(entries "")
  file(GLOB drawings CONFIGURE_DEPENDS ${folder}/*.svg)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${built})
  foreach(drawing ${drawings})
    get_filename_component(name ${drawing} NAME_WE)
    set(image ${CMAKE_CURRENT_BINARY_DIR}/${built}/${name}.png)
    add_custom_command(OUTPUT ${image}
      COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${image} ${drawing}
      DEPENDS ${drawing}
      COMMENT "Drawing ${name}.png")
    string(APPEND entries "    <file alias=\"${name}.png\">${image}</file>\n")
  endforeach()
  string(STRIP "${entries}" entries)
  set(${out} ${entries} PARENT_SCOPE)
endfunction()

function(lumo_package_resources out)
  set(folder ${CMAKE_CURRENT_SOURCE_DIR}/resources)
  set(catalogue_entries "")

  # One catalogue for each language, from one source file for each subsystem. The Chinese one has the findings of a
  # check, whose own language is English.
  foreach(language cn en ru)
    file(GLOB catalogues CONFIGURE_DEPENDS ${folder}/language/*_${language}.ts)
    set(file ${CMAKE_CURRENT_BINARY_DIR}/lumo_${language}.qm)
    add_custom_command(OUTPUT ${file}
      COMMAND Qt5::lrelease -silent ${catalogues} -qm ${file}
      DEPENDS ${catalogues}
      COMMENT "Compiling lumo_${language}.qm")
    string(APPEND catalogue_entries "    <file alias=\"language/lumo_${language}.qm\">${file}</file>\n")
  endforeach()

  set(style_entries "")
  file(GLOB styles CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/style/*.json)
  foreach(style ${styles})
    string(APPEND style_entries "    <file alias=\"${style}\">${folder}/${style}</file>\n")
  endforeach()
  lumo_drawings(icon_entries ${folder}/icons img 96)
  lumo_drawings(theme_entries ${folder}/theme theme 20)

  string(STRIP "${catalogue_entries}" catalogue_entries)
  set(collection ${CMAKE_CURRENT_BINARY_DIR}/lumo_asset.qrc)
  configure_file(${folder}/lumo_asset.qrc.in ${collection} @ONLY)
  qt5_add_resources(sources ${collection} OPTIONS --format-version 2 --compress 9)
  set(${out} ${sources} PARENT_SCOPE)
endfunction()
