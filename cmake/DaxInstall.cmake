# Headers, library, CMake package and pkg-config file; all relocatable.
install(TARGETS dax EXPORT dax LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} PATTERN daxhost.h EXCLUDE)
if(DAX_BUILD_HOST)
  install(TARGETS daxhost EXPORT dax LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES include/daxhost.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()
if(DAX_BUILD_TOOLS)
  install(TARGETS dax_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/dax)
install(EXPORT dax NAMESPACE dax:: FILE dax-targets.cmake DESTINATION ${package_dir})
configure_package_config_file(cmake/dax-config.cmake.in ${PROJECT_BINARY_DIR}/dax-config.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/dax-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/dax-config.cmake ${PROJECT_BINARY_DIR}/dax-config-version.cmake
        DESTINATION ${package_dir})

# The directory of dax.pc tells where the rest is.
file(RELATIVE_PATH dax_include_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /${CMAKE_INSTALL_INCLUDEDIR})
configure_file(cmake/dax.pc.in ${PROJECT_BINARY_DIR}/dax.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/dax.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
