# SPDX-License-Identifier: Apache-2.0
# chartbridge_options: the language level, the warnings, the hardening and the sanitizers of every C++
# target. Link it privately.
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

# Against mistakes in native code that an attacker could use: as Debian builds its own packages with
# hardening=+all. Optimised builds only, which is what fortified functions need. A library is bound
# when it is loaded, so that one that lacks a symbol never begins to run.
if(NOT CHARTBRIDGE_SANITIZE AND NOT CHARTBRIDGE_COVERAGE)
  set(hardened "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
  target_compile_definitions(chartbridge_options INTERFACE "$<${hardened}:_FORTIFY_SOURCE=2>")
  target_compile_options(chartbridge_options INTERFACE
    "$<${hardened}:-fstack-protector-strong>"
    "$<${hardened}:-Wformat;-Werror=format-security>")
  target_link_options(chartbridge_options INTERFACE
    "$<${hardened}:LINKER:-z,relro,-z,now>")
endif()

# Executables load at an address that changes.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
