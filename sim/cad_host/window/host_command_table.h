/// @file The host's own commands: where they stand in the menus, their keys and icons.
#pragma once

#include <windows.h>

#include <array>
#include <string>

#include "icons.h"
#include "resource_ids.h"
#include "window/gdi.h"

namespace cad_host {

struct HostCommand {
  UINT id;         ///< also of its text
  UINT menu;       ///< the text of the menu that it is in
  bool separated;  ///< a line stands above it in the menu
  WORD key;        ///< 0: none
  BYTE modifiers;  ///< of the key: FCONTROL and so on
  const wchar_t* key_text;
  int icon;  ///< HostIcon; kHostIconCount: none
};

inline constexpr int kNoIcon = kHostIconCount;

inline constexpr std::array<HostCommand, 18> kHostCommands = {{
    {IDS_NEW_PART, IDS_FILE, false, 'N', FCONTROL, L"Ctrl+N", kPartIcon},
    {IDS_NEW_ASSEMBLY, IDS_FILE, false, 'N', FCONTROL | FSHIFT, L"Ctrl+Shift+N", kAssemblyIcon},
    {IDS_NEW_DRAWING, IDS_FILE, false, 0, 0, L"", kDrawingIcon},
    {IDS_OPEN, IDS_FILE, true, 'O', FCONTROL, L"Ctrl+O", kOpenIcon},
    {IDS_SAVE, IDS_FILE, false, 'S', FCONTROL, L"Ctrl+S", kSaveIcon},
    {IDS_SAVE_AS, IDS_FILE, false, 'S', FCONTROL | FSHIFT, L"Ctrl+Shift+S", kNoIcon},
    {IDS_CLOSE, IDS_FILE, true, 'W', FCONTROL, L"Ctrl+W", kNoIcon},
    {IDS_EXIT, IDS_FILE, true, 'Q', FCONTROL, L"Ctrl+Q", kNoIcon},
    {IDS_REFRESH, IDS_VIEW, false, VK_F5, 0, L"F5", kNoIcon},
    {IDS_INSERT_COMPONENT, IDS_INSERT, false, 'I', FCONTROL, L"Ctrl+I", kInsertIcon},
    {IDS_ADD_PROPERTY, IDS_INSERT, false, 'P', FCONTROL, L"Ctrl+P", kPropertyIcon},
    {IDS_SELECT_FACE, IDS_TOOLS, false, 'F', FCONTROL, L"Ctrl+F", kFaceIcon},
    {IDS_SELECT_NOTHING, IDS_TOOLS, false, 'D', FCONTROL, L"Ctrl+D", kNoIcon},
    {IDS_RECORD, IDS_TOOLS, true, 0, 0, L"", kNoIcon},
    {IDS_STOP_RECORDING, IDS_TOOLS, false, 0, 0, L"", kNoIcon},
    {IDS_RUN_SCRIPT, IDS_TOOLS, false, 'R', FCONTROL, L"Ctrl+R", kNoIcon},
    {IDS_FAULT, IDS_TOOLS, true, 0, 0, L"", kNoIcon},
    {IDS_ABOUT, IDS_HELP, false, 0, 0, L"", kNoIcon},
}};

/// The keys of the host's commands.
window::UniqueAccelerators MakeAccelerators();

/// A text of a menu without the marks of its key and the dots at its end.
std::wstring PlainText(const std::wstring& menu_text);

}  // namespace cad_host
