# The documents name what the code uses: every number of app/MessageIds.h is used; every message stands in
# the manual's table and none is invented there, every text stands in the integrators' table, both stand in the
# demonstration's catalogue, and no number stands anywhere else in the code; every name that the host must know stands in the integrators' description, and every
# line of the operation log in the manual. The integrators' check tool asks for every operation of a
# component and every entry of the path table; what else it looks for, it takes from the program's
# own code.
#
#   cmake -DSOURCES=<the folder src> -DDOCS=<the folder docs> -DCATALOGUE=<a catalogue file>
#     -DCHECK=<the folder of the check tool> -P manual.cmake
cmake_minimum_required(VERSION 3.25)

# The sources of a folder in one text.
function(read_code folder result)
  file(GLOB_RECURSE files "${folder}/*.h" "${folder}/*.cpp")
  list(FILTER files EXCLUDE REGEX "/windows/(toolkit|resources)/|/app/MessageIds.h$")
  set(code "")
  foreach(file IN LISTS files)
    file(READ "${file}" text)
    string(APPEND code "${text}\n")
  endforeach()
  # Comments and includes are no use of what they name. Brackets and semicolons mean something in
  # lists: a "@" ends each statement instead.
  string(REGEX REPLACE "(//|#include)[^\n]*" "" code "${code}")
  string(REGEX REPLACE "[][]" " " code "${code}")
  string(REPLACE ";" "@" ${result} "${code}")
  return(PROPAGATE ${result})
endfunction()

read_code("${SOURCES}" code)
read_code("${CHECK}" check_tool)
file(READ "${CATALOGUE}" catalogue)
foreach(document manual/messages.md manual/log.md host-integration.md)
  file(READ "${DOCS}/${document}" ${document})
endforeach()

# The numbers have one home, and each is used by its name.
file(READ "${SOURCES}/app/MessageIds.h" numbers)
string(REGEX MATCHALL "\n  [A-Za-z]+ = [1-9][0-9]*" names "${numbers}")
foreach(line IN LISTS names)
  string(REGEX REPLACE "^\n  ([A-Za-z]+) = .*" "\\1" name "${line}")
  if(NOT code MATCHES "[^A-Za-z]${name}[^A-Za-z]")
    message(SEND_ERROR "app/MessageIds.h: nothing uses ${name}")
  endif()
endforeach()
string(REGEX MATCH "[^0-9A-Za-z_.'](6[0-6][0-9][0-9][0-9]|1000[0-3])[^0-9A-Za-z_]" literal "${code}")
if(literal)
  message(SEND_ERROR "a message number stands outside app/MessageIds.h: ${literal}")
endif()

# The numbers that fit `pattern`, against the rows that begin with one in `document`.
function(check_numbers document pattern)
  string(REGEX MATCHALL " = ${pattern}," found "${numbers}")
  string(REGEX REPLACE "[^0-9;]" "" used "${found}")
  list(REMOVE_DUPLICATES used)
  string(REGEX MATCHALL "\n\\| ${pattern} \\|" found "${${document}}")
  string(REGEX REPLACE "[^0-9;]" "" listed "${found}")
  list(SORT used)
  if(NOT used OR NOT listed STREQUAL used)
    set(missing ${used})
    list(REMOVE_ITEM missing ${listed})
    set(invented ${listed})
    list(REMOVE_ITEM invented ${used})
    message(SEND_ERROR "${document}: missing: ${missing}, not in the code: ${invented}, or rows not sorted or double")
  endif()
  foreach(number IN LISTS used)
    if(NOT "\n${catalogue}" MATCHES "\n${number}\t")
      message(SEND_ERROR "the catalogue lacks ${number}")
    endif()
  endforeach()
endfunction()

check_numbers(manual/messages.md "6[0-5][0-9][0-9][0-9]")
check_numbers(host-integration.md "(1000[0-9]|66[0-9][0-9][0-9])")

# The last literal of each piece of code that fits one of the patterns must stand in `place`, there
# between two `quote`s.
function(check_names place quote)
  foreach(use IN LISTS ARGN)
    string(REGEX MATCHALL "${use}" found "${code}")
    list(REMOVE_DUPLICATES found)
    if(NOT found)
      message(SEND_ERROR "nothing in the code fits ${use}")
    endif()
    foreach(match IN LISTS found)
      string(REGEX MATCH "\"([^\"]+)\"$" name "${match}")
      string(REGEX REPLACE "^[\"\\]+|[ (=\"]+$" "" name "${name}")
      string(FIND "${${place}}" "${quote}${name}${quote}" at)
      if(name STREQUAL "" OR at EQUAL -1)
        message(SEND_ERROR "${place} does not name ${name}")
      endif()
    endforeach()
  endforeach()
endfunction()

set(operations "component_\\.[A-Za-z]+\\([^\"]*L\"[A-Za-z0-9]+\"")
check_names(check_tool "\"" "${operations}" "GetPathEntry(OrShow)?\\(\"[A-Za-z]+\"" "FolderFromPathTable\\([a-zA-Z_]+, \"[A-Za-z]+\"")
# A cause that is a line of the log begins with a capital letter.
check_names(manual/log.md "" "(WriteLog|WarnOfLoss)\\([^\"@{?]*\"[^\"]+\"" "Failure\\(\"[A-Z][^\"]+\"")
check_names(host-integration.md "" "${operations}"
  "Find\\(\"[^\"]+\""                                            # exports of the host's libraries
  "L\"(Tarsus|ADODB|DAO)\\.[^\"]+\""                              # components
  "(GetPathEntry|GetPathEntryOrShow|GetString|FolderFromPathTable)\\([^\"@]*\"[A-Za-z]+\""
  "Reg[GS]etKey[A-Z]+\\(\"[^\"]+\""
  "{\"(BU[A-Za-z]+|Color[A-Za-z]+)\""                              # registry: looks
  "\"([A-Z]+_(BACKUP|RESTORE|DELETE)|MAINTENANCE|PERSONALINFOPROTECTION)\""
  "JobKey::[A-Za-z]+, \"[A-Za-z]+=\"")
