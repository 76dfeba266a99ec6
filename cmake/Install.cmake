# What `cmake --install` puts where, so that a host writes find_package(ZEP) and links ZEP::ZEP.
include(CMakePackageConfigHelpers)
set(zep_package ${CMAKE_INSTALL_LIBDIR}/cmake/ZEP)

install(TARGETS zepcore zep EXPORT ZEPTargets)

install(DIRECTORY zep DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h" PATTERN "GlxBinding.h" EXCLUDE)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(EXPORT ZEPTargets NAMESPACE ZEP:: DESTINATION ${zep_package})
configure_package_config_file(cmake/ZEPConfig.cmake.in ${PROJECT_BINARY_DIR}/ZEPConfig.cmake
                              INSTALL_DESTINATION ${zep_package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZEPConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZEPConfig.cmake ${PROJECT_BINARY_DIR}/ZEPConfigVersion.cmake
        DESTINATION ${zep_package})
