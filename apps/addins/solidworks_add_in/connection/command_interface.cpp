// The command interface: menu, toolbar and command tabs, built from View.json while connecting.
#include <algorithm>
#include <array>
#include <vector>

#include "CZALCADPathHelper.h"
#include "DrawingHelper.h"
#include "configuration/names.h"
#include "configuration/view_faults.h"
#include "connection_failure.h"
#include "diagnostics/diagnostics.h"
#include "host/constants.h"
#include "log/platform_log.h"
#include "module/com_object.h"
#include "module/dispatch.h"
#include "module/log_set_up.h"
#include "module/module_state.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in.h"

namespace {

// The group and all of its items have this user id.
constexpr long kUserId = 0;
constexpr long kLastPosition = -1;

// In the strip of the resource IDB_TOOLBAR.
constexpr int kIcons = 16;

constexpr swDocumentTypes_e kTabDocumentTypes[] = {swDocASSEMBLY, swDocDRAWING, swDocPART};

using Items = std::vector<CJsonObject::Pointer>;

/// What the host saved about the group on an earlier start.
struct SavedGroup {
  bool found = false;
  bool ignore_previous = false;
};

SavedGroup ReadSavedGroup(const ICommandManagerPtr& manager) {
  long count = 0;
  manager->GetCommandIDsCount(kUserId, &count);
  count = std::max(count, 0L);
  std::vector<long> saved(static_cast<std::size_t>(count) + 1);  // never empty, so that data() is not null
  VARIANT_BOOL found = VARIANT_FALSE;
  manager->IGetGroupDataFromRegistry(kUserId, count, saved.data(), &found);
  if (!found) return {};
  saved.resize(static_cast<std::size_t>(count));
  // All items have the same user id, so a saved list of several items never matches: a saved menu is built
  // again at every start.
  std::vector<long> known = {kUserId};
  std::sort(saved.begin(), saved.end());
  std::sort(known.begin(), known.end());
  return {true, saved != known};
}

ICommandGroupPtr CreateGroup(const ICommandManagerPtr& manager, const CComBSTR& title, bool ignore_previous) {
  ICommandGroupPtr group;
  long errors = 0;
  manager->CreateCommandGroup2(kUserId, title, title, CComBSTR(L""), kLastPosition,
                               ignore_previous ? VARIANT_TRUE : VARIANT_FALSE, &errors, &group);
  return group;
}

/// Creates a file with the icon strip. @return its path; the empty text if it cannot be created.
/// @throws _com_error E_OUTOFMEMORY, as for every text that is handed to the host.
CComBSTR MakeIconFile(IBitmapHandler& bitmaps) {
  CComBSTR path;
  const HRESULT result = bitmaps.CreateBitmapFileFromResource(IDB_TOOLBAR, &path);
  if (result == E_OUTOFMEMORY) _com_issue_error(result);
  return SUCCEEDED(result) ? path : CComBSTR(L"");
}

long AddItem(const ICommandGroupPtr& group, const CJsonObject& item) {
  const CComBSTR name(item.GetStringValue(L"name"));
  const CComBSTR tool_tip(item.GetStringValue(L"ToolTip"));
  const CComBSTR hint(item.GetStringValue(L"Hint"));
  const CComBSTR callback(item.GetStringValue(L"CallbackFunction"));
  const CComBSTR enable_method(item.GetStringValue(L"EnableMethod"));
  long index = 0;
  group->AddCommandItem(name, kLastPosition, hint, tool_tip, item.GetLongValue(L"ImageListIndex"), callback,
                        enable_method, kUserId, &index);
  return index;
}

/// Fills a new tab with the commands of the group.
void FillTab(const ICommandTabPtr& tab, const ICommandGroupPtr& group, const std::vector<long>& indices) {
  ICommandTabBoxPtr box;
  tab->AddCommandTabBox(&box);
  tab->put_Visible(VARIANT_TRUE);
  std::array<long, kMaximumMenuItems> ids{};
  std::array<long, kMaximumMenuItems> text_styles{};
  for (std::size_t place = 0; place < indices.size(); ++place) {
    group->get_CommandID(indices[place], &ids[place]);
    text_styles[place] = swCommandTabButton_TextBelow;
  }
  VARIANT_BOOL added = VARIANT_FALSE;
  Need(box, L"ICommandTab::AddCommandTabBox")
      ->IAddCommands(static_cast<long>(indices.size()), ids.data(), text_styles.data(), &added);
}

void BuildTab(const ICommandManagerPtr& manager, swDocumentTypes_e type, const CComBSTR& title,
              const SavedGroup& saved, const ICommandGroupPtr& group, const std::vector<long>& indices) {
  ICommandTabPtr tab;
  manager->GetCommandTab(type, title, &tab);
  if ((tab && !saved.found) || saved.ignore_previous) {
    VARIANT_BOOL removed = VARIANT_FALSE;
    manager->RemoveCommandTab(tab, &removed);
    tab = nullptr;
  }
  if (tab) return;
  manager->AddCommandTab(type, title, &tab);
  FillTab(Need(tab, L"ICommandManager::AddCommandTab"), group, indices);
}

/// The items of the menu, up to the maximum number. Logs what is wrong in the file; the menu is built all the
/// same.
Items ReadItems(const CJsonObject& view, const std::wstring& view_file) {
  Items items = view.GetObjectArray(L"Menu");
  const ViewRules rules{kMaximumMenuItems, kIcons, add_in_dispatch::IsCommand,
                        add_in_dispatch::IsEnableMethod};
  const std::wstring place = view_file + L": ";
  for (const auto& fault : FindViewFaults(view, items, rules)) LogPlatformError(place + fault);
  items.resize(std::min(items.size(), kMaximumMenuItems));
  return items;
}

}  // namespace

