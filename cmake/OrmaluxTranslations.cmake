# ormalux_translations(<target> <prefix> <file.ts>...): compiles translations and embeds them as resources under the
# prefix, packed so that every build of the toolkit can read them. Without the tool (Debian: qt6-l10n-tools) they are
# left out and the texts stay as they are written.
find_program(ORMALUX_LRELEASE NAMES lrelease lrelease6 lrelease-qt6 PATHS /usr/lib/qt6/bin)

function(ormalux_translations target prefix)
  if(NOT ORMALUX_LRELEASE)
    message(WARNING "lrelease not found: ${target} is built without translations")
    return()
  endif()
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/translations)
  set(resources "<RCC><qresource prefix=\"${prefix}\">")
  foreach(source IN LISTS ARGN)
    get_filename_component(name ${source} NAME_WE)
    add_custom_command(OUTPUT ${folder}/${name}.qm
      COMMAND ${ORMALUX_LRELEASE} -silent ${source} -qm ${folder}/${name}.qm
      DEPENDS ${source} VERBATIM)
    list(APPEND compiled ${folder}/${name}.qm)
    string(APPEND resources "<file>${name}.qm</file>")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${target}.qrc CONTENT "${resources}</qresource></RCC>\n" @ONLY)
  add_custom_command(OUTPUT ${folder}/${target}_texts.cpp
    COMMAND Qt6::rcc --no-zstd --name ${target}_texts -o ${folder}/${target}_texts.cpp ${folder}/${target}.qrc
    DEPENDS ${compiled} ${folder}/${target}.qrc VERBATIM)
  set_source_files_properties(${folder}/${target}_texts.cpp PROPERTIES SKIP_AUTOGEN ON)
  target_sources(${target} PRIVATE ${folder}/${target}_texts.cpp)
endfunction()
