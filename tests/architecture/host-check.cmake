# The integrators' check tool asks for every operation of a component and every entry of the path table that the
# program uses. What else it looks for, it takes from the program's own code.
#
#   cmake -DSOURCES=<the folder src> -DCHECK=<the folder of the check tool> -P host-check.cmake
cmake_minimum_required(VERSION 3.25)

# All sources of `folder` in one text, without comments and the characters that mean something in a list.
function(read_code folder result)
  set(code "")
  file(GLOB_RECURSE files "${folder}/*.cpp")
  foreach(file IN LISTS files)
    file(READ "${file}" text)
    string(APPEND code "${text}\n")
  endforeach()
  string(REGEX REPLACE "//[^\n]*" "" code "${code}")
  string(REGEX REPLACE "[][;]" " " code "${code}")
  set(${result} "${code}" PARENT_SCOPE)
endfunction()

read_code("${SOURCES}" program)
read_code("${CHECK}" tool)

string(REGEX MATCHALL "component_\\.(Call|CallNumber|Put|Get)\\([^\"]*L\"[A-Za-z0-9]+\"" operations "${program}")
string(REGEX MATCHALL "GetPathEntry\\([a-zA-Z_]+, \"[A-Za-z]+\"" entries "${program}")
string(REGEX MATCHALL "FolderFromPathTable\\([a-zA-Z_]+, \"[A-Za-z]+\"" folders "${program}")
foreach(kind operations entries folders)
  if(NOT ${kind})
    message(SEND_ERROR "no ${kind} in ${SOURCES}")
  endif()
  foreach(use IN LISTS ${kind})
    string(REGEX MATCH "\"[A-Za-z0-9]+\"$" name "${use}")
    if(NOT tool MATCHES "${name}")
      message(SEND_ERROR "the check tool does not ask for ${name}")
    endif()
  endforeach()
endforeach()