std::wstring CSolidWorksAddIn::BuildCommandInterface() {
  const ModuleState state;
  InitialiseLog();
  m_loggedIn = false;
  m_bitmapHandler = nullptr;
  CreateComObject<CBitmapHandler>(IID_PPV_ARGS(&m_bitmapHandler));

  CZALCADPathHelper::InitCADCfgPath(kConfigurationName);
  std::wstring view_file;
  CZALCADPathHelper::GetCADCfgPath(L"", kViewFile, view_file);
  try {
    BuildMenu(view_file);
  } catch (const CZALException& error) {
    const std::wstring& message = error.GetErrorMessage();
    const bool names_file = message.find(view_file) != std::wstring::npos;
    LogPlatformError(L"the command interface cannot be built" +
                     (names_file ? std::wstring() : L" from " + view_file) + L": " + message +
                     CodeSuffix(error.GetErrorCode()));
    throw;
  }
  m_invok = std::make_shared<CZALCmdInvoker>(kConfigurationName, L"", m_commandWaits);
  m_drawingHelper = std::make_shared<CDrawingHelper>();
  return view_file;
}

void CSolidWorksAddIn::BuildMenu(const std::wstring& view_file) {
  CJsonObject view;
  view.CreateFromFile(view_file);
  const CComBSTR title(view.GetStringValue(L"name"));
  const SavedGroup saved = ReadSavedGroup(Need(m_commandManager, L"ISldWorks::GetCommandManager"));
  const ICommandGroupPtr group = CreateGroup(m_commandManager, title, saved.ignore_previous);
  Need(group, L"ICommandManager::CreateCommandGroup2");
  Need(m_bitmapHandler, L"the creation of the bitmap handler");
  group->put_LargeIconList(MakeIconFile(*m_bitmapHandler));
  group->put_SmallIconList(MakeIconFile(*m_bitmapHandler));
  std::vector<long> indices;
  for (const auto& item : ReadItems(view, view_file)) indices.push_back(AddItem(group, *item));
  group->put_HasToolbar(VARIANT_TRUE);
  group->put_HasMenu(VARIANT_TRUE);
  VARIANT_BOOL activated = VARIANT_FALSE;
  group->Activate(&activated);
  for (const swDocumentTypes_e type : kTabDocumentTypes) {
    BuildTab(m_commandManager, type, title, saved, group, indices);
  }
}
