# The Debian packages, by CPack: one per component, as Debian names them.
#
#   libdax<soname>       the library: needs the C library and nothing else
#   libdaxhost<soname>   the reference pool: needs oneTBB
#   libdaxio<soname>     PNG, JPEG and TIFF files: needs their codecs
#   libdax-dev           headers, CMake package, pkg-config file
#   dax-tools            the program and its manual pages
#   python3-dax          the Python package, for all architectures
set(DAX_PACKAGE_MAINTAINER "DAX developers <dax@packages.invalid>" CACHE STRING "Maintainer field of the packages")
set(DAX_PACKAGE_RELEASE 1 CACHE STRING "Debian revision of the packages")
set(DAX_PACKAGE_ARCHITECTURE "" CACHE STRING "Architecture of the packages, such as arm64; empty: this machine's")
find_program(DAX_SHLIBDEPS dpkg-shlibdeps)
find_program(DAX_FILE file)
if(NOT DAX_SHLIBDEPS OR NOT DAX_FILE)
  message(STATUS "dpkg-shlibdeps or file not found: Debian packages are left out (install dpkg-dev and file)")
  return()
endif()
if(NOT DAX_PACKAGE_ARCHITECTURE)
  execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE DAX_PACKAGE_ARCHITECTURE
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()

get_target_property(soversion dax SOVERSION)
set(debian_version ${PROJECT_VERSION}-${DAX_PACKAGE_RELEASE})
set(packages ${PROJECT_BINARY_DIR}/packages)
set(library_package libdax${soversion})
set(host_package libdaxhost${soversion})
set(io_package libdaxio${soversion})
set(development_package libdax-dev)
set(tools_package dax-tools)
set(python_package python3-dax)
set(components library development)
foreach(optional host=daxhost io=daxio tools=dax_tool python=dax_python)
  string(REPLACE "=" ";" optional ${optional})
  list(GET optional 0 component)
  list(GET optional 1 target)
  if(TARGET ${target})
    list(APPEND components ${component})
  endif()
endforeach()

# Changelog and copyright of each package. Of header-only libraries code is inside the binaries, so their copyright goes
# along, as their Debian packages state it.
set(documents_of_others /usr/share/doc)
set(inside_tools ${documents_of_others}/libcli11-dev/copyright ${documents_of_others}/nlohmann-json3-dev/copyright)
if(DAX_HAVE_SIMDE)
  set(inside_library ${documents_of_others}/libsimde-dev/copyright)
endif()
find_package(Python3 REQUIRED COMPONENTS Interpreter)
file(GLOB collected CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/changes/*.md ${PROJECT_SOURCE_DIR}/tests/interface/*.txt
     ${PROJECT_SOURCE_DIR}/tests/interface/*/*.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${collected})
foreach(component ${components})
  set(documents ${packages}/${${component}_package})
  execute_process(
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/packaging/make_documents.py ${documents} ${debian_version}
            ${DAX_PACKAGE_MAINTAINER} ${inside_${component}} COMMAND_ERROR_IS_FATAL ANY)
  # Parts of the packages only: an installation of everything leaves them out.
  install(DIRECTORY ${documents}/ DESTINATION share/doc/${${component}_package} COMPONENT ${component} EXCLUDE_FROM_ALL)

  # What Debian's checker may say; scripts/test-packages takes the rest for faults.
  set(overrides "# Not from Debian's archive: there is no request to close.\ninitial-upload-closes-no-bugs\n")
  if(component MATCHES "library|host|io")
    string(APPEND overrides "# CPack writes these scripts, the trigger that replaces them is there as well.\n"
                            "maintscript-calls-ldconfig\n")
  endif()
  file(WRITE ${PROJECT_BINARY_DIR}/lintian/${${component}_package} "${overrides}")
  install(FILES ${PROJECT_BINARY_DIR}/lintian/${${component}_package} DESTINATION share/lintian/overrides
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

# Control files: what dependents of the libraries need, the linker's cache, Python's compiled modules.
set(control ${PROJECT_BINARY_DIR}/control)
execute_process(
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/interface --symbols libdax.so.${soversion}
          ${library_package} ${PROJECT_BINARY_DIR}/exports.txt
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${control}/library/symbols "${symbols}")
file(WRITE ${control}/library/shlibs "libdax ${soversion} ${library_package} (>= ${PROJECT_VERSION})\n")
file(WRITE ${control}/host/shlibs "libdaxhost ${soversion} ${host_package} (>= ${PROJECT_VERSION})\n")
file(WRITE ${control}/io/shlibs "libdaxio ${soversion} ${io_package} (>= ${PROJECT_VERSION})\n")
foreach(component library host io)
  file(WRITE ${control}/${component}/triggers "activate-noawait ldconfig\n")
endforeach()
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/library/symbols ${control}/library/shlibs
                                               ${control}/library/triggers)
