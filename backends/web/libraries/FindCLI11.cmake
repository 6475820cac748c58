# SPDX-License-Identifier: MIT
# Its headers alone: the folder in which they are installed also has those of this machine's C library.
if(NOT TARGET CLI11::CLI11)
  add_library(CLI11::CLI11 INTERFACE IMPORTED GLOBAL)
  target_include_directories(CLI11::CLI11 SYSTEM INTERFACE ${CMAKE_SOURCE_DIR}/build/web-libraries/headers)
endif()
set(CLI11_FOUND TRUE)
