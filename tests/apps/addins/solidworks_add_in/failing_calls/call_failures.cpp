#include "call_failures.h"

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cerrno>

namespace {

/// Answers `kResult`, with `kError` as the last error.
template <LONG_PTR kResult, DWORD kError = ERROR_SUCCESS>
LONG_PTR Return() noexcept {
  if (kError != ERROR_SUCCESS) SetLastError(kError);
  return kResult;
}

LONG_PTR NoMemory() noexcept {
  errno = ENOMEM;
  return 0;
}

// The handle is gone either way.
BOOL WINAPI CloseAndFail(HANDLE handle) noexcept {
  CloseHandle(handle);
  SetLastError(ERROR_INVALID_HANDLE);
  return FALSE;
}

// The operation ends either way.
BOOL WINAPI WaitAndFail(HANDLE file, OVERLAPPED* operation, DWORD* moved, BOOL waits) noexcept {
  GetOverlappedResult(file, operation, moved, waits);
  SetLastError(ERROR_BROKEN_PIPE);
  return FALSE;
}

template <class Function>
const void* Address(Function* function) {
  return reinterpret_cast<const void*>(function);
}

}  // namespace

std::span<const CallFailure> SystemFailures() {
  static const CallFailure failures[] = {
      {"CancelIoEx", Address(&Return<0, ERROR_NOT_FOUND>)},
      {"CloseHandle", Address(&CloseAndFail)},
      {"CoGetApartmentType", Address(&Return<CO_E_NOTINITIALIZED>)},
      {"CoRegisterMessageFilter", Address(&Return<CO_E_NOT_SUPPORTED>)},
      {"CoWaitForMultipleHandles", Address(&Return<RPC_E_NO_SYNC>)},
      {"CompareStringOrdinal", Address(&Return<0, ERROR_INVALID_PARAMETER>)},
      {"CopyFileW", Address(&Return<0, ERROR_DISK_FULL>)},
      {"CreateDirectoryW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"CreateEventW", Address(&Return<0, ERROR_NO_SYSTEM_RESOURCES>)},
      {"CreateFileW", Address(&Return<-1, ERROR_ACCESS_DENIED>)},
      {"DeleteFileW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"DispCallFunc", Address(&Return<E_OUTOFMEMORY>)},
      {"FindResourceExW", Address(&Return<0, ERROR_RESOURCE_NAME_NOT_FOUND>)},
      {"FindResourceW", Address(&Return<0, ERROR_RESOURCE_NAME_NOT_FOUND>)},
      {"FindStringOrdinal", Address(&Return<-1, ERROR_INVALID_PARAMETER>)},
      {"FormatMessageW", Address(&Return<0, ERROR_MR_MID_NOT_FOUND>)},
      {"GetEnvironmentVariableW", Address(&Return<0, ERROR_ENVVAR_NOT_FOUND>)},
      {"GetFileAttributesExW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"GetFileAttributesW", Address(&Return<-1, ERROR_ACCESS_DENIED>)},
      {"GetModuleFileNameW", Address(&Return<0, ERROR_INVALID_HANDLE>)},
      {"GetModuleHandleExW", Address(&Return<0, ERROR_MOD_NOT_FOUND>)},
      {"GetOverlappedResult", Address(&WaitAndFail)},
      {"GetTempFileNameW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"GetTempPathW", Address(&Return<0, ERROR_ENVVAR_NOT_FOUND>)},
      {"LCMapStringEx", Address(&Return<0, ERROR_INVALID_PARAMETER>)},
      {"LoadRegTypeLib", Address(&Return<TYPE_E_LIBNOTREGISTERED>)},
      {"LoadResource", Address(&Return<0, ERROR_RESOURCE_DATA_NOT_FOUND>)},
      {"LockResource", Address(&Return<0>)},
      {"MessageBoxW", Address(&Return<0, ERROR_NOT_ENOUGH_MEMORY>)},
      {"MoveFileExW", Address(&Return<0, ERROR_SHARING_VIOLATION>)},
      {"PathFileExistsW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"PathIsDirectoryW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"ReadFile", Address(&Return<0, ERROR_BROKEN_PIPE>)},
      {"SafeArrayAccessData", Address(&Return<E_OUTOFMEMORY>)},
      {"SafeArrayGetDim", Address(&Return<0>)},
      {"SizeofResource", Address(&Return<0, ERROR_RESOURCE_DATA_NOT_FOUND>)},
      {"TlsSetValue", Address(&Return<0, ERROR_NOT_ENOUGH_MEMORY>)},
      {"WaitForSingleObject", Address(&Return<static_cast<LONG_PTR>(WAIT_FAILED), ERROR_INVALID_HANDLE>)},
      {"WideCharToMultiByte", Address(&Return<0, ERROR_NO_UNICODE_TRANSLATION>)},
      {"WriteFile", Address(&Return<0, ERROR_DISK_FULL>)},
  };
  return failures;
}

std::span<const CallFailure> MemoryFailures() {
  static const CallFailure failures[] = {
      {"malloc", Address(&NoMemory)},
      {"calloc", Address(&NoMemory)},
      {"realloc", Address(&NoMemory)},
      {"_strdup", Address(&NoMemory)},
      {"LocalAlloc", Address(&Return<0, ERROR_NOT_ENOUGH_MEMORY>)},
      {"SysAllocString", Address(&Return<0>)},
      {"SysAllocStringLen", Address(&Return<0>)},
  };
  return failures;
}
