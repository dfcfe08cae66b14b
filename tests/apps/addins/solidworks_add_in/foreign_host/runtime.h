/// @file What the host of the other ABI needs of the system, declared without the system's headers: those of
/// this toolchain are written for its own ABI.
#pragma once

using Bool = int;
using Dword = unsigned long;
using Handle = void*;
using Result = long;  // HRESULT
using Size = unsigned long long;

struct Guid {
  Dword data1;
  unsigned short data2;
  unsigned short data3;
  unsigned char data4[8];
};

inline constexpr Result kOk = 0;
inline constexpr Result kNoInterface = static_cast<Result>(0x80004002);
inline constexpr Result kNotImplemented = static_cast<Result>(0x80004001);

#define IMPORTED extern "C" __declspec(dllimport)

IMPORTED Handle LoadLibraryW(const wchar_t* path);
IMPORTED void* GetProcAddress(Handle module, const char* name);
IMPORTED const wchar_t* GetCommandLineW();
IMPORTED Handle GetStdHandle(Dword which);
IMPORTED Bool WriteFile(Handle file, const void* bytes, Dword size, Dword* written, void* overlapped);
IMPORTED Bool VirtualProtect(void* address, Size size, Dword protection, Dword* before);
IMPORTED void* RtlLookupFunctionEntry(Size address, Size* base, void* history);
IMPORTED __declspec(noreturn) void ExitProcess(unsigned code);
IMPORTED Result OleInitialize(void* reserved);
IMPORTED wchar_t* SysAllocString(const wchar_t* text);
