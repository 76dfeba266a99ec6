# What `cmake --install` puts where: a host writes find_package(ZEP) and links ZEP::ZEP, or
# find_package(ZEP COMPONENTS Core) and ZEP::Core; others ask pkg-config for zep or zepcore.
include(CMakePackageConfigHelpers)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/ZEP)

set_target_properties(zepcore PROPERTIES EXPORT_NAME Core)
set_target_properties(zepcore_headers PROPERTIES EXPORT_NAME CoreHeaders)
set_target_properties(zep PROPERTIES EXPORT_NAME ZEP)
set_target_properties(zep_headers PROPERTIES EXPORT_NAME Headers)
install(TARGETS zepcore zepcore_headers EXPORT ZEPCoreTargets FILE_SET HEADERS)
install(TARGETS zep zep_headers EXPORT ZEPTargets FILE_SET HEADERS)
install(EXPORT ZEPCoreTargets NAMESPACE ZEP:: DESTINATION ${package})
install(EXPORT ZEPTargets NAMESPACE ZEP:: DESTINATION ${package})
configure_package_config_file(cmake/ZEPConfig.cmake.in ${PROJECT_BINARY_DIR}/ZEPConfig.cmake
                              INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZEPConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZEPConfig.cmake ${PROJECT_BINARY_DIR}/ZEPConfigVersion.cmake
        DESTINATION ${package})

# pkg_config_file(library description definitions required...)
function(pkg_config_file library description definitions)
  list(JOIN ARGN " " requires)
  set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  string(REGEX REPLACE "[^/]+" ".." up ${folder})
  configure_file(cmake/pkgconfig.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${folder})
endfunction()
if(NOT BUILD_SHARED_LIBS)
  set(static_definition " -DZEP_STATIC")
  set(static_requires x11 glx)
endif()
pkg_config_file(zepcore "${PROJECT_DESCRIPTION}: without a window system" "${static_definition}"
                Qt6Core Qt6Gui opengl glu)
pkg_config_file(zep "${PROJECT_DESCRIPTION}" " -DZEP_WIDGETS"
                zepcore Qt6Widgets Qt6PrintSupport ${static_requires})

install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
