# Makes imported targets global, so that a library may link packages that were found only in its own folder.
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
find_package(Threads REQUIRED)
find_package(OpenSSL 3 REQUIRED)
find_package(Boost 1.81 REQUIRED COMPONENTS json)

# morvex_sources(VARIABLE): every .cpp below the current folder, except in folders with a CMakeLists.txt of their own.
function(morvex_sources variable)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  file(GLOB_RECURSE nested CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*/CMakeLists.txt)
  foreach(list ${nested})
    get_filename_component(folder ${list} DIRECTORY)
    list(FILTER sources EXCLUDE REGEX "^${folder}/")
  endforeach()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# morvex_library(NAME LIBRARIES...): every .cpp below the current folder becomes one static library, but for folders with a
# CMakeLists.txt of their own. What it uses of
# cmake/Precompiled.cmake can be chosen by MORVEX_PRECOMPILED, of tests by MORVEX_PRECOMPILED_TESTS.
set(MORVEX_PRECOMPILED precompiled)
set(MORVEX_PRECOMPILED_TESTS precompiled-tests)
function(morvex_library name)
  morvex_sources(sources)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC ${ARGN})
  target_precompile_headers(${name} REUSE_FROM ${MORVEX_PRECOMPILED})
endfunction()

# morvex_feature(NAME LIBRARIES...): a library of the program's list of features (app/assembly), which links it.
function(morvex_feature name)
  morvex_library(${name} ${ARGN})
  set_property(GLOBAL APPEND PROPERTY MORVEX_FEATURES ${name})
endfunction()

# morvex_test(NAME LIBRARIES...): makes one test program of every .cpp below the current folder.
function(morvex_test name)
  find_package(GTest REQUIRED)
  morvex_sources(sources)
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE MORVEX_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_precompile_headers(${name} REUSE_FROM ${MORVEX_PRECOMPILED_TESTS})
  add_test(NAME ${name} COMMAND ${name})
endfunction()

# morvex_long_test(NAME LIBRARIES...): like morvex_test, for tests that `./test --long` runs with many more
# cases.
function(morvex_long_test name)
  morvex_test(${name} ${ARGN})
  set_tests_properties(${name} PROPERTIES LABELS long TIMEOUT 7200)
endfunction()
