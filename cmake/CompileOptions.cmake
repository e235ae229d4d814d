# SPDX-License-Identifier: Apache-2.0
# chartbridge_options: the language level, the warnings and the sanitizers of every C++ target. Link it privately.
set(CHARTBRIDGE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them: address,undefined or thread")
option(CHARTBRIDGE_COVERAGE "Instrument for gcov" OFF)

add_library(chartbridge_options INTERFACE)
target_compile_features(chartbridge_options INTERFACE cxx_std_17)
target_compile_options(chartbridge_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

if(CHARTBRIDGE_SANITIZE)
  target_compile_options(chartbridge_options INTERFACE
    -fsanitize=${CHARTBRIDGE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(chartbridge_options INTERFACE -fsanitize=${CHARTBRIDGE_SANITIZE})
endif()

if(CHARTBRIDGE_COVERAGE)
  target_compile_options(chartbridge_options INTERFACE --coverage)
  target_link_options(chartbridge_options INTERFACE --coverage)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
