# Compiler settings of the project's own code. A target gets them through tavo_library(),
# tavo_program() or tavo_test(); dependencies are built without them.
add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror)

if(WIN32)
  target_compile_definitions(project_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    _WIN32_WINNT=0x0A00 WINVER=0x0A00)  # Windows 10: the oldest system that a supported host runs on
  # One DLL that brings its runtime along: nothing but system DLLs is imported.
  target_link_options(project_options INTERFACE -static -static-libgcc -static-libstdc++)
endif()

# tavo_library(NAME SOURCES ... LIBRARIES ...): a static library of the project.
function(tavo_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_LIBRARIES} PRIVATE project_options)
endfunction()

# tavo_program(NAME SOURCES ... LIBRARIES ...): a console program of the project.
function(tavo_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} project_options)
endfunction()
