# Compiler settings of the project's own code. A target gets them through tavo_library(),
# tavo_program() or tavo_test(); dependencies are built without them. What makes a build reproducible counts for
# dependencies too and stands in mingw-w64.cmake.
add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror)

if(WIN32)
  target_compile_definitions(project_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    _WIN32_WINNT=0x0A00 WINVER=0x0A00)  # Windows 10: the oldest system that a supported host runs on
  # The DLL contains its C++ runtime: it imports only system DLLs.
  target_link_options(project_options INTERFACE -static -static-libgcc -static-libstdc++)
endif()

# What is not a test, and so optimised: where it lists the places of variables, their order would depend on the path of
# the build folder.
add_library(product_options INTERFACE)
if(WIN32)
  target_compile_options(product_options INTERFACE -fno-var-tracking-assignments)
endif()
target_link_libraries(product_options INTERFACE project_options)

# GCC 12 finds faults in the standard library's own strings once they come from precompiled headers.
set(TAVO_PRECOMPILED_OPTIONS -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow
    -Wno-stringop-overread)

# The precompiled headers: headers that nearly every file of the cross build includes. Every file still
# includes what it uses, and is analysed without precompiled headers.
set(TAVO_PRECOMPILED_HEADERS
  <windows.h> <comdef.h> <oleauto.h>
  <algorithm> <functional> <map> <memory> <optional> <string> <string_view> <utility> <vector>)
if(WIN32)
  file(WRITE ${CMAKE_BINARY_DIR}/precompiled.cpp "// Compiled only to build the precompiled headers.\n")
  add_library(precompiled_headers OBJECT ${CMAKE_BINARY_DIR}/precompiled.cpp)
  target_link_libraries(precompiled_headers PRIVATE product_options)
  target_precompile_headers(precompiled_headers PRIVATE ${TAVO_PRECOMPILED_HEADERS})
endif()

# tavo_precompiled(TARGET): lets the target's files use the precompiled headers.
function(tavo_precompiled target)
  if(WIN32)
    target_compile_options(${target} PRIVATE ${TAVO_PRECOMPILED_OPTIONS})
    target_precompile_headers(${target} REUSE_FROM precompiled_headers)
  endif()
endfunction()

# tavo_library(NAME SOURCES ... [PUBLIC ...] [PRIVATE ...] [INCLUDE FOLDER]): a static library of the project.
#
# PUBLIC: libraries that its own headers include; targets that link it may include them, too. PRIVATE:
# libraries that only its sources include. INCLUDE: the folder with the headers for other targets; the headers
# next to the sources are only for the library itself and its tests.
function(tavo_library name)
  cmake_parse_arguments(arg "" "INCLUDE" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} product_options)
  if(arg_INCLUDE)
    target_include_directories(${name} PUBLIC ${arg_INCLUDE})
  endif()
  tavo_precompiled(${name})
endfunction()

# tavo_program(NAME SOURCES ... LIBRARIES ...): a console program of the project.
function(tavo_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} product_options)
  tavo_precompiled(${name})
endfunction()
