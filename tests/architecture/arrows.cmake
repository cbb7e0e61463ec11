# Refuses platform headers, platform words and forbidden arrows between the
# folders of the portable code.
#
#   cmake -DSOURCES=<the folder src> -P arrows.cmake
cmake_minimum_required(VERSION 3.25)

# Folders that each folder may include, besides itself. A folder that is not
# named here is refused: it has to find its place in the line first.
set(allowed_host "")
set(allowed_forms "")
set(allowed_app forms host)
set(allowed_media app forms host)
set(allowed_backup media app forms host)
set(allowed_restore backup media app forms host)
set(allowed_maintenance backup media app forms host)
set(allowed_access maintenance restore backup media app forms host)
set(portable host forms app media backup restore maintenance access)

set(standard_headers
  algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
  clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
  cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list fstream
  functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
  memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
  semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
  strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility
  valarray variant vector version)

function(refuse text)
  message(SEND_ERROR "${text}")
endfunction()

function(check_file folder file)
  file(STRINGS "${SOURCES}/${file}" includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS includes)
    if(line MATCHES "<([^>]+)>")
      if(NOT CMAKE_MATCH_1 IN_LIST standard_headers)
        refuse("${file}: platform header <${CMAKE_MATCH_1}>")
      endif()
    elseif(line MATCHES "\"([a-z]+)/[^\"]+\"")
      if(NOT CMAKE_MATCH_1 STREQUAL folder AND NOT CMAKE_MATCH_1 IN_LIST allowed_${folder})
        refuse("${file}: ${folder} may not include ${CMAKE_MATCH_1}")
      endif()
    else()
      refuse("${file}: an include that is not relative to src: ${line}")
    endif()
  endforeach()
  file(STRINGS "${SOURCES}/${file}" words REGEX "_WIN32|_WIN64|_MSC_VER|__MINGW|__linux__")
  if(words)
    refuse("${file}: platform word")
  endif()
endfunction()

file(GLOB_RECURSE files RELATIVE "${SOURCES}" "${SOURCES}/*.h" "${SOURCES}/*.cpp")
if(NOT files)
  refuse("no sources in ${SOURCES}")
endif()
foreach(file IN LISTS files)
  string(REGEX MATCH "^[^/]+" folder "${file}")
  if(folder STREQUAL "windows")
    continue()
  endif()
  if(NOT folder IN_LIST portable)
    refuse("${file}: unknown folder ${folder}")
  else()
    check_file(${folder} "${file}")
  endif()
endforeach()
