# SPDX-License-Identifier: MIT
# Its headers alone: the folder in which they are installed also has those of this machine's C library.
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
  target_include_directories(nlohmann_json::nlohmann_json SYSTEM INTERFACE ${CMAKE_SOURCE_DIR}/build/web-libraries/headers)
endif()
set(nlohmann_json_FOUND TRUE)
