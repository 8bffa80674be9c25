# What `cmake --install` leaves: libraries, headers with their folders, and how a host finds them.
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Ormalux)
install(TARGETS Ormalux EXPORT OrmaluxTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(EXPORT OrmaluxTargets NAMESPACE Ormalux:: DESTINATION ${config_dir})

# The public headers and the few that they include.
set(interface_headers
  platform/Export.h platform/LargeMemory.h platform/Stdlib.h platform/Types.h
  image/GrayView.h image/PictureOrigin.h image/VisionImage.h
  color/ColorConversion.h color/ColorView.h color/VisionImage24.h
  measure/Alignment.h measure/BlobFeature.h measure/EdgeMeasure.h measure/PlaneMeasure.h
  match/CharacterReading.h
  steps/Inspection.h steps/Recipe.h interface/ormalux.h)
file(GLOB array_headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/array/*Array.h)
list(APPEND interface_headers ${array_headers} array/Records.h array/RecordSpan.h array/RecordStorage.h)
if(ORMALUX_BUILD_VIEW)
  set_target_properties(OrmaluxView PROPERTIES INSTALL_RPATH $ORIGIN)
  install(TARGETS OrmaluxView EXPORT OrmaluxViewTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(EXPORT OrmaluxViewTargets NAMESPACE Ormalux:: DESTINATION ${config_dir})
  foreach(header view/DrawObjArray.h view/ImageView.h view/ImageViewWnd.h view/Language.h)
    if(EXISTS ${PROJECT_SOURCE_DIR}/${header})
      list(APPEND interface_headers ${header})
    endif()
  endforeach()
endif()
foreach(header IN LISTS interface_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ormalux/${folder})
endforeach()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OrmaluxConfig.cmake.in
  ${PROJECT_BINARY_DIR}/OrmaluxConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrmaluxConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrmaluxConfig.cmake ${PROJECT_BINARY_DIR}/OrmaluxConfigVersion.cmake
  DESTINATION ${config_dir})

# Wherever the tree is installed or moved to, the pkg-config files tell its folders from their own.
file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
file(RELATIVE_PATH prefix_to_lib ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH prefix_to_include ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/ormalux.pc.in ${PROJECT_BINARY_DIR}/ormalux.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ormalux.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(ORMALUX_BUILD_VIEW)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/ormalux-view.pc.in ${PROJECT_BINARY_DIR}/ormalux-view.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/ormalux-view.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
