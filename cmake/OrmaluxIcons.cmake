# ormalux_icons(<target> <prefix>): draws res/icons/*.svg at the sizes that screens show them (24 pixels at scale factors
# from 1 to 3) and embeds them as <prefix>/<name>.<pixels>.png, so that a host needs no reader of SVG.
find_program(RSVG_CONVERT rsvg-convert)
if(NOT RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert is missing, which draws the icons (package librsvg2-bin)")
endif()

function(ormalux_icons target prefix)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/icons)
  set(drawings "")
  set(entries "")
  file(GLOB icons CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/res/icons/*.svg)
  foreach(icon IN LISTS icons)
    get_filename_component(name ${icon} NAME_WE)
    set(commands "")
    set(sizes "")
    foreach(pixels 24 30 36 42 48 60 72)
      list(APPEND commands COMMAND ${RSVG_CONVERT} -w ${pixels} -h ${pixels} -o ${folder}/${name}.${pixels}.png ${icon})
      list(APPEND sizes ${folder}/${name}.${pixels}.png)
      string(APPEND entries "    <file>${name}.${pixels}.png</file>\n")
    endforeach()
    add_custom_command(OUTPUT ${sizes} ${commands} DEPENDS ${icon} VERBATIM COMMENT "")
    list(APPEND drawings ${sizes})
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/icons.qrc
    CONTENT "<RCC>\n  <qresource prefix=\"${prefix}\">\n${entries}  </qresource>\n</RCC>\n")
  add_custom_command(OUTPUT ${folder}/icons.cpp
    COMMAND Qt6::rcc --no-zstd --name ormalux_icons --output ${folder}/icons.cpp ${folder}/icons.qrc
    DEPENDS ${folder}/icons.qrc ${drawings} VERBATIM COMMENT "")
  set_source_files_properties(${folder}/icons.cpp PROPERTIES SKIP_AUTOGEN ON)
  target_sources(${target} PRIVATE ${folder}/icons.cpp)
endfunction()
