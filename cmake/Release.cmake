# What makes a Windows build fit to be handed on: it can be made again, and it tells what is in it.

# The same sources and tools give the same bytes, wherever the sources lie and whenever they are compiled.
add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
add_link_options(-Wl,--no-insert-timestamp)

# The linker's map of each executable and library, from which packaging/contents.py learns what of others is in it.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/maps)
add_link_options(-Wl,-Map=${CMAKE_BINARY_DIR}/maps/$<TARGET_PROPERTY:NAME>.map)
