// The guards that the host holds: every slot of every interface, with a class behind it that throws.
#include <gtest/gtest.h>

#include <comdef.h>

#include <array>
#include <cstddef>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "CZALException.h"
#include "add_in_methods.h"
#include "case_name.h"
#include "environment.h"
#include "import_patch.h"
#include "module/guards.h"
#include "recording_add_in.h"
#include "solidworks_add_in_h.h"

namespace {

struct Exception {
  const char* name;
  void (*raise)();
  HRESULT code;
};

void PrintTo(const Exception& exception, std::ostream* stream) { *stream << exception.name; }

const Exception kExceptions[] = {
    {"ComError", [] { _com_issue_error(CO_E_NOTINITIALIZED); }, CO_E_NOTINITIALIZED},
    {"NullPointer", [] { _com_issue_error(E_POINTER); }, E_POINTER},
    {"PlatformException", [] { throw CZALException(static_cast<long>(0xA3013000), L"missing"); },
     static_cast<HRESULT>(0xA3013000)},
    {"PlatformExceptionWithoutAFailingCode", [] { throw CZALException(1, L"no failure"); }, E_UNEXPECTED},
    {"NoMemory", [] { throw std::bad_alloc(); }, E_OUTOFMEMORY},
    {"StandardException", [] { throw std::out_of_range("stoi"); }, E_FAIL},
    {"Number", [] { throw 1; }, E_FAIL},
};

/// Throws in every method but those of IUnknown, which the guard needs.
template <class Interface>
class Thrower : public Interface {
 public:
  explicit Thrower(void (*raise)()) : m_raise(raise) {}
  virtual ~Thrower() = default;

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

 protected:
  HRESULT Throw() const {
    m_raise();
    return S_OK;
  }

 private:
  void (*m_raise)();
};

template <class Dual>
class DispatchThrower : public Thrower<Dual> {
 public:
  using Thrower<Dual>::Thrower;
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return this->Throw(); }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return this->Throw(); }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return this->Throw(); }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return this->Throw();
  }
};

class ThrowingAddIn : public DispatchThrower<UniformAddIn> {
 public:
  using DispatchThrower::DispatchThrower;

 protected:
  HRESULT OnCommand(const wchar_t*) override { return Throw(); }
  HRESULT OnEnable(const wchar_t*, long*) override { return Throw(); }
};

class ThrowingConnection : public Thrower<ISwAddin> {
 public:
  using Thrower::Thrower;
  STDMETHODIMP ConnectToSW(IDispatch*, long, VARIANT_BOOL*) override { return Throw(); }
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL*) override { return Throw(); }
};

class ThrowingBitmapHandler : public DispatchThrower<IBitmapHandler> {
 public:
  using DispatchThrower::DispatchThrower;
  STDMETHODIMP CreateBitmapFileFromResource(LONG, BSTR*) override { return Throw(); }
  STDMETHODIMP Dispose() override { return Throw(); }
};

class ThrowingFactory : public Thrower<IClassFactory> {
 public:
  using Thrower::Thrower;
  STDMETHODIMP CreateInstance(IUnknown*, REFIID, void**) override { return Throw(); }
  STDMETHODIMP LockServer(BOOL) override { return Throw(); }
};

class ThrowingSink : public DispatchThrower<IDispatch> {
 public:
  using DispatchThrower::DispatchThrower;
};

constexpr std::size_t kUnknownSlots = 3;
constexpr std::size_t kDispatchSlots = 7;

/// Calls the slot of an interface as a host does that knows nothing but its number, with arguments that point
/// to room for results.
HRESULT CallSlot(IUnknown* object, std::size_t slot) {
  using Method = HRESULT(STDMETHODCALLTYPE*)(void*, void*, void*, void*, void*, void*, void*, void*, void*);
  std::array<std::array<std::byte, 64>, 8> room{};
  const auto method = (*reinterpret_cast<Method**>(object))[slot];
  return method(object, &room[0], &room[1], &room[2], &room[3], &room[4], &room[5], &room[6], &room[7]);
}

// Without a platform folder the log goes to the debugger, in this whole program.
const ScopedEnvironment kNoHome{L"TAVO_HOME", std::nullopt};
const ScopedEnvironment kNoApplicationData{L"APPDATA", std::nullopt};

/// The lines of this program's log that tell of an exception.
class ExceptionLines {
 public:
  ExceptionLines() { lines.clear(); }

  const std::vector<std::wstring>& All() const { return lines; }

 private:
  static void WINAPI Record(LPCWSTR line) {
    if (std::wstring_view(line).find(L" raised 0x") != std::wstring_view::npos) lines.emplace_back(line);
  }

  static inline std::vector<std::wstring> lines;
  const ImportPatch m_patch{GetModuleHandleW(nullptr), "OutputDebugStringW", &Record};
};

/// Who logs the exception of a slot.
enum class Logged { kByTheGuard, kByTheMethod };

