# SQLite and its ODBC driver, from Debian's source packages, which scripts/setup.sh unpacks. For the reference host
# alone.
foreach(file IN ITEMS sqlite3/sqlite3.c sqliteodbc/sqlite3odbc.c)
  if(NOT EXISTS ${CMAKE_SOURCE_DIR}/build/${file})
    message(FATAL_ERROR "build/${file} is missing; scripts/setup.sh fetches it")
  endif()
endforeach()
set(sqlite ${CMAKE_SOURCE_DIR}/build/sqlite3)
set(sqliteodbc ${CMAKE_SOURCE_DIR}/build/sqliteodbc)

# Nobody loads an extension into it.
add_library(sqlite STATIC ${sqlite}/sqlite3.c)
target_include_directories(sqlite SYSTEM PUBLIC ${sqlite})
target_compile_definitions(sqlite PUBLIC SQLITE_OMIT_LOAD_EXTENSION SQLITE_ENABLE_COLUMN_METADATA)
target_compile_options(sqlite PRIVATE -O2 -w)

# The driver that stands behind data access on Windows. Its resources take the version from a header that its own build
# would have made.
file(STRINGS ${sqliteodbc}/VERSION driver_version)
string(REPLACE "." "," driver_numbers "${driver_version}")
file(READ ${sqliteodbc}/resource.h.in driver_resources)
string(REPLACE "--VERS--" "${driver_version}" driver_resources "${driver_resources}")
string(REPLACE "--VERS_C--" "${driver_numbers}" driver_resources "${driver_resources}")
file(CONFIGURE OUTPUT sqliteodbc/resource3.h CONTENT "${driver_resources}" @ONLY)
add_library(sqlite3odbc SHARED ${sqliteodbc}/sqlite3odbc.c ${sqliteodbc}/sqlite3odbc.rc ${sqliteodbc}/sqlite3odbc.def)
set_target_properties(sqlite3odbc PROPERTIES PREFIX "")
target_include_directories(sqlite3odbc PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/sqliteodbc ${sqliteodbc})
target_compile_definitions(sqlite3odbc PRIVATE WITHOUT_SHELL=1 DRIVER_VER_INFO="${driver_version}"
  HAVE_SQLITE3COLUMNTABLENAME=1 HAVE_SQLITE3COLUMNDATABASENAME=1 HAVE_SQLITE3COLUMNORIGINNAME=1
  HAVE_SQLITE3PREPAREV2=1 HAVE_SQLITE3VFS=1 HAVE_SQLITE3PROFILE=1 HAVE_SQLITE3CLOSEV2=1 HAVE_SQLITE3STRNICMP=1
  HAVE_SQLITE3TABLECOLUMNMETADATA=1)
target_compile_options(sqlite3odbc PRIVATE $<$<COMPILE_LANGUAGE:C>:-O2 -w>)
target_link_libraries(sqlite3odbc PRIVATE sqlite odbccp32 comdlg32)
target_link_options(sqlite3odbc PRIVATE -static $<$<CONFIG:Release>:-s>)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_link_options(sqlite3odbc PRIVATE -Wl,--enable-stdcall-fixup)
endif()
