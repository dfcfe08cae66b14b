# The lists of what was built, which tests and the test kit read beside the test programs.

# tavo_collect_programs(RESULT FOLDER): the targets of the folder and of those below it that are programs or DLLs and
# built always. Without those with the property TAVO_UNLISTED.
function(tavo_collect_programs result folder)
  set(found)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    get_target_property(excluded ${target} EXCLUDE_FROM_ALL)
    get_target_property(unlisted ${target} TAVO_UNLISTED)
    if(type MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY)$" AND NOT excluded AND NOT unlisted)
      list(APPEND found ${target})
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below ${folders})
    tavo_collect_programs(found_below ${below})
    list(APPEND found ${found_below})
  endforeach()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

function(tavo_write_list name)
  list(SORT ARGN)
  list(JOIN ARGN "\n" lines)
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/tests/${name} CONTENT "${lines}\n")
endfunction()

# tavo_write_program_lists(TARGET): writes programs.txt, the paths of all programs and DLLs below the build folder, and
# test_programs.txt, the test programs with their time limits. TARGET, which looks at all of them, is built last. To be
# called when all targets are known.
function(tavo_write_program_lists target)
  tavo_collect_programs(targets ${CMAKE_SOURCE_DIR})
  set(others ${targets})
  list(REMOVE_ITEM others ${target})
  add_dependencies(${target} ${others})
  list(TRANSFORM targets REPLACE "(.+)" "$<PATH:RELATIVE_PATH,$<TARGET_FILE:\\1>,${CMAKE_BINARY_DIR}>"
       OUTPUT_VARIABLE paths)
  get_property(made_otherwise GLOBAL PROPERTY TAVO_PROGRAMS_MADE_OTHERWISE)
  tavo_write_list(programs.txt ${paths} ${made_otherwise})
  get_property(tests GLOBAL PROPERTY TAVO_TEST_PROGRAMS)
  tavo_write_list(test_programs.txt ${tests})
endfunction()
