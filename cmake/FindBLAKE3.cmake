# Finds the BLAKE3 reference C library and defines the target BLAKE3::blake3 with <blake3.h>.
#
# Prefers a library from a package manager (its CMake package "BLAKE3"). Otherwise compiles the C
# sources in BLAKE3_SOURCE_DIR for the target, with the assembly for its calling convention if there
# is any.
find_package(BLAKE3 CONFIG QUIET)
if(TARGET BLAKE3::blake3)
  set(BLAKE3_FOUND TRUE)
  return()
endif()

file(GLOB BLAKE3_candidates /usr/share/cargo/registry/blake3-*/c)
find_file(BLAKE3_SOURCE blake3_dispatch.c PATHS "${BLAKE3_SOURCE_DIR}" ${BLAKE3_candidates}
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(BLAKE3 REQUIRED_VARS BLAKE3_SOURCE)
mark_as_advanced(BLAKE3_SOURCE)

if(BLAKE3_FOUND AND NOT TARGET BLAKE3::blake3)
  enable_language(C ASM)
  get_filename_component(BLAKE3_DIR "${BLAKE3_SOURCE}" DIRECTORY)
  set(BLAKE3_variants sse2 sse41 avx2 avx512)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # The assembly is 64-bit only; the C sources have the same variants with intrinsics.
    list(TRANSFORM BLAKE3_variants REPLACE "(.+)" "${BLAKE3_DIR}/blake3_\\1.c"
         OUTPUT_VARIABLE BLAKE3_variant_sources)
    set_source_files_properties("${BLAKE3_DIR}/blake3_sse2.c" PROPERTIES COMPILE_OPTIONS -msse2)
    set_source_files_properties("${BLAKE3_DIR}/blake3_sse41.c" PROPERTIES COMPILE_OPTIONS -msse4.1)
    set_source_files_properties("${BLAKE3_DIR}/blake3_avx2.c" PROPERTIES COMPILE_OPTIONS -mavx2)
    set_source_files_properties("${BLAKE3_DIR}/blake3_avx512.c" PROPERTIES
                                COMPILE_OPTIONS "-mavx512f;-mavx512vl")
  else()
    set(BLAKE3_abi unix)
    if(WIN32)
      set(BLAKE3_abi windows_gnu)
    endif()
    list(TRANSFORM BLAKE3_variants REPLACE
         "(.+)" "${BLAKE3_DIR}/blake3_\\1_x86-64_${BLAKE3_abi}.S"
         OUTPUT_VARIABLE BLAKE3_variant_sources)
  endif()
  add_library(sumwright_blake3 STATIC
    "${BLAKE3_DIR}/blake3.c"
    "${BLAKE3_DIR}/blake3_dispatch.c"
    "${BLAKE3_DIR}/blake3_portable.c"
    ${BLAKE3_variant_sources})
  target_include_directories(sumwright_blake3 SYSTEM PUBLIC "${BLAKE3_DIR}")
  target_compile_options(sumwright_blake3 PRIVATE -O3 -w)
  add_library(BLAKE3::blake3 ALIAS sumwright_blake3)
endif()
