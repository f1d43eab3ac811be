# What `cmake --install` puts where, in three components:
#
#   lib    the shared libraries
#   dev    what it takes to build a program with them: headers, links by the plain names, the CMake package, pkg-config files
#   tool   vornixpath, which needs none of these libraries; its man page, and what shells complete
#
# The CMake package has components of its own, each of which stands on those before it: platform, library, environment. A
# target has the name search_path_utilities::<folder> here as there.

include(CMakePackageConfigHelpers)

# A folder of its own: names such as storage/ and foundation/ are anybody's.
set(headers_folder ${CMAKE_INSTALL_INCLUDEDIR}/search_path_utilities)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/search_path_utilities)
set(pkg_config_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# spu_install_component(<component> <folder>...): the libraries of these folders, as one component of the CMake package.
function(spu_install_component component)
  foreach(folder IN LISTS ARGN)
    get_target_property(target search_path_utilities::${folder} ALIASED_TARGET)
    # They stand side by side and find each other wherever that is.
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${folder} INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT search_path_utilities-${component}
      LIBRARY COMPONENT lib NAMELINK_COMPONENT dev
      FILE_SET HEADERS DESTINATION ${headers_folder} COMPONENT dev)
  endforeach()
  install(EXPORT search_path_utilities-${component} NAMESPACE search_path_utilities:: DESTINATION ${package_folder}
    FILE search_path_utilities-${component}.cmake COMPONENT dev)
endfunction()

# spu_install_pkg_config(<name> DESCRIPTION ... [REQUIRES ...] LIBRARIES ...): <name>.pc, for the libraries that LIBRARIES name.
function(spu_install_pkg_config name)
  cmake_parse_arguments(PC "" "DESCRIPTION;REQUIRES" "LIBRARIES" ${ARGN})
  set(PC_NAME ${name})
  list(TRANSFORM PC_LIBRARIES PREPEND -l)
  list(JOIN PC_LIBRARIES " " PC_LIBRARIES)
  # As many steps up as the folder of libraries needs, which on some systems is two deep.
  file(RELATIVE_PATH PC_PREFIX_FROM_HERE /prefix/${pkg_config_folder} /prefix)
  string(REGEX REPLACE "/$" "" PC_PREFIX_FROM_HERE "${PC_PREFIX_FROM_HERE}")
  configure_file(${PROJECT_SOURCE_DIR}/cmake/pkg_config.pc.in ${PROJECT_BINARY_DIR}/install/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/install/${name}.pc DESTINATION ${pkg_config_folder} COMPONENT dev)
endfunction()

spu_install_component(platform fl_filesystem foundation search_path_interfaces current_working_folder package_registry fakes)
spu_install_component(library search_path_utilities)
spu_install_component(environment environment)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/package_config.cmake.in
  ${PROJECT_BINARY_DIR}/install/search_path_utilities-config.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/install/search_path_utilities-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(
  FILES
    ${PROJECT_BINARY_DIR}/install/search_path_utilities-config.cmake
    ${PROJECT_BINARY_DIR}/install/search_path_utilities-config-version.cmake
  DESTINATION ${package_folder} COMPONENT dev)

spu_install_pkg_config(search_path_utilities-platform
  DESCRIPTION "The platform below search_path_utilities: identifiers, storage, the contracts of a path"
  LIBRARIES spu_search_path_interfaces spu_current_working_folder spu_package_registry spu_foundation spu_fl_filesystem)
spu_install_pkg_config(search_path_utilities
  DESCRIPTION "What a name means on a search path"
  REQUIRES "search_path_utilities-platform = ${PROJECT_VERSION}"
  LIBRARIES search_path_utilities boost_thread)
spu_install_pkg_config(search_path_utilities-environment
  DESCRIPTION "Search paths over real folders"
  REQUIRES "search_path_utilities = ${PROJECT_VERSION}"
  LIBRARIES spu_environment)

if(SPU_TOOL)
  install(TARGETS vornixpath RUNTIME COMPONENT tool)
endif()
if(TARGET spu_descriptions)
  set(descriptions ${PROJECT_BINARY_DIR}/descriptions)
  install(FILES ${descriptions}/vornixpath.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
  install(FILES ${descriptions}/vornixpath.bash RENAME vornixpath
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
  install(FILES ${descriptions}/_vornixpath DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
  install(FILES ${descriptions}/vornixpath.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
endif()
