# libdax.so, linked with the C driver so that a need for the C++ run time shows as an undefined symbol.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
dax_write_exports(${PROJECT_BINARY_DIR})

add_library(dax SHARED)
add_library(dax::dax ALIAS dax)
target_link_libraries(dax PRIVATE dax_all_objects $<BUILD_INTERFACE:dax_settings> m)
target_include_directories(dax PUBLIC "$<BUILD_INTERFACE:${DAX_INCLUDE_DIRS}>"
                                      $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set_target_properties(
  dax PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE C
                 LINK_DEPENDS ${PROJECT_BINARY_DIR}/exports.map)
target_link_options(dax PRIVATE -Wl,--version-script=${PROJECT_BINARY_DIR}/exports.map -Wl,-z,relro -Wl,-z,now)
if(NOT DAX_SANITIZE)
  target_link_options(dax PRIVATE -Wl,-z,defs)
endif()

# The same objects for tests and benchmarks, which also call workers that the library does not export.
add_library(dax_internal STATIC)
target_link_libraries(dax_internal PRIVATE dax_all_objects PUBLIC m)
set_target_properties(dax_internal PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(dax_internal PUBLIC ${PROJECT_SOURCE_DIR} ${DAX_INCLUDE_DIRS})
target_compile_definitions(dax_internal PUBLIC DAX_HAVE_NEON=${dax_neon})
