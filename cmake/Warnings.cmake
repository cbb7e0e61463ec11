# Options that all of our own targets share. Warnings are errors: a build that
# prints nothing is the only kind in which a new warning is seen.
add_library(qx_options INTERFACE)
target_compile_options(qx_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Werror)
# GCC 12 takes string concatenations at -O3 for overlapping copies.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(qx_options INTERFACE -Wno-restrict)
endif()
if(QX_SANITIZE)
  target_compile_options(qx_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qx_options INTERFACE -fsanitize=address,undefined)
endif()
# For libFuzzer (the preset "fuzz"): every branch reports that it was taken.
option(QX_FUZZ "Build the fuzz targets as libFuzzer programs; needs clang" OFF)
if(QX_FUZZ)
  target_compile_options(qx_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(WIN32)
  target_compile_definitions(qx_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
  target_link_options(qx_options INTERFACE -static)
  # The manifest of every executable. Without one Windows takes a program for one of old times: what it writes below
  # Program Files goes to a folder of the user's, and a name with "install" in it asks for an administrator.
  set(manifest ${CMAKE_SOURCE_DIR}/src/windows/resources/Program.manifest)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${manifest})
  file(SHA1 ${manifest} hash)  # a change of the manifest changes the script, and makes it be compiled anew
  file(CONFIGURE OUTPUT manifest.rc CONTENT "// ${hash}\n1 24 \"${manifest}\"\n")
  target_sources(qx_options INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_BINARY_DIR}/manifest.rc>)
endif()

# What the portable folders are compiled with: the standard library and src/ as
# the root of includes. On the Windows target the build still refuses a Windows
# header there (tests/architecture).
add_library(qx_portable INTERFACE)
target_link_libraries(qx_portable INTERFACE qx_options)
target_include_directories(qx_portable INTERFACE ${CMAKE_SOURCE_DIR}/src)
