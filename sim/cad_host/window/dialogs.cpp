#include <windows.h>

#include "dialogs.h"

#include <array>

#include "resource_ids.h"
#include "window/window.h"

namespace cad_host {
namespace {

struct PropertyType {
  swCustomInfoType_e type;
  const wchar_t* script_name;
  UINT text;
};
constexpr std::array<PropertyType, 4> kTypes = {{{swCustomInfoText, L"text", IDS_TYPE_TEXT},
                                                 {swCustomInfoNumber, L"number", IDS_TYPE_NUMBER},
                                                 {swCustomInfoDate, L"date", IDS_TYPE_DATE},
                                                 {swCustomInfoYesOrNo, L"yesno", IDS_TYPE_YES_NO}}};

const PropertyType& Known(long type) {
  for (const PropertyType& known : kTypes) {
    if (known.type == type) return known;
  }
  return kTypes[0];
}

std::wstring TextOfItem(HWND dialog, int id) { return window::TextOfWindow(GetDlgItem(dialog, id)); }

/// A dialog of the resources; its texts are put in when it opens.
class Dialog {
 public:
  explicit Dialog(const window::Texts& texts) : m_texts(texts) {}
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;
  virtual ~Dialog() = default;

  /// @return whether the person confirmed.
  bool Show(HWND owner, int resource) {
    return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), owner, Procedure,
                           reinterpret_cast<LPARAM>(this)) == IDOK;
  }

 protected:
  /// Puts the texts in. @return the number of the control that gets the focus.
  virtual int Fill(HWND dialog) = 0;
  virtual void Read(HWND dialog) = 0;

  const window::Texts& m_texts;

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrW(dialog, DWLP_USER, lparam);
      reinterpret_cast<Dialog*>(lparam)->Open(dialog);
      return FALSE;  // the focus is set
    }
    auto* const self = reinterpret_cast<Dialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    const WORD id = LOWORD(wparam);
    if (message != WM_COMMAND || !self || (id != IDOK && id != IDCANCEL)) return FALSE;
    if (id == IDOK) self->Read(dialog);
    EndDialog(dialog, id);
    return TRUE;
  }

  void Open(HWND dialog) {
    SetDlgItemTextW(dialog, IDOK, m_texts(IDS_OK).c_str());
    SetDlgItemTextW(dialog, IDCANCEL, m_texts(IDS_CANCEL).c_str());
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, Fill(dialog))), TRUE);
  }
};

class PropertyDialog : public Dialog {
 public:
  PropertyDialog(const window::Texts& texts, CustomProperty& property, bool is_new)
      : Dialog(texts), m_property(property), m_isNew(is_new) {}

 protected:
  int Fill(HWND dialog) override {
    SetWindowTextW(dialog, m_texts(IDS_PROPERTIES).c_str());
    SetDlgItemTextW(dialog, IDC_NAME_LABEL, m_texts(IDS_NAME).c_str());
    SetDlgItemTextW(dialog, IDC_TYPE_LABEL, m_texts(IDS_TYPE).c_str());
    SetDlgItemTextW(dialog, IDC_VALUE_LABEL, m_texts(IDS_VALUE).c_str());
    SetDlgItemTextW(dialog, IDC_NAME, m_property.name.c_str());
    SetDlgItemTextW(dialog, IDC_VALUE, m_property.text.c_str());
    HWND types = GetDlgItem(dialog, IDC_TYPE);
    for (const PropertyType& type : kTypes) {
      const LRESULT place =
          SendMessageW(types, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(m_texts(type.text).c_str()));
      if (&type == &Known(m_property.type)) {
        SendMessageW(types, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
      }
    }
    EnableWindow(GetDlgItem(dialog, IDC_NAME), m_isNew);
    return m_isNew ? IDC_NAME : IDC_VALUE;
  }

  void Read(HWND dialog) override {
    m_property.name = TextOfItem(dialog, IDC_NAME);
    m_property.text = TextOfItem(dialog, IDC_VALUE);
    const LRESULT type = SendDlgItemMessageW(dialog, IDC_TYPE, CB_GETCURSEL, 0, 0);
    if (type >= 0) m_property.type = kTypes.at(static_cast<std::size_t>(type)).type;
  }

 private:
  CustomProperty& m_property;
  bool m_isNew;
};

class LineDialog : public Dialog {
 public:
  LineDialog(const window::Texts& texts, const std::wstring& title, const std::wstring& prompt)
      : Dialog(texts), m_title(title), m_prompt(prompt) {}

  const std::wstring& Line() const { return m_line; }

 protected:
  int Fill(HWND dialog) override {
    SetWindowTextW(dialog, m_title.c_str());
    SetDlgItemTextW(dialog, IDC_PROMPT, m_prompt.c_str());
    return IDC_VALUE;
  }

  void Read(HWND dialog) override { m_line = TextOfItem(dialog, IDC_VALUE); }

 private:
  const std::wstring& m_title;
  const std::wstring& m_prompt;
  std::wstring m_line;
};

}  // namespace

std::wstring ScriptTypeName(long type) { return Known(type).script_name; }

std::wstring TypeName(const window::Texts& texts, long type) { return texts(Known(type).text); }

std::optional<CustomProperty> AskForProperty(HWND owner, const window::Texts& texts, CustomProperty property,
                                             bool is_new) {
  PropertyDialog dialog(texts, property, is_new);
  if (!dialog.Show(owner, IDD_PROPERTY)) return std::nullopt;
  return property;
}

std::optional<std::wstring> AskForLine(HWND owner, const window::Texts& texts, const std::wstring& title,
                                       const std::wstring& prompt) {
  LineDialog dialog(texts, title, prompt);
  if (!dialog.Show(owner, IDD_LINE)) return std::nullopt;
  return dialog.Line();
}

}  // namespace cad_host
