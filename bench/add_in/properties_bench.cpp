// Custom properties read and written, beside the bare calls of the host in a loop.
#include <benchmark/benchmark.h>

#include <windows.h>

#include <comdef.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "CJsonObject.h"
#include "CVariantHelper.h"
#include "bench_home.h"
#include "cad_host/host.h"
#include "class_under_test.h"
#include "host/constants.h"
#include "host/custom_properties.h"
#include "host/model_doc.h"
#include "import_patch.h"

namespace {

int WINAPI NoBox(HWND, LPCWSTR, LPCWSTR, UINT) { return IDOK; }

/// A document with so many properties in the simulated host, and the class of the add-in connected to it.
class Session {
 public:
  explicit Session(int count) : m_count(count) {
    m_home.Configure(L"View.json", R"({"name":"PLM","Menu":[]})");
    m_made = MakeClassUnderTest();
    m_addIn = &m_host.Connect(m_made.held, L"class");
    auto document = m_host.New(swDocPART);
    std::wstring values = L"{";
    for (int index = 0; index < count; ++index) {
      const std::wstring name = L"Eigenschaft " + std::to_wstring(index);
      document->model.properties.push_back({.name = name, .text = L"Wert " + std::to_wstring(index)});
      values += (index == 0 ? L"\"" : L",\"") + name + L"\":\"neuer Wert\"";
    }
    m_values = std::make_shared<CJsonObject>();
    if (!m_values->CreateFrom(values + L"}")) throw std::logic_error("the values are no JSON");
    m_host.Application()->get_IActiveDoc2(&m_document);
  }
  ~Session() {
    m_document = nullptr;
    m_host.Disconnect(*m_addIn);
  }

  void Read() {
    const auto json = std::make_shared<CJsonObject>();
    Check(m_made.object->GetCustomProperty(m_document, json));
    benchmark::DoNotOptimize(json);
  }

  void ReadBare() {
    const ICustomPropertyManagerPtr manager = Manager();
    _variant_t names;
    Check(manager->GetNames(&names));
    const SAFEARRAY* const array = V_ARRAY(&names);
    for (ULONG index = 0; index < array->rgsabound[0].cElements; ++index) {
      BSTR value = nullptr, resolved = nullptr;
      VARIANT_BOOL was_resolved = VARIANT_FALSE;
      Check(manager->Get3(static_cast<BSTR*>(array->pvData)[index], VARIANT_TRUE, &value, &resolved,
                          &was_resolved));
      SysFreeString(value);
      SysFreeString(resolved);
    }
  }

  void Write() { Check(m_made.object->PutAttributes(m_values)); }

  void WriteBare() {
    const ICustomPropertyManagerPtr manager = Manager();
    _variant_t names, types, values;
    long count = 0;
    Check(manager->GetAll(&names, &types, &values, &count));
    const _bstr_t value(L"neuer Wert");
    const SAFEARRAY* const array = V_ARRAY(&names);
    for (long index = 0; index < count; ++index) {
      long status = 0;
      Check(manager->Set(static_cast<BSTR*>(array->pvData)[index], value, &status));
    }
  }

  /// The host's record of calls grows otherwise.
  void ForgetCalls() { m_host.GetJournal().Clear(); }

  int Count() const { return m_count; }

 private:
  static void Check(HRESULT result) {
    if (FAILED(result)) _com_raise_error(result);
  }

  ICustomPropertyManagerPtr Manager() const {
    IModelDocExtensionPtr extension;
    Check(m_document->get_Extension(&extension));
    ICustomPropertyManagerPtr manager;
    Check(extension->get_CustomPropertyManager(_bstr_t(L""), &manager));
    return manager;
  }

  BenchHome m_home;
  int m_count;
  cad_host::Host m_host;
  ClassUnderTest m_made{};
  cad_host::AddIn* m_addIn = nullptr;
  std::shared_ptr<CJsonObject> m_values;
  IModelDoc2Ptr m_document;
};

void Register(int count) {
  const auto add = [count](const char* row, const char* variant, void (Session::*job)()) {
    const std::string name = std::string("properties/") + row + "/" + std::to_string(count) + "/" + variant;
    benchmark::RegisterBenchmark(name.c_str(), [count, job](benchmark::State& state) {
      Session session(count);
      for (auto _ : state) {
        (session.*job)();
        state.PauseTiming();
        session.ForgetCalls();
        state.ResumeTiming();
      }
    })->UseRealTime();
  };
  add("read", "ours", &Session::Read);
  add("read", "bare", &Session::ReadBare);
  add("write", "ours", &Session::Write);
  add("write", "bare", &Session::WriteBare);
}

}  // namespace

int main(int argc, char** argv) {
  // The box that says that writing is done waits for a person.
  const ImportPatch no_box(GetModuleHandleW(nullptr), "MessageBoxW", &NoBox);
  for (const int count : {10, 1'000, 10'000}) Register(count);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
