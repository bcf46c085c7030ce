# Debian packages by CPack (cpack -G DEB in the build folder, or scripts/package):
#   liblqtools0     the shared library
#   liblqtools-dev  headers, CMake package, pkg-config file, the unversioned link
#   lqtool          the program, its man page and its sample data
set(CPACK_PACKAGE_NAME lqtools)
set(CPACK_PACKAGE_VENDOR "LqTools")
set(CPACK_PACKAGE_CONTACT "LqTools maintainers <lqtools@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "foundation library of a data-acquisition and supervision platform")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL lib dev tool)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_LIB_PACKAGE_NAME liblqtools0)
set(CPACK_DEBIAN_LIB_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIB_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_COMPONENT_LIB_DESCRIPTION
    "LqTools shared library\n Text, date-time with zones, XML and JSON documents, configuration files, string tables and locale rendering, encoding and security routines, file and log helpers.")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME liblqtools-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "liblqtools0 (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEV_DESCRIPTION
    "LqTools development files\n Headers, CMake package (find_package(LqTools)) and pkg-config file (lqtools).")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME lqtool)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "liblqtools0 (= ${PROJECT_VERSION}), tzdata")
set(CPACK_COMPONENT_TOOL_DESCRIPTION
    "command line of the LqTools file formats\n Reads, writes, checks and converts XML settings, JSON, configuration files, string tables, zone folders, bcrypt hashes, Base64, uuids and scrambled passwords.")
include(CPack)
