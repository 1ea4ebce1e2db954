# The umbrella header of each prefix, <build>/include/<prefix>.h: all headers of include/<prefix>, below what about.txt says
# there. A header joins by lying in the folder.
set(DAX_INCLUDE_DIRS ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include)
file(GLOB abouts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*/about.txt)
foreach(about ${abouts})
  get_filename_component(folder ${about} DIRECTORY)
  get_filename_component(prefix ${folder} NAME)
  file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR}/include CONFIGURE_DEPENDS ${folder}/*.h)
  list(TRANSFORM headers REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE includes)
  string(CONCAT dax_includes ${includes})
  file(STRINGS ${about} dax_about)
  string(TOUPPER ${prefix}_H dax_guard)
  configure_file(cmake/umbrella.h.in ${PROJECT_BINARY_DIR}/include/${prefix}.h @ONLY)
endforeach()
