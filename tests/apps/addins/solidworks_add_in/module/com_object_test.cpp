// Plain classes as COM objects.
#include <gtest/gtest.h>

#include <stdexcept>

#include "CZALException.h"
#include "base/com_pointers.h"
#include "module/com_module.h"
#include "module/com_object.h"

template <>
class Guard<IPersist> final : public GuardBase<IPersist> {
 public:
  using GuardBase::GuardBase;

  STDMETHODIMP GetClassID(CLSID* id) override {
    return EndExceptions(L"IPersist::GetClassID", [&] { return Target().GetClassID(id); });
  }
};

namespace {

struct Lifetime {
  bool alive = false;
  long locks_at_the_end = 0;
};

class Sample : public IDispatch, public IPersist {
 public:
  explicit Sample(Lifetime& lifetime) : m_lifetime(lifetime) { m_lifetime.alive = true; }
  virtual ~Sample() {
    m_lifetime.alive = false;
    m_lifetime.locks_at_the_end = CSolidWorksAddInModule::Instance().LockCount();
  }

  using Interfaces = InterfaceList<IDispatch, IPersist>;

  STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }

 private:
  Lifetime& m_lifetime;
};

/// Its constructor throws what `raise` throws.
class Failing : public IPersist {
 public:
  explicit Failing(void (*raise)()) { raise(); }
  virtual ~Failing() = default;
  using Interfaces = InterfaceList<IPersist>;
  STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
};

long Locks() { return CSolidWorksAddInModule::Instance().LockCount(); }

}  // namespace

TEST(ComObject, LivesUntilItsLastReferenceIsReleased) {
  Lifetime lifetime;
  IDispatch* object = nullptr;
  ASSERT_EQ(CreateComObject<Sample>(IID_PPV_ARGS(&object), lifetime), S_OK);
  EXPECT_EQ(object->AddRef(), 2u);
  EXPECT_EQ(object->Release(), 1u);
  EXPECT_TRUE(lifetime.alive);
  EXPECT_EQ(object->Release(), 0u);
  EXPECT_FALSE(lifetime.alive);
}

TEST(ComObject, LocksTheModuleUntilItIsDestroyed) {
  Lifetime lifetime;
  const long before = Locks();
  IDispatch* object = nullptr;
  ASSERT_EQ(CreateComObject<Sample>(IID_PPV_ARGS(&object), lifetime), S_OK);
  EXPECT_EQ(Locks(), before + 1);
  object->Release();
  EXPECT_GT(lifetime.locks_at_the_end, before) << "the DLL could be unloaded during the destructor";
  EXPECT_EQ(Locks(), before);
}

TEST(ComObject, HasOneIdentityForAllInterfaces) {
  Lifetime lifetime;
  IDispatchPtr dispatch;
  ASSERT_EQ(CreateComObject<Sample>(IID_PPV_ARGS(&dispatch), lifetime), S_OK);
  IPersist* persist = nullptr;
  ASSERT_EQ(dispatch->QueryInterface(IID_PPV_ARGS(&persist)), S_OK);
  IUnknown *first = nullptr, *second = nullptr;
  ASSERT_EQ(dispatch->QueryInterface(IID_PPV_ARGS(&first)), S_OK);
  ASSERT_EQ(persist->QueryInterface(IID_PPV_ARGS(&second)), S_OK);
  EXPECT_EQ(first, second);
  first->Release();
  second->Release();
  persist->Release();
}

TEST(ComObject, ReturnsNullForAnInterfaceThatItLacks) {
  Lifetime lifetime;
  IDispatchPtr object;
  ASSERT_EQ(CreateComObject<Sample>(IID_PPV_ARGS(&object), lifetime), S_OK);
  void* other = &lifetime;
  EXPECT_EQ(object->QueryInterface(IID_IClassFactory, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(ComObject, IsNotCreatedForAnInterfaceThatItLacks) {
  Lifetime lifetime;
  void* object = &lifetime;
  EXPECT_EQ(CreateComObject<Sample>(IID_IClassFactory, &object, lifetime), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_FALSE(lifetime.alive);
  EXPECT_EQ(CreateComObject<Sample>(IID_IUnknown, nullptr, lifetime), E_POINTER);
}

TEST(ComObject, ReturnsTheCodeOfAnExceptionOfItsConstructor) {
  const struct {
    void (*raise)();
    HRESULT result;
  } cases[] = {
      {[] { _com_issue_error(CO_E_NOTINITIALIZED); }, CO_E_NOTINITIALIZED},
      {[] { throw CZALException(static_cast<long>(0xA3013000), L"missing"); },
       static_cast<HRESULT>(0xA3013000)},
      {[] { throw std::bad_alloc(); }, E_OUTOFMEMORY},
      {[] { throw std::runtime_error("other"); }, E_FAIL},
      {[] { throw 1; }, E_FAIL},
  };
  const long before = Locks();
  for (const auto& c : cases) {
    void* object = &object;
    EXPECT_EQ(CreateComObject<Failing>(IID_IUnknown, &object, c.raise), c.result);
    EXPECT_EQ(object, nullptr);
  }
  EXPECT_EQ(Locks(), before);
}
