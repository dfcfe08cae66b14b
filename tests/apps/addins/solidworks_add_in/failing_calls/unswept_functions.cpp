// The functions and methods that no sweep makes fail, with the reasons. coverage_test.cpp holds them against
// what is called.
#include "call_failures.h"

namespace {

constexpr const char* kMemoryOnly[] = {"___lc_codepage_func",
                                       "___mb_cur_max_func",
                                       "_errno",
                                       "_fileno",
                                       "iswctype",
                                       "memchr",
                                       "memcmp",
                                       "memcpy",
                                       "memmove",
                                       "memset",
                                       "strcmp",
                                       "strlen",
                                       "strtol",
                                       "towupper",
                                       "wcslen",
                                       "SafeArrayGetDim",
                                       "SysStringLen",
                                       "VariantInit",
                                       "EqualSid"};

constexpr const char* kOwnState[] = {"FlsGetValue",
                                     "GetCurrentProcess",
                                     "GetCurrentProcessId",
                                     "GetCurrentThreadId",
                                     "GetLastError",
                                     "GetThreadUILanguage",
                                     "GetTickCount64",
                                     "InitializeCriticalSection",
                                     "QueryPerformanceCounter",
                                     "QueryPerformanceFrequency",
                                     "SetLastError",
                                     "SetThreadErrorMode",
                                     "TlsGetValue",
                                     "_localtime64",
                                     "GetModuleHandleW",
                                     "GetProcAddress"};

constexpr const char* kGivesBack[] = {"free", "LocalFree", "SafeArrayUnaccessData", "SysFreeString",
                                      "VariantClear"};

constexpr const char* kExceptions[] = {"RaiseException", "RtlCaptureContext", "RtlUnwindEx"};

constexpr UnsweptFunctions kCannotFail[] = {
    {"works on memory that it is given", kMemoryOnly},
    {"reads or sets what the thread or the system has at hand", kOwnState},
    {"gives back what was taken; the caller could do nothing about a failure", kGivesBack},
    {"carries exceptions; the runtime has no answer to a failure", kExceptions},
};

constexpr const char* kSockets[] = {"FreeAddrInfoW",
                                    "GetAddrInfoW",
                                    "WSACleanup",
                                    "WSACloseEvent",
                                    "WSACreateEvent",
                                    "WSAEventSelect",
                                    "WSAGetLastError",
                                    "WSAResetEvent",
                                    "WSASend",
                                    "WSASetEvent",
                                    "WSASetLastError",
                                    "WSASocketW",
                                    "WSAStartup",
                                    "WSAWaitForMultipleEvents",
                                    "accept",
                                    "bind",
                                    "closesocket",
                                    "connect",
                                    "gethostname",
                                    "ioctlsocket",
                                    "listen",
                                    "recv",
                                    "send",
                                    "setsockopt",
                                    "shutdown"};

constexpr const char* kOtherAppenders[] = {"AllocConsole",
                                           "CopySid",
                                           "DeregisterEventSource",
                                           "GetConsoleMode",
                                           "GetConsoleScreenBufferInfo",
                                           "GetLengthSid",
                                           "GetStdHandle",
                                           "LockFileEx",
                                           "OpenProcess",
                                           "OutputDebugStringA",
                                           "RegisterEventSourceW",
                                           "ReportEventW",
                                           "SetConsoleTextAttribute",
                                           "UnlockFile",
                                           "WriteConsoleW",
                                           "GetCurrentDirectoryW",
                                           "_wgetdcwd",
                                           "_wgetenv",
                                           "_wmkdir",
                                           "_wremove",
                                           "_wrename",
                                           "_wsopen",
                                           "_wstat64",
                                           "_close",

                                           "FileTimeToSystemTime",
                                           "GetSystemTimeAsFileTime",
                                           "_gmtime64",
                                           "_mktime64",
                                           "FormatMessageA"};

constexpr const char* kStreams[] = {"__iob_func",
                                    "_fdopen",
                                    "_filelengthi64",
                                    "_fstat64",
                                    "_get_osfhandle",
                                    "_lseeki64",
                                    "_ultoa",
                                    "_vsnwprintf",
                                    "_write",
                                    "atoi",
                                    "fflush",
                                    "fgetpos",
                                    "fopen",
                                    "fprintf",
                                    "fputc",
                                    "fputwc",
                                    "fread",
                                    "fsetpos",
                                    "fwprintf",
                                    "fwrite",
                                    "getc",
                                    "getenv",
                                    "getwc",
                                    "iswalpha",
                                    "iswcntrl",
                                    "localeconv",
                                    "printf",
                                    "putc",
                                    "putwc",
                                    "setlocale",
                                    "setvbuf",
                                    "strchr",
                                    "strcoll",
                                    "strerror",
                                    "strftime",
                                    "strncmp",
                                    "strxfrm",
                                    "towlower",
                                    "ungetc",
                                    "ungetwc",
                                    "vfprintf",
                                    "wcscoll",
                                    "wcsxfrm",
                                    "IsDBCSLeadByteEx",
                                    "MultiByteToWideChar"};

constexpr const char* kThreads[] = {"CreateEventA",
                                    "DuplicateHandle",
                                    "GetCurrentThread",
                                    "GetHandleInformation",
                                    "GetProcessAffinityMask",
                                    "GetProcessTimes",
                                    "GetSystemTimeAdjustment",
                                    "GetThreadContext",
                                    "GetThreadPriority",
                                    "GetThreadTimes",
                                    "IsDebuggerPresent",
                                    "ReleaseSemaphore",
                                    "ResetEvent",
                                    "ResumeThread",
                                    "SetEvent",
                                    "SetHandleInformation",
                                    "SetProcessAffinityMask",
                                    "SetSystemTime",
                                    "SetThreadContext",
                                    "SetThreadPriority",
                                    "Sleep",
                                    "SuspendThread",
                                    "SwitchToThread",
                                    "TryEnterCriticalSection",
                                    "WaitForMultipleObjects",
                                    "_beginthreadex",
                                    "_endthreadex",
                                    "_setjmp",
                                    "longjmp"};

constexpr const char* kLoading[] = {"AddVectoredExceptionHandler",
                                    "DeleteCriticalSection",
                                    "EnterCriticalSection",
                                    "FlsAlloc",
                                    "FlsFree",
                                    "FlsSetValue",
                                    "GetModuleHandleA",
                                    "LeaveCriticalSection",
                                    "LoadLibraryW",
                                    "RemoveVectoredExceptionHandler",
                                    "TlsAlloc",
                                    "TlsFree",
                                    "VirtualProtect",
                                    "VirtualQuery",
                                    "_amsg_exit",
                                    "_get_heap_handle",
                                    "_initterm",
                                    "_lock",
                                    "_unlock",
                                    "_strdup"};

constexpr const char* kRegistration[] = {
    "QueryPathOfRegTypeLib", "RegCloseKey",     "RegCreateKeyExW",   "RegDeleteKeyW",  "RegDeleteTreeW",
    "RegDeleteValueW",       "RegOpenKeyExW",   "RegQueryInfoKeyW",  "RegSetValueExW", "RegisterTypeLib",
    "SetThreadLocale",       "StringFromGUID2", "UnRegisterTypeLib", "GetThreadLocale"};

constexpr const char* kEnding[] = {
    "abort", "exit", "signal", "__C_specific_handler", "RtlLookupFunctionEntry", "RtlVirtualUnwind"};

constexpr const char* kMessages[] = {
    "DispatchMessageW", "MsgWaitForMultipleObjectsEx", "PeekMessageW",          "PostMessageW",
    "PostQuitMessage",  "PostThreadMessageW",          "RegisterWindowMessageW"};

constexpr const char* kElsewhere[] = {"ConvertSidToStringSidW", "CreatePipe",      "FindClose",
                                      "FindFirstFileW",         "GetActiveWindow", "GetFullPathNameW",
                                      "OutputDebugStringW"};

constexpr UnsweptFunctions kNotCalled[] = {
    {"the logging library's network appenders, which the add-in refuses", kSockets},
    {"other appenders of the logging library than the add-in's own", kOtherAppenders},
    {"parts of the C++ library's streams and locales that the add-in does not use", kStreams},
    {"threads and contended locks of the libraries; the add-in starts no thread", kThreads},
    {"only while the system loads or unloads the DLL", kLoading},
    {"only while the DLL is registered, where each fails in module/registration_calls_test.cpp or cannot",
     kRegistration},
    {"ends the process, or unwinds through other languages", kEnding},
    {"only with messages in the queue, or in a thread without an apartment: tests/platform/invoker",
     kMessages},
    {"special cases, which their own tests cover: a pipe without a configured name "
     "or "
     "without an owner, long paths, a box in a window",
     kElsewhere},
};

constexpr const char* kHostMethods[] = {"ICommandManager::RemoveCommandTab",
                                        "ICommandGroup::get_HasMenu",
                                        "ICommandGroup::get_HasToolbar",
                                        "ICommandGroup::get_LargeIconList",
                                        "ICommandGroup::get_SmallIconList",
                                        "ICommandTab::get_Name",
                                        "ICommandTab::get_Visible",
                                        "IComponent2::GetSuppression",
                                        "IComponent2::get_Name2",
                                        "ICustomPropertyManager::Get2",
                                        "ICustomPropertyManager::get_Count",
                                        "IDrawingDoc::CreateDrawViewFromModelView3",
                                        "IModelDoc2::GetSaveFlag",
                                        "IModelDoc2::GetTitle",
                                        "IModelDoc2::IsOpenedReadOnly",
                                        "ISwAddin::ConnectToSW",
                                        "ISwAddin::DisconnectFromSW"};

}  // namespace

std::span<const UnsweptFunctions> FunctionsThatCannotFail() { return kCannotFail; }

std::span<const UnsweptFunctions> FunctionsThatAreNotCalled() { return kNotCalled; }

// No command calls them. The add-in's own functions that do are called by the tests of properties and
// drawings.
std::span<const char* const> HostMethodsThatAreNotCalled() { return kHostMethods; }
