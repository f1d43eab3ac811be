# The Debian packages that cpack makes of what is installed, one of each component: see packaging/make-packages.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME search-path-utilities)
set(CPACK_PACKAGE_VENDOR search_path_utilities)
set(CPACK_PACKAGE_CONTACT "search_path_utilities <root@localhost>")
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL lib dev tool)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)

# The number of the interface is part of the name, so that programs built with different ones can stand side by side.
set(CPACK_DEBIAN_LIB_PACKAGE_NAME libsearch-path-utilities${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIB_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIB_DESCRIPTION "What a name means on a search path: shared libraries")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libsearch-path-utilities-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libboost1.81-dev, libboost-thread1.81-dev") # what the headers include
set(CPACK_COMPONENT_DEV_DESCRIPTION "What a name means on a search path: headers, CMake package, pkg-config files")
set(CPACK_COMPONENT_DEV_DEPENDS lib)

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME vornixpath)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION devel)
set(CPACK_COMPONENT_TOOL_DESCRIPTION "Tells which file a name means on a search path, and why")

# dev asks for the very version of lib; what lib and tool need of others is read off the files.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

include(CPack)
