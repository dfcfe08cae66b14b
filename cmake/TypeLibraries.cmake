# The command that turns an interface description into a type library or a header. What descriptions import comes
# with Wine; only this command uses the two folders, never the compiler. The time that is written into a type library
# is always the same, the first second of 1970, so that each build gives the same bytes.
set(TAVO_WIDL ${CMAKE_COMMAND} -E env WIDL_TIME_OVERRIDE=0 TZ=UTC x86_64-w64-mingw32-widl
  -I/usr/include/wine/wine/windows -L/usr/lib/x86_64-linux-gnu/wine/x86_64-windows)
