# What every target of this project shares: the language, the warnings, the sanitizers, and one
# function each for a library, a program and a test.

option(ZEPHIN_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(ZEPHIN_WARNINGS_AS_ERRORS "Treat warnings as errors" OFF)

find_program(ZEPHIN_CCACHE ccache)
if(ZEPHIN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZEPHIN_CCACHE})
endif()
find_program(ZEPHIN_MOLD mold)

add_library(zephin_options INTERFACE)
target_compile_features(zephin_options INTERFACE cxx_std_20)
target_include_directories(zephin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(zephin_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wformat=2
  # Where it optimises, GCC 12 takes code of its own library for both of these faults.
  $<$<CONFIG:Debug>:-Wnull-dereference>
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<BOOL:${ZEPHIN_WARNINGS_AS_ERRORS}>:-Werror>
  $<$<BOOL:${ZEPHIN_SANITIZE}>:-fsanitize=address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer>)
# What users get has to withstand archives and servers of any kind.
target_compile_options(zephin_options INTERFACE
  $<$<CONFIG:Release>:-fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE
    -D_FORTIFY_SOURCE=3>)
target_link_options(zephin_options INTERFACE
  -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
  $<$<BOOL:${ZEPHIN_SANITIZE}>:-fsanitize=address,undefined>
  $<$<AND:$<BOOL:${ZEPHIN_MOLD}>,$<CXX_COMPILER_ID:GNU>>:-fuse-ld=mold>)

# Adds the folders in the order given. Each must have a CMakeLists.txt.
function(zephin_add_folders)
  foreach(folder IN LISTS ARGN)
    add_subdirectory(${folder})
  endforeach()
endfunction()

# zephin_library(NAME SOURCES a.cpp ... LINKS other ...): one static library of a folder.
# PRIVATE_LINKS are what its sources need and its headers don't show.
function(zephin_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE zephin_options ${ARG_PRIVATE_LINKS})
endfunction()

# zephin_program(NAME SOURCES a.cpp ... LINKS lib ...)
function(zephin_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE zephin_options ${ARG_LINKS})
endfunction()

# zephin_test(NAME SOURCES a_test.cpp ... LINKS lib ...): a GoogleTest program, one CTest case for
# each of its tests.
function(zephin_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  find_package(GTest REQUIRED)
  include(GoogleTest)
  zephin_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES PROPERTIES LABELS unit)
endfunction()

# zephin_fuzzer(NAME [SOURCES more.cpp ...] [LINKS lib ...] [OPTIONS -option=value ...]): the libFuzzer
# program of NAME.cpp, and a test that runs it for half a minute from the inputs in corpus/NAME, or
# for a moment if it has passed as it is. By hand, longer:
# PROGRAM -max_total_time=1800 NEW_INPUTS corpus/NAME.
function(zephin_fuzzer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;OPTIONS" ${ARGN})
  zephin_program(${name} SOURCES ${name}.cpp ${ARG_SOURCES} LINKS ${ARG_LINKS})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  set(found ${CMAKE_CURRENT_BINARY_DIR}/found_${name})
  file(MAKE_DIRECTORY ${found})
  add_test(NAME ${name}
    COMMAND /usr/bin/python3 -B ${PROJECT_SOURCE_DIR}/tests/fuzz/run_fuzzer.py $<TARGET_FILE:${name}>
      -timeout=60 -rss_limit_mb=1024 -print_final_stats=1 ${ARG_OPTIONS}
      ${found} ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
  set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 180)
endfunction()
