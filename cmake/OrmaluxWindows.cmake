# What Windows shows of a program or module: its version under Properties, its icon in a folder.

# ormalux_file_version(<target> <description>): version resources of a program or module; nothing elsewhere.
function(ormalux_file_version target description)
  if(NOT WIN32)
    return()
  endif()
  set(name $<TARGET_FILE_NAME:${target}>)
  get_target_property(type ${target} TYPE)
  set(kind 0x1L) # a program
  if(type MATCHES "_LIBRARY")
    set(kind 0x2L)
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.version.in @ONLY)
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${target}.version.rc
    INPUT ${CMAKE_CURRENT_BINARY_DIR}/${target}.version.in TARGET ${target})
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.version.rc)
endfunction()

# ormalux_file_icon(<target> <png>...): the icon of a program's file at the sizes given; nothing elsewhere.
function(ormalux_file_icon target)
  if(NOT WIN32)
    return()
  endif()
  find_program(ICOTOOL icotool)
  if(NOT ICOTOOL)
    message(FATAL_ERROR "icotool is missing, which makes Windows' icon files (package icoutils)")
  endif()
  set(icon ${CMAKE_CURRENT_BINARY_DIR}/${target}.ico)
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.icon.rc)
  add_custom_command(OUTPUT ${icon} COMMAND ${ICOTOOL} -c -o ${icon} ${ARGN} DEPENDS ${ARGN} VERBATIM COMMENT "")
  file(CONFIGURE OUTPUT ${resource} CONTENT "1 ICON \"${icon}\"\n")
  set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS ${icon})
  target_sources(${target} PRIVATE ${resource})
endfunction()
