# Compiler, linker, cache and warnings: global, so that every target can share one precompiled header.
set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
# A precompiled header and its users must not differ in these options: programs are compiled like libraries,
# and some packages require threads.
add_compile_options(-fPIC -pthread)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang" OR CMAKE_CXX_COMPILER_VERSION VERSION_LESS 19)
  message(FATAL_ERROR "The build needs clang 19 or newer; see docs/development.md.")
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_NOHASHDIR=1 ${CCACHE})
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  add_compile_definitions(_FORTIFY_SOURCE=2)
endif()
if(MORVEX_SANITIZE)
  add_compile_options(-fsanitize=${MORVEX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  string(REPLACE ",fuzzer-no-link" "" link_sanitizers "${MORVEX_SANITIZE}")
  add_link_options(-fsanitize=${link_sanitizers})
endif()

# These definitions change Qt's headers, so they must not differ between a precompiled header and its users.
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
include_directories(${CMAKE_SOURCE_DIR})
