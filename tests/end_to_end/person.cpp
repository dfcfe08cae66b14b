#include "person.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "CStringHelper.h"
#include "controls.h"
#include "unix_program.h"

namespace {

constexpr int kMostLooks = 300;
constexpr DWORD kBetweenLooks = 100;  // milliseconds

std::string Utf8(const std::wstring& text) { return CStringHelper::UnicodeToUTF8(text); }

/// Looks until `look` finds something. @return what it found; null after half a minute.
HWND Await(const std::function<HWND()>& look) {
  for (int looks = 0; looks < kMostLooks; ++looks) {
    if (HWND found = look()) return found;
    Sleep(kBetweenLooks);
  }
  return nullptr;
}

std::wstring TitleOf(HWND window) {
  wchar_t title[256] = L"";
  GetWindowTextW(window, title, static_cast<int>(std::size(title)));
  return title;
}

std::vector<HWND> VisibleWindows() {
  std::vector<HWND> windows;
  EnumWindows(
      [](HWND window, LPARAM found) -> BOOL {
        if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&windows));
  return windows;
}

HWND FindWindowWith(const std::wstring& title) {
  for (HWND window : VisibleWindows()) {
    if (TitleOf(window).find(title) != std::wstring::npos) return window;
  }
  return nullptr;
}

struct ControlSearch {
  int id;
  HWND found;
};

HWND FindControl(HWND window, int id) {
  ControlSearch search{id, nullptr};
  EnumChildWindows(
      window,
      [](HWND control, LPARAM argument) -> BOOL {
        auto& wanted = *reinterpret_cast<ControlSearch*>(argument);
        const bool matches =
            GetDlgCtrlID(control) == wanted.id && IsWindowVisible(control) && IsWindowEnabled(control);
        if (matches) wanted.found = control;
        return !matches;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

/// "'it'\''s'": a word for the shell.
std::string Quoted(const std::string& text) {
  std::string word = "'";
  for (const char character : text) {
    if (character == '\'') {
      word += "'\\''";
    } else {
      word += character;
    }
  }
  return word + "'";
}

/// Moves the mouse there, and lets the control see it before it is clicked.
std::string MoveTo(HWND control, POINT place) {
  ClientToScreen(control, &place);
  return "mousemove " + std::to_string(place.x) + " " + std::to_string(place.y) + " sleep 0.05 ";
}

std::string List(const std::vector<std::wstring>& texts) {
  std::string list;
  for (const auto& text : texts) list += " \"" + Utf8(text) + "\"";
  return list.empty() ? " nothing" : list;
}

POINT MiddleOf(const RECT& place) { return {(place.left + place.right) / 2, (place.top + place.bottom) / 2}; }

POINT MiddleOf(HWND control) {
  RECT place{};
  GetClientRect(control, &place);
  return MiddleOf(place);
}

}  // namespace

HWND Person::AwaitWindow(const std::wstring& title) const {
  HWND window = Await([&] { return FindWindowWith(title); });
  if (window) return window;
  std::vector<std::wstring> titles;
  for (HWND other : VisibleWindows()) titles.push_back(TitleOf(other));
  throw std::runtime_error("no window \"" + Utf8(title) + "\", but" + List(titles));
}

void Person::AwaitGone(HWND window) const {
  for (int looks = 0; IsWindowVisible(window); ++looks) {
    if (looks == kMostLooks) throw std::runtime_error("the window stays: " + Utf8(TitleOf(window)));
    Sleep(kBetweenLooks);
  }
}

void Person::PressUntilGone(const std::string& keys, HWND window) const {
  constexpr int kLooksAtOnePress = 40;
  for (int looks = 0; IsWindowVisible(window); ++looks) {
    if (looks == kMostLooks) throw std::runtime_error("the window stays: " + Utf8(TitleOf(window)));
    if (looks % kLooksAtOnePress == 0) Press(keys);
    Sleep(kBetweenLooks);
  }
}

HWND Person::AwaitControl(HWND window, int id) const {
  HWND control = Await([&] { return FindControl(window, id); });
  if (!control) {
    throw std::runtime_error("no control " + std::to_string(id) + " in \"" + Utf8(TitleOf(window)) + "\"");
  }
  return control;
}

void Person::Click(HWND control) const { ClickAt(control, MiddleOf(control)); }

void Person::ClickAt(HWND control, POINT place) const { Do("xdotool " + MoveTo(control, place) + "click 1"); }

void Person::ClickRow(HWND list, int column, const std::wstring& text, bool adds) const {
  std::vector<std::wstring> texts;
  int row = 0;
  const auto find = [&] {
    texts = RowTexts(list, column);
    const auto found = std::ranges::find(texts, text);
    row = static_cast<int>(found - texts.begin());
    return found != texts.end() ? list : nullptr;
  };
  if (!Await(find)) throw std::runtime_error("no row \"" + Utf8(text) + "\", but" + List(texts));
  const std::string before = adds ? "keydown ctrl " : "", after = adds ? " keyup ctrl" : "";
  ScrollTo(list, row);
  Do("xdotool " + MoveTo(list, MiddleOf(PlaceOfRow(list, row))) + before + "click 1" + after);
}

void Person::ScrollTo(HWND list, int row) const {
  constexpr int kMostTurns = 50;
  RECT shown{};
  GetClientRect(list, &shown);
  for (int turns = 0; turns < kMostTurns && PlaceOfRow(list, row).bottom > shown.bottom; ++turns) {
    Do("xdotool " + MoveTo(list, MiddleOf(list)) + "click --repeat 2 5");  // the wheel
  }
}

void Person::ClickButton(HWND toolbar, const std::wstring& text) const {
  std::vector<std::wstring> texts;
  POINT place{};
  const auto find = [&] {
    texts.clear();
    HWND found = nullptr;
    for (const ToolbarButton& button : ToolbarButtons(toolbar)) {
      texts.push_back(button.text + (button.enabled ? L"" : L" (greyed)"));
      if (!button.enabled || button.text != text) continue;
      place = MiddleOf(button.place);
      found = toolbar;
    }
    return found;
  };
  if (!Await(find)) throw std::runtime_error("no button \"" + Utf8(text) + "\", but" + List(texts));
  ClickAt(toolbar, place);
}

void Person::ClickFirstButton(HWND toolbar) const {
  ClickAt(toolbar, MiddleOf(ToolbarButtons(toolbar).at(0).place));
}

void Person::Type(const std::wstring& text) const { Do("xdotool type --delay 80 " + Quoted(Utf8(text))); }

void Person::Press(const std::string& keys) const { Do("xdotool key " + keys); }

void Person::TakePicture(const std::wstring& path) const {
  constexpr const wchar_t* kPicture = L"picture.png";
  Do("import -window root picture.png");  // in the folder, whose path is not known to the system's programs
  CopyFileW(m_folder.Path(kPicture).c_str(), path.c_str(), FALSE);
}

void Person::Do(const std::string& line) const { RunShell(m_folder, line); }
