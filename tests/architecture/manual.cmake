# The documents name what the code uses: every message stands in the manual's table and none is
# invented there, every text stands in the integrators' table, both stand in the demonstration's
# catalogue, every name that the host must know stands in the integrators' description, and every
# line of the operation log in the manual.
#
#   cmake -DSOURCES=<the folder src> -DDOCS=<the folder docs> -DCATALOGUE=<a catalogue file> -P manual.cmake
cmake_minimum_required(VERSION 3.25)

file(GLOB_RECURSE files "${SOURCES}/*.h" "${SOURCES}/*.cpp")
list(FILTER files EXCLUDE REGEX "/windows/(toolkit|resources)/")
set(code "")
foreach(file IN LISTS files)
  file(READ "${file}" text)
  string(APPEND code "${text}\n")
endforeach()
# Comments and includes are no use of what they name. Brackets and semicolons mean something in
# lists: a "@" ends each statement instead.
string(REGEX REPLACE "(//|#include)[^\n]*" "" code "${code}")
string(REGEX REPLACE "[][]" " " code "${code}")
string(REPLACE ";" "@" code "${code}")

file(READ "${CATALOGUE}" catalogue)

# The numbers that fit `pattern` in the code, against the rows that begin with one in `document`.
function(check_numbers document pattern)
  string(REGEX MATCHALL "[^0-9A-Za-z_.]${pattern}[^0-9A-Za-z_]" found "${code}")
  string(REGEX REPLACE "[^0-9;]" "" used "${found}")
  list(REMOVE_DUPLICATES used)
  file(READ "${DOCS}/${document}" text)
  string(REGEX MATCHALL "\n\\| ${pattern} \\|" found "${text}")
  string(REGEX REPLACE "[^0-9;]" "" listed "${found}")
  set(missing ${used})
  list(REMOVE_ITEM missing ${listed})
  set(invented ${listed})
  list(REMOVE_ITEM invented ${used})
  set(sorted ${listed})
  list(SORT sorted)
  list(REMOVE_DUPLICATES sorted)
  if(NOT used OR missing OR invented)
    message(SEND_ERROR "${document}: missing: ${missing}; not in the code: ${invented}")
  endif()
  foreach(number IN LISTS used)
    if(NOT "\n${catalogue}" MATCHES "\n${number}\t")
      message(SEND_ERROR "the catalogue lacks ${number}")
    endif()
  endforeach()
  if(NOT listed STREQUAL sorted)
    message(SEND_ERROR "${document}: rows are not sorted, or double")
  endif()
endfunction()

check_numbers(manual/messages.md "6[0-5][0-9][0-9][0-9]")
check_numbers(host-integration.md "(1000[0-9]|66[0-9][0-9][0-9])")

# The last literal of each piece of code that fits one of the patterns must stand in `document`.
function(check_names document)
  file(READ "${DOCS}/${document}" text)
  foreach(use IN LISTS ARGN)
    string(REGEX MATCHALL "${use}" found "${code}")
    list(REMOVE_DUPLICATES found)
    if(NOT found)
      message(SEND_ERROR "nothing in the code fits ${use}")
    endif()
    foreach(match IN LISTS found)
      string(REGEX MATCH "\"([^\"]+)\"$" name "${match}")
      string(REGEX REPLACE "^[\"\\]+|[ (=\"]+$" "" name "${name}")
      string(FIND "${text}" "${name}" at)
      if(name STREQUAL "" OR at EQUAL -1)
        message(SEND_ERROR "${document} does not name ${name}")
      endif()
    endforeach()
  endforeach()
endfunction()

check_names(host-integration.md
  "Find\\(\"[^\"]+\""                                            # exports of the host's libraries
  "L\"(Tarsus|ADODB|DAO)\\.[^\"]+\""                              # components
  "component_\\.[A-Za-z]+\\([^\"]*L\"[A-Za-z0-9]+\""             # their operations
  "(GetPathEntry|GetString|FolderFromPathTable)\\([^\"]*\"[A-Za-z]+\""
  "Reg[GS]etKey[A-Z]+\\(\"[^\"]+\""
  "{\"(BU[A-Za-z]+|Color[A-Za-z]+)\""                              # registry: looks
  "\"([A-Z]+_(BACKUP|RESTORE|DELETE)|MAINTENANCE|PERSONALINFOPROTECTION)\""
  "JobKey::[A-Za-z]+, \"[A-Za-z]+=\"")
check_names(manual/log.md "(WriteLog|WarnOfLoss)\\([^\"@{?]*\"[^\"]+\"")
