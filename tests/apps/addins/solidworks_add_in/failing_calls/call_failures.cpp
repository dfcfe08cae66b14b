#include "call_failures.h"

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cerrno>
#include <cstdio>

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

// It fails only if the operation has ended meanwhile.
BOOL WINAPI CancelAndFail(HANDLE file, OVERLAPPED* operation) noexcept {
  CancelIoEx(file, operation);
  SetLastError(ERROR_NOT_FOUND);
  return FALSE;
}

// The mutex is free either way.
BOOL WINAPI ReleaseAndFail(HANDLE mutex) noexcept {
  ReleaseMutex(mutex);
  SetLastError(ERROR_NOT_OWNER);
  return FALSE;
}

int CloseStreamAndFail(std::FILE* stream) noexcept {
  std::fclose(stream);
  errno = EIO;
  return EOF;
}

LONG_PTR CannotOpen() noexcept {
  errno = EACCES;
  return 0;
}

LONG_PTR CannotRead() noexcept {
  errno = EIO;
  return -1;
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
      {"_read", Address(&CannotRead)},
      {"_wfopen", Address(&CannotOpen)},
      {"AllowSetForegroundWindow", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"CancelIoEx", Address(&CancelAndFail)},
      {"CloseHandle", Address(&CloseAndFail)},
      {"CoGetApartmentType", Address(&Return<CO_E_NOTINITIALIZED>)},
      {"CompareStringOrdinal", Address(&Return<0, ERROR_INVALID_PARAMETER>)},
      {"CopyFileW", Address(&Return<0, ERROR_DISK_FULL>)},
      {"CoRegisterMessageFilter", Address(&Return<CO_E_NOT_SUPPORTED>)},
      {"CoWaitForMultipleHandles", Address(&Return<RPC_E_NO_SYNC>)},
      {"CreateDirectoryW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"CreateErrorInfo", Address(&Return<E_OUTOFMEMORY>)},
      {"CreateEventW", Address(&Return<0, ERROR_NO_SYSTEM_RESOURCES>)},
      {"CreateFileW", Address(&Return<-1, ERROR_ACCESS_DENIED>)},
      {"CreateProcessW", Address(&Return<0, ERROR_FILE_NOT_FOUND>)},
      {"CreateMutexW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"CreateSemaphoreA", Address(&Return<0, ERROR_NO_SYSTEM_RESOURCES>)},
      {"DeleteFileW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"DispCallFunc", Address(&Return<E_OUTOFMEMORY>)},
      {"DispGetIDsOfNames", Address(&Return<DISP_E_UNKNOWNNAME>)},
      {"DispInvoke", Address(&Return<E_OUTOFMEMORY>)},
      {"ExpandEnvironmentStringsW", Address(&Return<0, ERROR_NOT_ENOUGH_MEMORY>)},
      {"fclose", Address(&CloseStreamAndFail)},
      {"FindResourceExW", Address(&Return<0, ERROR_RESOURCE_NAME_NOT_FOUND>)},
      {"FindResourceW", Address(&Return<0, ERROR_RESOURCE_NAME_NOT_FOUND>)},
      {"FindStringOrdinal", Address(&Return<-1, ERROR_INVALID_PARAMETER>)},
      {"FormatMessageW", Address(&Return<0, ERROR_MR_MID_NOT_FOUND>)},
      {"GetEnvironmentVariableW", Address(&Return<0, ERROR_ENVVAR_NOT_FOUND>)},
      {"GetFileAttributesExW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"GetFileAttributesW", Address(&Return<-1, ERROR_ACCESS_DENIED>)},
      {"GetFileType", Address(&Return<FILE_TYPE_UNKNOWN, ERROR_INVALID_HANDLE>)},
      {"GetModuleFileNameW", Address(&Return<0, ERROR_INVALID_HANDLE>)},
      {"GetModuleHandleExW", Address(&Return<0, ERROR_MOD_NOT_FOUND>)},
      {"GetNamedPipeServerProcessId", Address(&Return<0, ERROR_INVALID_FUNCTION>)},
      {"GetNamedPipeServerSessionId", Address(&Return<0, ERROR_INVALID_FUNCTION>)},
      {"GetOverlappedResult", Address(&WaitAndFail)},
      {"GetQueueStatus", Address(&Return<0>)},
      {"GetSecurityInfo", Address(&Return<ERROR_ACCESS_DENIED>)},
      {"GetTempFileNameW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"GetTempPathW", Address(&Return<0, ERROR_ENVVAR_NOT_FOUND>)},
      {"GetTokenInformation", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"LCMapStringEx", Address(&Return<0, ERROR_INVALID_PARAMETER>)},
      {"LoadRegTypeLib", Address(&Return<TYPE_E_LIBNOTREGISTERED>)},
      {"LoadResource", Address(&Return<0, ERROR_RESOURCE_DATA_NOT_FOUND>)},
      {"LoadTypeLibEx", Address(&Return<TYPE_E_CANTLOADLIBRARY>)},
      {"LockResource", Address(&Return<0>)},
      {"MessageBoxW", Address(&Return<0, ERROR_NOT_ENOUGH_MEMORY>)},
      {"MoveFileExW", Address(&Return<0, ERROR_SHARING_VIOLATION>)},
      {"OpenProcessToken", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"PathFileExistsW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"PathIsDirectoryW", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"ProcessIdToSessionId", Address(&Return<0, ERROR_ACCESS_DENIED>)},
      {"ReadFile", Address(&Return<0, ERROR_BROKEN_PIPE>)},
      {"ReleaseMutex", Address(&ReleaseAndFail)},
      {"SafeArrayAccessData", Address(&Return<E_OUTOFMEMORY>)},
      {"SizeofResource", Address(&Return<0, ERROR_RESOURCE_DATA_NOT_FOUND>)},
      {"TlsSetValue", Address(&Return<0, ERROR_NOT_ENOUGH_MEMORY>)},
      {"WaitForSingleObject", Address(&Return<static_cast<LONG_PTR>(WAIT_FAILED), ERROR_INVALID_HANDLE>)},
      {"wcsftime", Address(&Return<0>)},
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
      {"SysAllocString", Address(&Return<0>)},
      {"SysAllocStringLen", Address(&Return<0>)},
  };
  return failures;
}
