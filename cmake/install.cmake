# The installed package: find_package(orvella) gives the target orvella::orvella, pkg-config the module orvella. Both work
# out their paths from where they lie, so that the tree can be moved, unless a folder of it is given absolutely. The
# components are runtime, development, tools and (integrations/gstreamer) gstreamer.
include(CMakePackageConfigHelpers)

set(absolute FALSE)
foreach(folder ${CMAKE_INSTALL_LIBDIR} ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_INCLUDEDIR})
  if(IS_ABSOLUTE ${folder})
    set(absolute TRUE)
  endif()
endforeach()

install(TARGETS orvella EXPORT orvella-targets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  RUNTIME COMPONENT runtime
  ARCHIVE COMPONENT development)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)

install(DIRECTORY include/orvella DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN *.h PATTERN *.hpp)
install(FILES ${PROJECT_BINARY_DIR}/include/orvella/version.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvella COMPONENT development)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
  FILES_MATCHING PATTERN *.md PATTERN *.png)

# No dependencies, hence no config file of its own around the targets.
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orvella)
install(EXPORT orvella-targets FILE orvella-config.cmake NAMESPACE orvella:: DESTINATION ${package_dir}
  COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orvella-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orvella-config-version.cmake DESTINATION ${package_dir} COMPONENT development)

if(absolute)
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
  set(pc_libdir ${CMAKE_INSTALL_FULL_LIBDIR})
  set(pc_includedir ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
  file(RELATIVE_PATH prefix_from_pkgconfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  file(RELATIVE_PATH include_from_pkgconfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR})
  set(pc_prefix "\${pcfiledir}/${prefix_from_pkgconfig}")
  set(pc_libdir "\${pcfiledir}/..")
  set(pc_includedir "\${pcfiledir}/${include_from_pkgconfig}")
endif()
if(NOT BUILD_SHARED_LIBS)
  set(pc_private_libraries "-lstdc++ -lm")
endif()
configure_file(cmake/orvella.pc.in ${PROJECT_BINARY_DIR}/orvella.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvella.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(TARGET orvella_tool)
  # The converter finds the library that it is installed with.
  file(RELATIVE_PATH libraries_from_program ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  if(absolute)
    set_target_properties(orvella_tool PROPERTIES INSTALL_RPATH ${CMAKE_INSTALL_FULL_LIBDIR})
  else()
    set_target_properties(orvella_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries_from_program}")
  endif()
  install(TARGETS orvella_tool RUNTIME COMPONENT tools)
endif()
