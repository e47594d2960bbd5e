# Finds xxHash and defines the target XxHash::XxHash. Its header is <xxh_x86dispatch.h> where the
# processor variants are chosen at run time, and <xxhash.h> otherwise.
#
# Prefers a library from a package manager (its CMake package "xxHash"). Otherwise compiles the
# sources in XXHASH_SOURCE_DIR for the target.
find_package(xxHash CONFIG QUIET)
if(TARGET xxHash::xxhash)
  if(NOT TARGET XxHash::XxHash)
    add_library(XxHash::XxHash INTERFACE IMPORTED)
    target_link_libraries(XxHash::XxHash INTERFACE xxHash::xxhash)
  endif()
  set(XxHash_FOUND TRUE)
  return()
endif()

set(XXHASH_SOURCE_DIR "${PROJECT_SOURCE_DIR}/build/third-party/xxhash" CACHE PATH
    "Folder of the unpacked xxHash sources")
find_file(XxHash_SOURCE xxhash.c PATHS "${XXHASH_SOURCE_DIR}" NO_DEFAULT_PATH
          NO_CMAKE_FIND_ROOT_PATH)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(XxHash REQUIRED_VARS XxHash_SOURCE)
mark_as_advanced(XxHash_SOURCE)

if(XxHash_FOUND AND NOT TARGET XxHash::XxHash)
  enable_language(C)
  get_filename_component(XxHash_DIR "${XxHash_SOURCE}" DIRECTORY)
  add_library(sumwright_xxhash STATIC "${XxHash_DIR}/xxhash.c" "${XxHash_DIR}/xxh_x86dispatch.c")
  target_include_directories(sumwright_xxhash SYSTEM PUBLIC "${XxHash_DIR}")
  target_compile_definitions(sumwright_xxhash PUBLIC SWR_XXHASH_DISPATCH)
  # Optimised in every preset, because the variants rely on inlining, and without sanitizers,
  # because the code is not ours.
  target_compile_options(sumwright_xxhash PRIVATE -O3 -w)
  add_library(XxHash::XxHash ALIAS sumwright_xxhash)
endif()
