# SPDX-License-Identifier: MIT
# minizip from its source, as script/web-libraries has put it together.
set(folder ${CMAKE_SOURCE_DIR}/build/web-libraries)
find_package(ZLIB REQUIRED)
add_library(minizip STATIC ${folder}/minizip/zip.c ${folder}/minizip/unzip.c ${folder}/minizip/ioapi.c)
target_include_directories(minizip SYSTEM PUBLIC ${folder})
target_compile_definitions(minizip PRIVATE NOCRYPT USE_FILE32API)
target_compile_options(minizip PRIVATE -w)
target_link_libraries(minizip PUBLIC ZLIB::ZLIB)
set(Minizip_FOUND TRUE)
