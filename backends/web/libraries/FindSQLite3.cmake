# SPDX-License-Identifier: MIT
# SQLite from its source, as script/web-libraries has put it together. The options are those that SQLite's makers
# recommend where one thread uses it; nothing is loaded into it at run time.
add_library(sqlite3 STATIC ${CMAKE_SOURCE_DIR}/build/web-libraries/sqlite3/sqlite3.c)
target_include_directories(sqlite3 SYSTEM PUBLIC ${CMAKE_SOURCE_DIR}/build/web-libraries/sqlite3)
target_compile_definitions(sqlite3 PRIVATE SQLITE_THREADSAFE=0 SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_DEPRECATED)
target_compile_options(sqlite3 PRIVATE -w)
add_library(SQLite::SQLite3 ALIAS sqlite3)
set(SQLite3_FOUND TRUE)
