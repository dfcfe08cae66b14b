#include "host_command_table.h"

#include <vector>

namespace cad_host {

window::UniqueAccelerators MakeAccelerators() {
  std::vector<ACCEL> keys;
  for (const HostCommand& command : kHostCommands) {
    if (!command.key) continue;
    keys.push_back({.fVirt = static_cast<BYTE>(FVIRTKEY | command.modifiers),
                    .key = command.key,
                    .cmd = static_cast<WORD>(command.id)});
  }
  return window::UniqueAccelerators(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
}

std::wstring PlainText(const std::wstring& menu_text) {
  std::wstring text = menu_text;
  const std::size_t key_in_brackets = text.find(L"(&");
  if (key_in_brackets != std::wstring::npos) text.erase(key_in_brackets, 4);
  std::erase(text, L'&');
  while (text.ends_with(L'.')) text.pop_back();
  return text;
}

}  // namespace cad_host
