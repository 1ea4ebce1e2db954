# dax_unity(TARGET...): the sources of a folder are compiled as one, which a build from scratch and the static analysis finish
# in a fraction of the time, since most of it goes into headers; a change of one source takes longer then. Names in the
# unnamed namespaces of a folder must differ.
option(DAX_UNITY "Compile each folder of sources as one" OFF)

function(dax_unity)
  if(NOT DAX_UNITY)
    return()
  endif()
  foreach(target ${ARGN})
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    foreach(source ${sources})
      cmake_path(GET source PARENT_PATH folder)
      cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
      string(MAKE_C_IDENTIFIER "${folder}" room)
      # Clang's analyzer follows paths through included sources in files of this name only.
      set_source_files_properties(${source} PROPERTIES UNITY_GROUP UnifiedSource_${room})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # GCC takes what a source defines for a header's.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endforeach()
endfunction()
