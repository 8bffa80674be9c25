# ormalux_drawn(<result> <name> <drawing> <pixels>...): draws an SVG at sizes, as <name>.<pixels>.png in this build's
# folder of icons, and returns the files.
function(ormalux_drawn result name drawing)
  set(commands "")
  set(files "")
  foreach(pixels IN LISTS ARGN)
    set(file ${CMAKE_CURRENT_BINARY_DIR}/icons/${name}.${pixels}.png)
    list(APPEND commands COMMAND ${RSVG_CONVERT} -w ${pixels} -h ${pixels} -o ${file} ${drawing})
    list(APPEND files ${file})
  endforeach()
  add_custom_command(OUTPUT ${files} ${commands} DEPENDS ${drawing} VERBATIM COMMENT "")
  set(${result} ${files} PARENT_SCOPE)
endfunction()

# ormalux_embedded(<target> <prefix> <collection> <file>...): embeds drawn files as <prefix>/<file's name>.
function(ormalux_embedded target prefix collection)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/icons)
  set(entries "")
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME)
    string(APPEND entries "    <file>${name}</file>\n")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${collection}.qrc
    CONTENT "<RCC>\n  <qresource prefix=\"${prefix}\">\n${entries}  </qresource>\n</RCC>\n")
  add_custom_command(OUTPUT ${folder}/${collection}.cpp
    COMMAND Qt6::rcc --no-zstd --name ${collection} --output ${folder}/${collection}.cpp ${folder}/${collection}.qrc
    DEPENDS ${folder}/${collection}.qrc ${ARGN} VERBATIM COMMENT "")
  set_source_files_properties(${folder}/${collection}.cpp PROPERTIES SKIP_AUTOGEN ON)
  target_sources(${target} PRIVATE ${folder}/${collection}.cpp)
endfunction()

# ormalux_icons(<target> <prefix>): draws res/icons/*.svg at the sizes that screens show them (24 pixels at scale factors
# from 1 to 3) and embeds them as <prefix>/<name>.<pixels>.png, so that a host needs no reader of SVG.
find_program(RSVG_CONVERT rsvg-convert)
if(NOT RSVG_CONVERT)
  message(FATAL_ERROR "rsvg-convert is missing, which draws the icons (package librsvg2-bin)")
endif()

function(ormalux_icons target prefix)
  set(drawn "")
  file(GLOB icons CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/res/icons/*.svg)
  foreach(icon IN LISTS icons)
    get_filename_component(name ${icon} NAME_WE)
    ormalux_drawn(files ${name} ${icon} 24 30 36 42 48 60 72)
    list(APPEND drawn ${files})
  endforeach()
  ormalux_embedded(${target} ${prefix} ormalux_icons ${drawn})
endfunction()

# ormalux_program_icon(<program> <windows> <prefix> <drawing>): the program's icon, embedded in the objects of its windows
# as <prefix>/<program>.<pixels>.png, and as the icon of its file where files have one.
function(ormalux_program_icon program windows prefix drawing)
  ormalux_drawn(files ${program} ${drawing} 16 24 32 48 64 128 256)
  ormalux_embedded(${windows} ${prefix} ormalux_program_icon ${files})
  ormalux_file_icon(${program} ${files})
endfunction()
