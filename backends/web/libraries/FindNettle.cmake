# SPDX-License-Identifier: MIT
# Of Nettle the SHA-256, from its source, as script/web-libraries has put it together.
set(folder ${CMAKE_SOURCE_DIR}/build/web-libraries)
add_library(nettle STATIC ${folder}/nettle/sha256.c ${folder}/nettle/sha256-compress.c ${folder}/nettle/write-be32.c)
target_include_directories(nettle SYSTEM PUBLIC ${folder})
target_compile_options(nettle PRIVATE -w)
set(Nettle_FOUND TRUE)
