# libdeflate, from Debian's source package, which scripts/setup.sh unpacks.
if(NOT EXISTS ${QX_LIBDEFLATE_DIR}/libdeflate.h)
  message(FATAL_ERROR "libdeflate is missing from ${QX_LIBDEFLATE_DIR}; scripts/setup.sh fetches it")
endif()
file(GLOB libdeflate_sources ${QX_LIBDEFLATE_DIR}/lib/deflate_*.c ${QX_LIBDEFLATE_DIR}/lib/utils.c
  ${QX_LIBDEFLATE_DIR}/lib/*/cpu_features.c)
add_library(libdeflate STATIC ${libdeflate_sources})
target_include_directories(libdeflate SYSTEM PUBLIC ${QX_LIBDEFLATE_DIR})
# Optimised in every build: a debug build of a compressor is of no use to anybody.
target_compile_options(libdeflate PRIVATE -O2 -w)
