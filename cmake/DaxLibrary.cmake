# libdax.so, linked with the C driver so that a need for the C++ run time shows as an undefined symbol.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
dax_write_exports(${PROJECT_BINARY_DIR})

# Its sources: what lies in these folders.
set(dax_floors frame geometry space image measure optim pcl calib)
list(TRANSFORM dax_floors PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE patterns)
list(TRANSFORM patterns APPEND /*.cpp)
file(GLOB_RECURSE dax_sources CONFIGURE_DEPENDS ${patterns})

# dax_objects(NAME HAVE_NEON): all of them, compiled.
function(dax_objects name have_neon)
  add_library(${name} OBJECT ${dax_sources})
  target_link_libraries(${name} PRIVATE dax_library_settings)
  target_compile_definitions(${name} PRIVATE DAX_HAVE_NEON=${have_neon})
  dax_unity(${name})
endfunction()
dax_objects(dax_objects ${dax_neon})
# Tests put another in its place to run the portable kernels.
set_source_files_properties(${PROJECT_SOURCE_DIR}/frame/cpu_feature.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)

add_library(dax SHARED)
add_library(dax::dax ALIAS dax)
target_link_libraries(dax PRIVATE $<BUILD_INTERFACE:dax_settings> m)
target_sources(dax PRIVATE $<TARGET_OBJECTS:dax_objects>)
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
add_library(dax_internal STATIC $<TARGET_OBJECTS:dax_objects>)
target_link_libraries(dax_internal PUBLIC m)
set_target_properties(dax_internal PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(dax_internal PUBLIC ${PROJECT_SOURCE_DIR} ${DAX_INCLUDE_DIRS})
target_compile_definitions(dax_internal PUBLIC DAX_HAVE_NEON=${dax_neon})
