# The installed package: find_package(orvella) gives the target orvella::orvella, pkg-config the module orvella. Both work
# out their paths from where they lie, so that the tree can be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orvella)
install(TARGETS orvella EXPORT orvella-targets)
install(DIRECTORY include/orvella DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h PATTERN *.hpp)
install(FILES ${PROJECT_BINARY_DIR}/include/orvella/version.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvella)

# No dependencies, hence no config file of its own around the targets.
install(EXPORT orvella-targets FILE orvella-config.cmake NAMESPACE orvella:: DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orvella-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orvella-config-version.cmake DESTINATION ${package_dir})

set(pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig ${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH include_from_pkgconfig ${pkgconfig_dir} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
if(NOT BUILD_SHARED_LIBS)
  set(private_libraries -lstdc++)
endif()
configure_file(cmake/orvella.pc.in ${PROJECT_BINARY_DIR}/orvella.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvella.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
