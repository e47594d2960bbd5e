# Finds the BLAKE3 reference C library and defines the target BLAKE3::blake3 with <blake3.h>.
#
# First choice is a library that a package manager supplies (its CMake package "BLAKE3"). Otherwise
# the C sources are compiled for the target at hand, with the assembly of its calling convention;
# BLAKE3_SOURCE_DIR says where they are.
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
  if(WIN32)
    set(BLAKE3_abi windows_gnu)
  else()
    set(BLAKE3_abi unix)
  endif()
  add_library(sumwright_blake3 STATIC
    "${BLAKE3_DIR}/blake3.c"
    "${BLAKE3_DIR}/blake3_dispatch.c"
    "${BLAKE3_DIR}/blake3_portable.c"
    "${BLAKE3_DIR}/blake3_sse2_x86-64_${BLAKE3_abi}.S"
    "${BLAKE3_DIR}/blake3_sse41_x86-64_${BLAKE3_abi}.S"
    "${BLAKE3_DIR}/blake3_avx2_x86-64_${BLAKE3_abi}.S"
    "${BLAKE3_DIR}/blake3_avx512_x86-64_${BLAKE3_abi}.S")
  target_include_directories(sumwright_blake3 SYSTEM PUBLIC "${BLAKE3_DIR}")
  target_compile_options(sumwright_blake3 PRIVATE -O3 -w)
  add_library(BLAKE3::blake3 ALIAS sumwright_blake3)
endif()
