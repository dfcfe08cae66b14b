# Cross build for 64-bit Windows with Debian's MinGW-w64, in the variant with POSIX threads: only that variant
# has std::mutex and std::thread.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# What is built has the same bytes wherever and whenever it is built, dependencies too: the folder of the sources is
# called /tavo in log events and debug information, no time is written, and the base address of a DLL does not come
# from its path.
get_filename_component(source_root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
foreach(names debug macro)  # not "file", which is both: tests have names of their own for __FILE__
  add_compile_options($<$<COMPILE_LANGUAGE:C,CXX>:-f${names}-prefix-map=${source_root}=/tavo>)
endforeach()
add_link_options(-Wl,--no-insert-timestamp -Wl,--disable-auto-image-base)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# ctest runs programs with this command, which starts Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine)
