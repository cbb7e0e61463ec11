# Numbers the controls of the dialogs, from the templates alone: a control is declared by its line in a template and
# by the member of its form.
#
#   cmake -DRESOURCES=<the folder of dialogs.rc> -DTARGET=<a folder> -P DialogIds.cmake
#
# Writes resource.h, which gives each ID_<form>_<control> its number, and ControlTable.inc, the table by which the
# toolkit finds a member's control. A dialog has one hundred numbers, in the order in which dialogs.rc includes the
# templates, and its controls take them in order of appearance.
cmake_minimum_required(VERSION 3.25)

set(first_number 1000)
set(numbers_per_dialog 100)

set(definitions "")
set(table "")
set(base ${first_number})
file(STRINGS "${RESOURCES}/dialogs.rc" includes REGEX "^#include \"dialogs/")
foreach(include IN LISTS includes)
  string(REGEX REPLACE ".*\"dialogs/([A-Za-z0-9]+)\\.rc\".*" "\\1" form "${include}")
  set(template "${RESOURCES}/dialogs/${form}.rc")
  file(STRINGS "${template}" head REGEX "^${form} DIALOGEX")
  if(NOT head)
    message(FATAL_ERROR "${template} has no dialog ${form}: file, dialog and form have one name")
  endif()
  file(READ "${template}" text)
  string(REGEX MATCHALL "ID_[A-Za-z0-9_]+" ids "${text}")
  set(number ${base})
  set(seen "")
  foreach(id IN LISTS ids)
    if(NOT id MATCHES "^ID_${form}_([A-Za-z0-9]+)$")
      message(FATAL_ERROR "${template}: ${id} is no ID_${form}_<control>")
    endif()
    set(control ${CMAKE_MATCH_1})
    if(id IN_LIST seen)
      message(FATAL_ERROR "${template}: two controls ${control}")
    endif()
    list(APPEND seen ${id})
    math(EXPR number "${number} + 1")
    string(APPEND definitions "#define ${id} ${number}\n")
    string(APPEND table "{\"${form}\", \"${control}\", ${id}},\n")
  endforeach()
  math(EXPR base "${base} + ${numbers_per_dialog}")
  if(number GREATER_EQUAL base)
    message(FATAL_ERROR "${template}: no numbers left for its controls")
  endif()
endforeach()
if(NOT table)
  message(FATAL_ERROR "${RESOURCES}/dialogs.rc includes no dialogs")
endif()

configure_file("${RESOURCES}/resource.h.in" "${TARGET}/resource.h" @ONLY)
file(CONFIGURE OUTPUT "${TARGET}/ControlTable.inc" CONTENT "@table@" @ONLY)
