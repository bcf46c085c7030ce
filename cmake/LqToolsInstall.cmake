# Installation in three parts, which the Debian packages follow: the shared library (lib), what a
# host builds against (dev: headers, CMake package, pkg-config file, the unversioned link) and the
# program (tool, with its man page).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS lqtools EXPORT LqToolsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT lib NAMELINK_COMPONENT dev
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT lib
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/lqtools DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT dev FILES_MATCHING PATTERN "*.h" PATTERN "*.inc" EXCLUDE)
install(EXPORT LqToolsTargets NAMESPACE LqTools:: COMPONENT dev
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LqTools)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/LqToolsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/LqToolsConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LqTools)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LqToolsConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LqToolsConfig.cmake
              ${PROJECT_BINARY_DIR}/LqToolsConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/LqTools COMPONENT dev)
configure_file(${PROJECT_SOURCE_DIR}/cmake/lqtools.pc.in ${PROJECT_BINARY_DIR}/lqtools.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lqtools.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT dev)

# The man page of lqtool, made from its --help by help2man when that is installed.
if(TARGET lqtool)
  find_program(LQTOOLS_HELP2MAN help2man)
  if(LQTOOLS_HELP2MAN)
    add_custom_command(
      OUTPUT ${PROJECT_BINARY_DIR}/lqtool.1
      COMMAND ${LQTOOLS_HELP2MAN} --no-info --section=1
              --name "command line of the LqTools file formats"
              --output=${PROJECT_BINARY_DIR}/lqtool.1 $<TARGET_FILE:lqtool>
      DEPENDS lqtool
      VERBATIM)
    add_custom_target(lqtool_man ALL DEPENDS ${PROJECT_BINARY_DIR}/lqtool.1)
    install(FILES ${PROJECT_BINARY_DIR}/lqtool.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
            COMPONENT tool)
  endif()
endif()

include(cmake/LqToolsPackaging.cmake)
