// A host of the ABI that the real one has, which is not that of this toolchain: loads the add-in's DLL, calls
// it through its vtables, and prints what came back. Usage: foreign_host DLL SCENARIO GUARD
#include "guards.h"
#include "runtime.h"

namespace {

constexpr Guid kUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Guid kClassFactory = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Guid kDispatch = {0x20400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Guid kNull = {};
constexpr Guid kAddInClass = {0x555D9E80, 0x10EC, 0x45A2, {0x97, 0x12, 0xD4, 0x3E, 0x5E, 0x66, 0xF1, 0x63}};
constexpr Guid kAddIn = {0xB726E794, 0x32BB, 0x4D6D, {0xA6, 0xBF, 0x64, 0x88, 0x45, 0x87, 0x1B, 0x2E}};
constexpr Guid kSwAddin = {0xDA306A0D, 0xEAC5, 0x4406, {0x86, 0x10, 0xB1, 0xDA, 0x80, 0x5D, 0x92, 0x70}};
constexpr Guid kApplication = {0x83A33D22, 0x27C5, 0x11CE, {0xBF, 0xD4, 0x00, 0x40, 0x05, 0x13, 0xBB, 0x57}};

// Slots of the add-in's interface, and of the host's.
constexpr int kFirstMethod = 7;
constexpr int kMethods = 28;
constexpr int kRevisionNumber = 25;
constexpr int kGetCommandManager = 231;
constexpr int kApplicationSlots = 368;
constexpr int kCreateCommandGroup2 = 20;  // of the command manager

bool Same(const Guid& a, const Guid& b) {
  const auto* x = reinterpret_cast<const unsigned char*>(&a);
  const auto* y = reinterpret_cast<const unsigned char*>(&b);
  for (Size i = 0; i < sizeof a; ++i) {
    if (x[i] != y[i]) return false;
  }
  return true;
}

bool Same(const wchar_t* a, const wchar_t* b) {
  while (*a && *a == *b) ++a, ++b;
  return *a == *b;
}

void Print(const char* text) {
  constexpr auto kStandardOutput = static_cast<Dword>(-11);
  Dword size = 0;
  while (text[size]) ++size;
  WriteFile(GetStdHandle(kStandardOutput), text, size, &size, nullptr);
}

void PrintHex(Dword number) {
  char text[] = " 00000000";
  for (int digit = 8; digit > 0; --digit, number >>= 4) text[digit] = "0123456789abcdef"[number & 15];
  Print(text);
}

/// Prints a line: what it is, and numbers of eight hexadecimal digits.
template <class... Numbers>
void PrintLine(const char* what, Numbers... numbers) {
  Print(what);
  (PrintHex(static_cast<Dword>(numbers)), ...);
  Print("\n");
}

/// Calls a method by its slot, as a program does that was compiled with the interface's declaration.
template <class... Arguments>
Result CallSlot(void* object, int slot, Arguments... arguments) {
  using Method = Result (*)(void*, Arguments...);
  return reinterpret_cast<Method*>(*static_cast<void***>(object))[slot](object, arguments...);
}

// --- the host's objects: tables of functions, of which a few do something

enum class Host { kGivesNothing, kIsNoApplication, kGivesManager, kThrows, kFaults };
Host host_kind = Host::kGivesNothing;

/// An object of the host, as large as its largest one.
struct HostObject {
  void** table = slots;
  void* slots[kApplicationSlots] = {};
};
constinit HostObject application;  // nothing runs before Main
constinit HostObject command_manager;
constinit HostObject command_group;

Result NotImplemented(void*) { return kNotImplemented; }
unsigned long AddReference(void*) { return 2; }
unsigned long DropReference(void*) { return 1; }

Result Query(void* self, const Guid& id, void** object) {
  const bool known = Same(id, kUnknown) || Same(id, kDispatch) ||
                     (Same(id, kApplication) && host_kind != Host::kIsNoApplication);
  *object = known ? self : nullptr;
  return known ? kOk : kNoInterface;
}

Result GiveRevision(void*, wchar_t** revision) {
  *revision = SysAllocString(L"31.2.0");
  return kOk;
}

Result GiveCommandManager(void*, long, void** manager) {
  *manager = host_kind == Host::kGivesManager ? &command_manager : nullptr;
  if (host_kind == Host::kThrows) throw 1;
  if (host_kind == Host::kFaults) *static_cast<volatile int*>(nullptr) = 1;
  return kOk;
}

Result GiveGroup(void*, long, wchar_t*, wchar_t*, wchar_t*, long, short, long*, void** group) {
  *group = &command_group;
  return kOk;
}

void FillTable(HostObject& object) {
  for (void*& slot : object.slots) slot = reinterpret_cast<void*>(&NotImplemented);
  object.slots[0] = reinterpret_cast<void*>(&Query);
  object.slots[1] = reinterpret_cast<void*>(&AddReference);
  object.slots[2] = reinterpret_cast<void*>(&DropReference);
}

void FillTables() {
  FillTable(application);
  FillTable(command_manager);
  FillTable(command_group);
  application.slots[kRevisionNumber] = reinterpret_cast<void*>(&GiveRevision);
  application.slots[kGetCommandManager] = reinterpret_cast<void*>(&GiveCommandManager);
  command_manager.slots[kCreateCommandGroup2] = reinterpret_cast<void*>(&GiveGroup);
}

// --- the scenarios

using Guard = Result (*)(const Call&);

struct Scenario {
  void* add_in;  // ISolidWorksAddIn
  void* connection;
  Guard guard;
};

template <class Function>
Result Guarded(Guard guard, Function function) {
  const Call call{[](void* context) { return (*static_cast<Function*>(context))(); }, &function};
  return guard(call);
}

void Connect(const Scenario& scenario) {
  short connected = -2;
  const Result result = Guarded(scenario.guard, [&] {
    return CallSlot(scenario.connection, 3, static_cast<void*>(&application), 7L, &connected);
  });
  PrintLine("ConnectToSW", result, connected);
}

void Disconnect(const Scenario& scenario) {
  short disconnected = -2;
  const Result result =
      Guarded(scenario.guard, [&] { return CallSlot(scenario.connection, 4, &disconnected); });
  PrintLine("DisconnectFromSW", result, disconnected);
}

/// Prints slot, result and status.
void CallEveryMethod(const Scenario& scenario) {
  for (int slot = kFirstMethod; slot < kFirstMethod + kMethods; ++slot) {
    long status = -1;
    const Result result = Guarded(scenario.guard, [&] { return CallSlot(scenario.add_in, slot, &status); });
    PrintLine("slot", slot, result, status);
  }
}

struct DispatchParameters {
  void* arguments = nullptr;
  long* names = nullptr;
  unsigned count = 0;
  unsigned named = 0;
};

struct Variant {
  unsigned short type = 0;
  unsigned short reserved[3] = {};
  long value = -1;
  void* second_half = nullptr;
};

struct ExceptionInformation {
  unsigned short code = 0;
  unsigned short reserved = 0;
  wchar_t* source = nullptr;
  wchar_t* description = nullptr;
  wchar_t* help_file = nullptr;
  Dword help_context = 0;
  void* reserved_pointer = nullptr;
  void* fill_in = nullptr;
  Result result = 0;
};

/// Prints id, result, the code of the exception, and the type of the value that came back and the value.
void InvokeEveryMethod(const Scenario& scenario) {
  for (long id = 1; id <= kMethods; ++id) {
    DispatchParameters none;
    Variant value;
    ExceptionInformation information;
    const Result result = Guarded(scenario.guard, [&] {
      return CallSlot(scenario.add_in, 6, id, &kNull, 0UL, static_cast<unsigned short>(1), &none, &value,
                      &information, static_cast<unsigned*>(nullptr));
    });
    PrintLine("Invoke", id, result, information.result, value.type, value.type ? value.value : 0);
  }
}

/// Faults without the add-in: shows which guards catch that.
void Fault(const Scenario& scenario) {
  PrintLine("fault", Guarded(scenario.guard, [] {
              *static_cast<volatile int*>(nullptr) = 1;
              return kOk;
            }));
}

const wchar_t* arguments[8];

/// Splits the command line at its blanks; what stands between quotes stays whole.
int SplitCommandLine() {
  static wchar_t copy[4096];
  int count = 0;
  wchar_t* to = copy;
  for (const wchar_t* from = GetCommandLineW(); *from && count < 8;) {
    while (*from == L' ') ++from;
    if (!*from) break;
    const wchar_t end = *from == L'"' ? *from++ : L' ';
    arguments[count++] = to;
    while (*from && *from != end) *to++ = *from++;
    if (*from) ++from;
    *to++ = 0;
  }
  return count;
}

Guard GuardOf(const wchar_t* name) {
  if (Same(name, L"ehsc")) return CallUnderEhsc;
  if (Same(name, L"eha")) return CallUnderEha;
  if (Same(name, L"seh")) return CallUnderSeh;
  return CallWithoutGuard;
}

void Run(const wchar_t* name, const Scenario& scenario) {
  if (Same(name, L"fault")) return Fault(scenario);
  if (Same(name, L"commands")) return CallEveryMethod(scenario);
  if (Same(name, L"invoke")) return InvokeEveryMethod(scenario);
  if (Same(name, L"no-application")) host_kind = Host::kIsNoApplication;
  if (Same(name, L"connect-with-manager")) host_kind = Host::kGivesManager;
  if (Same(name, L"throwing-host")) host_kind = Host::kThrows;
  if (Same(name, L"faulting-host")) host_kind = Host::kFaults;
  Connect(scenario);
  if (!Same(name, L"everything-after-a-failure")) return;
  CallEveryMethod(scenario);
  Connect(scenario);
  Disconnect(scenario);
  Disconnect(scenario);
}

}  // namespace

extern "C" const int type_information_table = 0;  // in the place of the runtime's, which nothing here reads
extern "C" int _fltused = 0;

extern "C" void Main() {
  if (SplitCommandLine() != 4) ExitProcess(2);
  OleInitialize(nullptr);
  FillTables();
  const Handle dll = LoadLibraryW(arguments[1]);
  if (!dll) ExitProcess(3);
  const auto get = reinterpret_cast<Result (*)(const Guid&, const Guid&, void**)>(
      GetProcAddress(dll, "DllGetClassObject"));
  const auto can_unload = reinterpret_cast<Result (*)()>(GetProcAddress(dll, "DllCanUnloadNow"));
  void* factory = nullptr;
  Scenario scenario{nullptr, nullptr, GuardOf(arguments[3])};
  if (get(kAddInClass, kClassFactory, &factory) != kOk) ExitProcess(4);
  if (CallSlot(factory, 3, static_cast<void*>(nullptr), &kAddIn, &scenario.add_in) != kOk) ExitProcess(5);
  if (CallSlot(scenario.add_in, 0, &kSwAddin, &scenario.connection) != kOk) ExitProcess(6);

  Run(arguments[2], scenario);

  CallSlot(scenario.connection, 2);
  CallSlot(scenario.add_in, 2);
  CallSlot(factory, 2);
  PrintLine("DllCanUnloadNow", can_unload());
  Print("alive\n");
  ExitProcess(0);
}
