include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS lqtools EXPORT LqToolsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/lqtools DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
install(EXPORT LqToolsTargets NAMESPACE LqTools::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LqTools)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/LqToolsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/LqToolsConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LqTools)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LqToolsConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LqToolsConfig.cmake
              ${PROJECT_BINARY_DIR}/LqToolsConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LqTools)
