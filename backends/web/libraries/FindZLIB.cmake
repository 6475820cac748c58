# SPDX-License-Identifier: MIT
# zlib from its source, as script/web-libraries has put it together.
set(zlib_folder ${CMAKE_SOURCE_DIR}/build/web-libraries/zlib)
if(NOT TARGET ZLIB::ZLIB)
  foreach(name adler32 compress crc32 deflate infback inffast inflate inftrees trees uncompr zutil)
    list(APPEND zlib_sources ${zlib_folder}/${name}.c)
  endforeach()
  add_library(zlib STATIC ${zlib_sources})
  target_include_directories(zlib SYSTEM PUBLIC ${zlib_folder})
  target_compile_options(zlib PRIVATE -w)
  add_library(ZLIB::ZLIB ALIAS zlib)
endif()
set(ZLIB_FOUND TRUE)
