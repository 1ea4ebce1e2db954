# Headers, libraries, CMake package and pkg-config file, all relocatable; the program and its manual pages. The components
# are those of the Debian packages (DaxPackages.cmake).
install(TARGETS dax EXPORT dax LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
                                       NAMELINK_COMPONENT development)
install(DIRECTORY include/ ${PROJECT_BINARY_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN daxhost.h EXCLUDE PATTERN daxio.h EXCLUDE)
if(DAX_BUILD_HOST)
  install(TARGETS daxhost EXPORT dax LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT host
                                             NAMELINK_COMPONENT development)
  install(FILES include/daxhost.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endif()
if(DAX_BUILD_IO)
  install(TARGETS daxio EXPORT dax LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT io
                                           NAMELINK_COMPONENT development)
  install(FILES include/daxio.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endif()
if(DAX_BUILD_TOOLS)
  install(TARGETS dax_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools
          FILES_MATCHING PATTERN "*.1.gz")
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/dax)
install(EXPORT dax NAMESPACE dax:: FILE dax-targets.cmake DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/dax-config.cmake.in ${PROJECT_BINARY_DIR}/dax-config.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/dax-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/dax-config.cmake ${PROJECT_BINARY_DIR}/dax-config-version.cmake
        DESTINATION ${package_dir} COMPONENT development)

# The directory of dax.pc tells where the rest is.
file(RELATIVE_PATH dax_include_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /${CMAKE_INSTALL_INCLUDEDIR})
configure_file(cmake/dax.pc.in ${PROJECT_BINARY_DIR}/dax.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/dax.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