class GuardOf : public testing::TestWithParam<Exception> {
 protected:
  /// Expects that each slot from the fourth to the last returns the exception's code, and one line for each
  /// that does not log itself.
  template <class Interface, class Target>
  void ExpectEachSlotEndsTheException(std::size_t slots, Logged fourth = Logged::kByTheGuard) const {
    Target target(GetParam().raise);
    Guard<Interface> guard(target);
    for (std::size_t slot = kUnknownSlots; slot < slots; ++slot) {
      const ExceptionLines lines;
      EXPECT_EQ(CallSlot(&guard, slot), GetParam().code) << "slot " << slot;
      const bool by_method = slot == kUnknownSlots && fourth == Logged::kByTheMethod;
      EXPECT_EQ(lines.All().size(), by_method ? 0u : 1u) << "slot " << slot;
    }
  }
};

TEST_P(GuardOf, AddInEndsTheExceptionOfEachSlot) {
  ExpectEachSlotEndsTheException<ISolidWorksAddIn, ThrowingAddIn>(kDispatchSlots + 28);
}

TEST_P(GuardOf, ConnectionEndsTheExceptionOfEachSlot) {
  ExpectEachSlotEndsTheException<ISwAddin, ThrowingConnection>(kUnknownSlots + 2, Logged::kByTheMethod);
}

TEST_P(GuardOf, BitmapHandlerEndsTheExceptionOfEachSlot) {
  ExpectEachSlotEndsTheException<IBitmapHandler, ThrowingBitmapHandler>(kDispatchSlots + 2);
}

TEST_P(GuardOf, ClassFactoryEndsTheExceptionOfEachSlot) {
  ExpectEachSlotEndsTheException<IClassFactory, ThrowingFactory>(kUnknownSlots + 2);
}

TEST_P(GuardOf, EventSinkEndsTheExceptionOfEachSlot) {
  ExpectEachSlotEndsTheException<IDispatch, ThrowingSink>(kDispatchSlots);
}

INSTANTIATE_TEST_SUITE_P(, GuardOf, testing::ValuesIn(kExceptions), CaseName<Exception>);

TEST(GuardOfTheAddIn, CallsTheMethodOfEachSlot) {
  RecordingAddIn target;
  Guard<ISolidWorksAddIn> guard(target);
  std::size_t slot = kDispatchSlots;
  for (const std::wstring name : kMethodNames) {
    target.called.clear();
    EXPECT_EQ(CallSlot(&guard, slot++), S_OK);
    EXPECT_EQ(target.called, name + L" ");
  }
}

/// Expects that the guard of a connection whose methods throw reports neither a connection nor its end.
void ExpectNoSuccess(ISwAddin& target) {
  Guard<ISwAddin> guard(target);
  VARIANT_BOOL connected = VARIANT_TRUE;
  VARIANT_BOOL disconnected = VARIANT_TRUE;

  EXPECT_EQ(guard.ConnectToSW(nullptr, 1, &connected), E_FAIL);
  EXPECT_EQ(guard.DisconnectFromSW(&disconnected), E_FAIL);

  EXPECT_EQ(connected, VARIANT_FALSE);
  EXPECT_EQ(disconnected, VARIANT_FALSE);
}

TEST(GuardOfTheConnection, SaysNotConnectedAndNotDisconnected) {
  ThrowingConnection target([] { throw 1; });
  ExpectNoSuccess(target);
}

/// Throws after it has told the host that all went well.
class LateThrowingConnection : public Thrower<ISwAddin> {
 public:
  using Thrower::Thrower;
  STDMETHODIMP ConnectToSW(IDispatch*, long, VARIANT_BOOL* connected) override {
    *connected = VARIANT_TRUE;
    return Throw();
  }
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* disconnected) override {
    *disconnected = VARIANT_TRUE;
    return Throw();
  }
};

TEST(GuardOfTheConnection, SaysSoAlsoIfTheMethodHadSaidOtherwise) {
  LateThrowingConnection target([] { throw 1; });
  ExpectNoSuccess(target);
}

TEST(GuardOfTheConnection, PassesResultsOnWhereTheHostAsksForThem) {
  LateThrowingConnection target([] {});
  Guard<ISwAddin> guard(target);
  VARIANT_BOOL done = VARIANT_FALSE;

  EXPECT_EQ(guard.ConnectToSW(nullptr, 1, &done), S_OK);
  EXPECT_EQ(done, VARIANT_TRUE);
  done = VARIANT_FALSE;
  EXPECT_EQ(guard.DisconnectFromSW(&done), S_OK);
  EXPECT_EQ(done, VARIANT_TRUE);
  EXPECT_EQ(guard.ConnectToSW(nullptr, 1, nullptr), S_OK);
  EXPECT_EQ(guard.DisconnectFromSW(nullptr), S_OK);
}

TEST(GuardOfTheBitmapHandler, ReturnsNoPath) {
  ThrowingBitmapHandler target([] { throw std::bad_alloc(); });
  Guard<IBitmapHandler> guard(target);
  BSTR path = reinterpret_cast<BSTR>(&target);

  EXPECT_EQ(guard.CreateBitmapFileFromResource(254, &path), E_OUTOFMEMORY);

  EXPECT_EQ(path, nullptr);
}

}  // namespace
