# Compiler settings of every target, and of the library's own objects.

add_library(dax_settings INTERFACE)
# No fused multiply-add: results are the same on every machine.
target_compile_options(dax_settings INTERFACE -ffp-contract=off -Wall -Wextra -Wshadow -Werror=return-type)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  target_compile_options(dax_settings INTERFACE -march=${DAX_X86_ARCH})
  # GCC 12 takes two doubles that are rounded to floats and back as a vector, and drops the rounding.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(dax_settings INTERFACE -fno-tree-slp-vectorize)
  endif()
endif()
if(DAX_SANITIZE)
  target_compile_options(dax_settings INTERFACE -fsanitize=${DAX_SANITIZE} -fno-sanitize-recover=all
                                                -fno-omit-frame-pointer)
  target_link_options(dax_settings INTERFACE -fsanitize=${DAX_SANITIZE})
endif()
option(DAX_WERROR "Treat warnings as errors" OFF)
if(DAX_WERROR)
  target_compile_options(dax_settings INTERFACE -Werror)
endif()

set(dax_neon 0)
if(DAX_NEON)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
    set(dax_neon 1)
  else()
    include(CheckIncludeFileCXX)
    check_include_file_cxx(simde/arm/neon.h DAX_HAVE_SIMDE)
    if(DAX_HAVE_SIMDE)
      set(dax_neon 1)
    else()
      message(STATUS "SIMDe not found: portable kernels only (install libsimde-dev to build the NEON kernels here)")
    endif()
  endif()
endif()

# What the library's own objects are compiled with, beyond the settings of all.
add_library(dax_library_settings INTERFACE)
target_link_libraries(dax_library_settings INTERFACE dax_settings)
target_include_directories(dax_library_settings INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
# The library does without the C++ run time: no exceptions, no type information, no guarded statics.
target_compile_options(
  dax_library_settings
  INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-asynchronous-unwind-tables>
            -fvisibility=hidden -fno-math-errno)
# Nobody reads the flags of floating-point exceptions. Without them both sides of a choice can be computed, as vectors do; no
# value changes.
target_compile_options(dax_library_settings INTERFACE -fno-trapping-math)
