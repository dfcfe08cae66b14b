#include "menu_rules.h"

#include <oleauto.h>

#include <algorithm>

#include "CComBSTR.h"
#include "CStringHelper.h"
#include "base/com_pointers.h"
#include "resources/resource_ids.h"
#include "solidworks_add_in_h.h"

namespace doctor {
namespace {

using Names = std::vector<std::wstring>;

/// The names of methods in the type library.
struct MethodNames {
  Names commands;        ///< without arguments
  Names enable_methods;  ///< with one
};

/// The methods of IUnknown and IDispatch, which a dual interface lists as its own, have larger ids.
constexpr MEMBERID kLastOwnId = 0xFFFF;

void AddMethod(ITypeInfo& info, UINT index, MethodNames& names) {
  FUNCDESC* description = nullptr;
  if (FAILED(info.GetFuncDesc(index, &description))) return;
  CComBSTR name;
  if (description->memid <= kLastOwnId &&
      SUCCEEDED(info.GetDocumentation(description->memid, &name, nullptr, nullptr, nullptr))) {
    (description->cParams == 0 ? names.commands : names.enable_methods).emplace_back(name.View());
  }
  info.ReleaseFuncDesc(description);
}

MethodNames ReadMethodNames(const std::wstring& path) {
  MethodNames names;
  ITypeLibPtr library;
  ITypeInfoPtr info;
  TYPEATTR* attributes = nullptr;
  if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library)) ||
      FAILED(library->GetTypeInfoOfGuid(__uuidof(ISolidWorksAddIn), &info)) ||
      FAILED(info->GetTypeAttr(&attributes))) {
    return names;
  }
  const UINT count = attributes->cFuncs;
  info->ReleaseTypeAttr(attributes);
  for (UINT index = 0; index < count; ++index) AddMethod(*info, index, names);
  return names;
}

/// How many square icons stand side by side in the toolbar's bitmap; 0 if there is none.
int CountIcons(HMODULE module) {
  HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(IDB_TOOLBAR), RT_BITMAP);
  if (!resource || SizeofResource(module, resource) < sizeof(BITMAPINFOHEADER)) return 0;
  const auto* const header =
      static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(module, resource)));
  return header && header->biHeight > 0 ? static_cast<int>(header->biWidth / header->biHeight) : 0;
}

/// Whether `names` has `name`, without regard to case.
std::function<bool(const std::wstring&)> IsOneOf(Names names) {
  return [names = std::move(names)](const std::wstring& name) {
    return std::ranges::any_of(names, [&name](const std::wstring& known) {
      return CStringHelper::StringCompare(known, name, false) == 0;
    });
  };
}

}  // namespace

std::optional<ViewRules> ReadViewRules(const AddInLibrary& library) {
  if (!library.Resources()) return std::nullopt;
  MethodNames names = ReadMethodNames(library.Path());
  const int icons = CountIcons(library.Resources());
  if (names.commands.empty() || icons == 0) return std::nullopt;
  return ViewRules{.maximum_items = kMaximumMenuItems,
                   .icons = icons,
                   .is_command = IsOneOf(std::move(names.commands)),
                   .is_enable_method = IsOneOf(std::move(names.enable_methods))};
}

}  // namespace doctor
