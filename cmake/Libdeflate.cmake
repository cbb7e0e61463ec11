# libdeflate, from Debian's source package, which scripts/setup.sh unpacks.
if(NOT EXISTS ${QX_LIBDEFLATE_DIR}/libdeflate.h)
  message(FATAL_ERROR "libdeflate is missing from ${QX_LIBDEFLATE_DIR}; scripts/setup.sh fetches it")
endif()
file(GLOB libdeflate_sources ${QX_LIBDEFLATE_DIR}/lib/deflate_*.c ${QX_LIBDEFLATE_DIR}/lib/crc32.c
  ${QX_LIBDEFLATE_DIR}/lib/utils.c ${QX_LIBDEFLATE_DIR}/lib/*/cpu_features.c)

# Where data repeat nothing, libdeflate before 1.19 writes no distance code at all. The format allows that, but several
# cabinet readers, Wine's among them, refuse it. The change gives such data the code that later versions give them.
set(libdeflate_compress ${QX_LIBDEFLATE_DIR}/lib/deflate_compress.c)
file(STRINGS ${QX_LIBDEFLATE_DIR}/libdeflate.h libdeflate_minor REGEX "define LIBDEFLATE_VERSION_MINOR")
string(REGEX MATCH "[0-9]+" libdeflate_minor "${libdeflate_minor}")
if(libdeflate_minor LESS 19)
  file(READ ${libdeflate_compress} source)
  foreach(change IN ITEMS
      "unlikely(num_used_syms == 0)->0"
      "unlikely(num_used_syms == 1)->unlikely(num_used_syms <= 1)"
      "unsigned sym = A[0] & SYMBOL_MASK->unsigned sym = num_used_syms ? A[0] & SYMBOL_MASK : 0")
    string(REGEX MATCH "^(.*)->(.*)$" match "${change}")
    string(FIND "${source}" "${CMAKE_MATCH_1}" found)
    if(found EQUAL -1)
      message(FATAL_ERROR "${libdeflate_compress} has no \"${CMAKE_MATCH_1}\"; cmake/Libdeflate.cmake must change it")
    endif()
    string(REPLACE "${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}" source "${source}")
  endforeach()
  list(REMOVE_ITEM libdeflate_sources ${libdeflate_compress})
  set(libdeflate_compress ${CMAKE_BINARY_DIR}/libdeflate/deflate_compress.c)
  file(CONFIGURE OUTPUT ${libdeflate_compress} CONTENT "${source}" @ONLY)
  list(APPEND libdeflate_sources ${libdeflate_compress})
endif()

add_library(libdeflate STATIC ${libdeflate_sources})
target_include_directories(libdeflate SYSTEM PUBLIC ${QX_LIBDEFLATE_DIR} PRIVATE ${QX_LIBDEFLATE_DIR}/lib)
# Optimised in every build: a debug build of a compressor is of no use to anybody.
target_compile_options(libdeflate PRIVATE -O2 -w)
