# Refuses platform headers, platform words and forbidden arrows between the
# folders of the portable code.
#
#   cmake -DSOURCES=<the folder src> -P arrows.cmake
cmake_minimum_required(VERSION 3.25)

# Folders that each folder may include besides itself. A folder that is not named here is
# refused: it has to find its place in the line first.
set(below_base "")
set(below_cabinet base)
set(below_host base)
set(below_forms base)
set(below_app base host forms)
set(below_work ${below_app} app)
set(below_media ${below_app} app)
set(below_backupset ${below_app} app work media cabinet)
set(below_jobs ${below_backupset} backupset)
set(below_backup ${below_jobs} jobs)
set(below_restore ${below_jobs} jobs)
set(below_maintenance ${below_jobs} jobs)
set(below_access ${below_jobs} jobs backup restore maintenance)

file(GLOB_RECURSE files RELATIVE "${SOURCES}" "${SOURCES}/*.h" "${SOURCES}/*.cpp")
list(FILTER files EXCLUDE REGEX "^windows/")
if(NOT files)
  message(SEND_ERROR "no sources in ${SOURCES}")
endif()
foreach(file IN LISTS files)
  string(REGEX MATCH "^[^/]+" folder "${file}")
  if(NOT DEFINED below_${folder})
    message(SEND_ERROR "${file}: unknown folder ${folder}")
  endif()
  file(STRINGS "${SOURCES}/${file}" includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS includes)
    if(line MATCHES "\"([a-z]+)/[^\"]+\"")
      if(NOT CMAKE_MATCH_1 STREQUAL folder AND NOT CMAKE_MATCH_1 IN_LIST below_${folder})
        message(SEND_ERROR "${file}: ${folder} may not include ${CMAKE_MATCH_1}")
      endif()
    elseif(line MATCHES "\"")
      message(SEND_ERROR "${file}: an include that is not relative to src: ${line}")
    elseif(NOT line MATCHES "<[a-z_]+>") # the C++ library's headers alone have neither dot nor slash
      message(SEND_ERROR "${file}: platform header: ${line}")
    endif()
  endforeach()
  file(STRINGS "${SOURCES}/${file}" words REGEX "_WIN32|_WIN64|_MSC_VER|__MINGW|__linux__")
  if(words)
    message(SEND_ERROR "${file}: platform word")
  endif()
endforeach()
