#include "peers/same_calls.h"

#include <ocidl.h>

#include <comdef.h>

#include <array>

#include "base/com_pointers.h"
#include "base/unique_handle.h"
#include "host/application_events.h"
#include "host/constants.h"

namespace {

constexpr int kItems = 14;
constexpr std::size_t kIconBytes = 54 + 512 * 32 * 3;
const _bstr_t kTitle(L"TAVO PLM");

/// Accepts events and does nothing.
class Sink : public IDispatch {
 public:
  virtual ~Sink() = default;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == host::kApplicationEventsId;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return S_OK;
  }
};

Sink sink;

void Write(const std::wstring& path, const std::string& bytes) {
  const UniqueHandle file = OwnHandle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

IConnectionPointPtr Events(const ISldWorksPtr& host) {
  IConnectionPointContainerPtr container;
  host->QueryInterface(IID_PPV_ARGS(&container));
  IConnectionPointPtr events;
  container->FindConnectionPoint(host::kApplicationEventsId, &events);
  return events;
}

}  // namespace

void SameCalls::Make(IDispatch* application, long cookie, const std::wstring& view,
                     const TempFolder& folder) {
  application->QueryInterface(IID_PPV_ARGS(&m_host));
  m_host->GetCommandManager(cookie, &m_manager);
  VARIANT_BOOL done = VARIANT_FALSE;
  m_host->SetAddinCallbackInfo(0, &sink, cookie, &done);
  BSTR revision = nullptr;
  m_host->RevisionNumber(&revision);
  SysFreeString(revision);

  const std::string menu = ReadFileBytes(view);
  const std::string icons(kIconBytes, '\0');
  m_files = {folder.Path(L"log.txt"), folder.Path(L"large.bmp"), folder.Path(L"small.bmp")};
  Write(m_files[0], std::string(400, '.'));
  Write(m_files[1], icons);
  Write(m_files[2], icons);
  const _bstr_t large(m_files[1].c_str());
  const _bstr_t small(m_files[2].c_str());

  long count = 0;
  m_manager->GetCommandIDsCount(0, &count);
  std::array<long, 64> saved{};
  m_manager->IGetGroupDataFromRegistry(0, count, saved.data(), &done);
  m_replaces = count > 1;
  long errors = 0;
  m_manager->CreateCommandGroup2(0, kTitle, kTitle, _bstr_t(L""), -1,
                                 m_replaces ? VARIANT_TRUE : VARIANT_FALSE, &errors, &m_group);
  m_group->put_LargeIconList(large);
  m_group->put_SmallIconList(small);
  for (int item = 0; item < kItems; ++item) {
    const _bstr_t text((L"Item " + std::to_wstring(item)).c_str());
    long index = 0;
    m_group->AddCommandItem(text, -1, text, text, item, _bstr_t(L"PlmLogin"), _bstr_t(L"EnablePlmLogin"), 0,
                            &index);
  }
  m_group->put_HasToolbar(VARIANT_TRUE);
  m_group->put_HasMenu(VARIANT_TRUE);
  m_group->Activate(&done);
  for (const long type : {swDocASSEMBLY, swDocDRAWING, swDocPART}) AddTab(type);
  Events(m_host)->Advise(&sink, &m_advice);
}

void SameCalls::AddTab(long type) {
  VARIANT_BOOL done = VARIANT_FALSE;
  ICommandTabPtr tab;
  m_manager->GetCommandTab(type, kTitle, &tab);
  if (tab || m_replaces) m_manager->RemoveCommandTab(tab, &done);
  tab = nullptr;
  m_manager->AddCommandTab(type, kTitle, &tab);
  ICommandTabBoxPtr box;
  tab->AddCommandTabBox(&box);
  tab->put_Visible(VARIANT_TRUE);
  std::array<long, 16> ids{}, styles{};
  for (int item = 0; item < kItems; ++item) {
    m_group->get_CommandID(item, &ids[static_cast<std::size_t>(item)]);
    styles[static_cast<std::size_t>(item)] = swCommandTabButton_TextBelow;
  }
  box->IAddCommands(kItems, ids.data(), styles.data(), &done);
}

void SameCalls::Undo() {
  VARIANT_BOOL done = VARIANT_FALSE;
  m_manager->RemoveFlyoutGroup(99, &done);
  m_manager->RemoveCommandGroup(0, &done);
  Events(m_host)->Unadvise(m_advice);
  for (const std::wstring& file : m_files) DeleteFileW(file.c_str());
  m_group = nullptr;
  m_manager = nullptr;
  m_host = nullptr;
}
