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

# Below any prefix the program and the libraries find each other; in a package, below /usr, the loader knows the place.
file(RELATIVE_PATH dax_libraries_from_bin /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
foreach(installed tools=dax_tool=${CMAKE_INSTALL_BINDIR}=$ORIGIN/${dax_libraries_from_bin} io=daxio=${CMAKE_INSTALL_LIBDIR}=$ORIGIN)
  string(REPLACE "=" ";" installed ${installed})
  list(GET installed 0 component)
  list(GET installed 1 target)
  list(GET installed 2 folder)
  list(GET installed 3 search_path)
  if(TARGET ${target})
    set_target_properties(${target} PROPERTIES INSTALL_RPATH ${search_path})
    install(CODE "if(CMAKE_INSTALL_PREFIX MATCHES \"/usr$\")
      file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}/$<TARGET_FILE_NAME:${target}>\")
    endif()" COMPONENT ${component})
  endif()
endforeach()

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
