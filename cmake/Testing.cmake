# tavo_test(NAME SOURCES ... LIBRARIES ... [TIMEOUT SECONDS]): a test program, run whole by ctest.
#
# The program writes its results as XML into test-results/; `./dev test` adds those up. A program that
# hangs is ended after TIMEOUT seconds and counts as failed.
function(tavo_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} gtest project_options)
  # Tests are compiled more often than they run: what counts is how fast they are built.
  target_compile_options(${name} PRIVATE -O0 -g0)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name} --gtest_output=xml:test-results/${name}.xml
           WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
endfunction()