set(CPACK_DEBIAN_HOST_PACKAGE_CONTROL_EXTRA ${control}/host/shlibs ${control}/host/triggers)
set(CPACK_DEBIAN_IO_PACKAGE_CONTROL_EXTRA ${control}/io/shlibs ${control}/io/triggers)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/python3-dax/postinst
                                              ${PROJECT_SOURCE_DIR}/packaging/python3-dax/prerm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages-made)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${DAX_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_RELEASE ${DAX_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${DAX_PACKAGE_ARCHITECTURE})
set(CPACK_DEBIAN_PACKAGE_SOURCE dax)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
# dpkg-shlibdeps finds the packages of other libraries; scripts/package shows it where those of arm64 are unpacked.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/host ${PROJECT_BINARY_DIR}/io)

# dax_package(COMPONENT SECTION MULTI-ARCH SUMMARY line...): the fields of one package; a "." parts paragraphs.
function(dax_package component section multi_arch summary)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${${component}_package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  # CPack has a variable for this field from version 3.31 on. Until then it rides on another.
  set(CPACK_DEBIAN_${upper}_PACKAGE_PRIORITY "optional\nMulti-Arch: ${multi_arch}" PARENT_SCOPE)
  list(JOIN ARGN "\n" text)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
endfunction()

set(about "DAX filters images, makes masks, and finds and measures objects in them."
          "Results are the same to the last bit on every machine, with any number" "of threads." ".")
dax_package(library libs same "machine-vision algorithms: library" ${about}
            "This is the shared library. It needs the C library only.")
dax_package(host libs same "machine-vision algorithms: thread pool" ${about}
            "This is a thread pool for hosts that have none of their own, on oneTBB.")
dax_package(io libs same "machine-vision algorithms: image files" ${about}
            "This reads and writes image files: PNG, JPEG and TIFF beside the formats" "that the library itself knows.")
dax_package(development libdevel same "machine-vision algorithms: development files" ${about}
            "These are the headers, for C99 and C++17, and what CMake and pkg-config" "need to find the libraries.")
dax_package(tools graphics foreign "machine-vision algorithms: command-line program" ${about}
            "This is the program dax, which inspects image files and writes tables," "annotated pictures and reports.")
dax_package(python python no "machine-vision algorithms: Python package" ${about}
            "This is the Python package: functions on NumPy arrays.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_HOST_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_IO_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS ${components})
list(REMOVE_ITEM CPACK_COMPONENT_DEVELOPMENT_DEPENDS development tools python)
set(CPACK_COMPONENT_TOOLS_DEPENDS library host io)
set(CPACK_COMPONENT_IO_DEPENDS library)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "${library_package} (>= ${PROJECT_VERSION}), python3 (>= 3.9), python3-cffi-backend, python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "${host_package} (>= ${PROJECT_VERSION}), ${io_package} (>= ${PROJECT_VERSION})")

# Debian's amd64 begins below the instructions that the library is compiled for; this package refuses older processors.
if(DAX_PACKAGE_ARCHITECTURE STREQUAL amd64 AND NOT DAX_X86_ARCH STREQUAL x86-64)
  if(NOT DAX_X86_ARCH STREQUAL x86-64-v2)
    message(FATAL_ERROR "Packages need DAX_X86_ARCH x86-64-v2 or x86-64: no Debian package stands for ${DAX_X86_ARCH}")
  endif()
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS sse4.2-support)
  set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS sse4.2-support)
  set(CPACK_DEBIAN_IO_PACKAGE_DEPENDS sse4.2-support)
endif()
include(CPack)
