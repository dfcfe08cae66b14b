# Test programs. Tests are compiled more often than they run, so they are built without optimisation and with
# line numbers as the only debug information, for the stack of a crash or hang. -g1 must come last, because
# -gdwarf-4 after it would select the full debug information. Wine's debug library reads DWARF 4, not DWARF 5.
#
# A failed comparison names its source file from the folder of the sources on.
add_library(test_options INTERFACE)
target_compile_options(test_options INTERFACE -O0 -gdwarf-4 -g1 -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
target_link_libraries(test_options INTERFACE gtest project_options)

if(WIN32)
  add_library(test_precompiled_headers OBJECT ${CMAKE_BINARY_DIR}/precompiled.cpp)
  target_link_libraries(test_precompiled_headers PRIVATE test_options)
  target_precompile_headers(test_precompiled_headers PRIVATE ${TAVO_PRECOMPILED_HEADERS} <gtest/gtest.h>)
endif()

function(tavo_compile_as_test target)
  target_link_libraries(${target} PRIVATE test_options)
  if(WIN32)
    target_compile_options(${target} PRIVATE ${TAVO_PRECOMPILED_OPTIONS})
    target_precompile_headers(${target} REUSE_FROM test_precompiled_headers)
  endif()
endfunction()

# tavo_test_library(NAME SOURCES ... [PUBLIC ...] [PRIVATE ...]): code that several test programs share. Its
# headers are next to its sources.
function(tavo_test_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} gtest PRIVATE ${arg_PRIVATE})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  tavo_compile_as_test(${name})
endfunction()

set(TAVO_TIMEOUT_FACTOR 1 CACHE STRING "what the time limits of test programs are multiplied by")

# tavo_test(NAME SOURCES ... LIBRARIES ... [INNER FOLDER ...] [TIMEOUT SECONDS] [OWN_MAIN]): a test program,
# which is one test for ctest.
#
# INNER: folders of the product with internal headers that the test includes. The program writes its results
# as XML into test-results/; `./dev test` adds them up. A program that hangs prints the stacks of its threads
# shortly before TIMEOUT and counts as failed. OWN_MAIN: the program has its own main(), which calls
# RunTests().
function(tavo_test name)
  cmake_parse_arguments(arg "OWN_MAIN" "TIMEOUT" "SOURCES;LIBRARIES;INNER" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * ${TAVO_TIMEOUT_FACTOR}")
  add_executable(${name} ${arg_SOURCES})
  if(NOT arg_OWN_MAIN)
    target_link_libraries(${name} PRIVATE test_main)
  endif()
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
  list(TRANSFORM arg_INNER PREPEND ${CMAKE_SOURCE_DIR}/)
  target_include_directories(${name} PRIVATE ${arg_INNER})
  tavo_compile_as_test(${name})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name} --gtest_output=xml:test-results/${name}.xml
           WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  set_property(GLOBAL APPEND PROPERTY TAVO_TEST_PROGRAMS "${name} ${arg_TIMEOUT}")
  math(EXPR watch "${arg_TIMEOUT} - 10")
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} ENVIRONMENT TEST_SECONDS=${watch})
endfunction()

# tavo_test_data(PROGRAM FILE ...): files that a test program reads. They are copied into the folder "data" beside the
# test programs, where BesideTests() finds them.
function(tavo_test_data program)
  foreach(file ${ARGN})
    get_filename_component(name ${file} NAME)
    set(copy ${CMAKE_BINARY_DIR}/tests/data/${name})
    add_custom_command(OUTPUT ${copy} DEPENDS ${file} COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy})
    target_sources(${program} PRIVATE ${copy})
  endforeach()
endfunction()
