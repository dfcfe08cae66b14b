# tavo_link_small(TARGET): links a DLL or program without the functions that nothing uses, and moves its debug
# information into a file beside it, NAME.debug, which debuggers find by a link in the binary.
#
# GNU's linker keeps every function that has unwind data, which is nearly all of them; lld does not. It needs the
# compiler's C++ library in the form that `./dev setup` makes (scripts/name_unwind_sections.py).
function(tavo_link_small target)
  set(linker ${CMAKE_SOURCE_DIR}/cmake/lld)
  set(library ${TAVO_DEPENDENCIES}/windows/lib)
  target_link_directories(${target} BEFORE PRIVATE ${library})
  target_link_options(${target} PRIVATE -B${linker} -Wl,--gc-sections)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${linker}/collect2 ${library}/libstdc++.a)
  set(binary $<TARGET_FILE:${target}>)
  get_target_property(type ${target} TYPE)
  set(suffix .dll)
  if(type STREQUAL EXECUTABLE)
    set(suffix .exe)
  endif()
  set(no_time ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0)  # else the tools write the time into what they change
  add_custom_command(TARGET ${target} POST_BUILD
    BYPRODUCTS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${target}${suffix}.debug
    COMMAND ${no_time} ${CMAKE_OBJCOPY} --only-keep-debug ${binary} ${binary}.debug
    COMMAND ${no_time} ${CMAKE_STRIP} -s ${binary}
    COMMAND ${no_time} ${CMAKE_OBJCOPY} --add-gnu-debuglink=${binary}.debug ${binary})
endfunction()
