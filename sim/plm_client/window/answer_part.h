/// @file The lower part of a panel: the request, and the answer as JSON.
#pragma once

#include <functional>
#include <string>

#include "window/font.h"
#include "window/texts.h"
#include "window/window.h"

namespace plm_window {

/// Shows the request, and the answer that would be sent. The person may edit the answer before it is sent; a
/// fault in it is marked with its place, and it is not sent.
class AnswerPart : public window::Window {
 public:
  /// Called with an answer that has no fault.
  using Sender = std::function<void(const std::wstring&)>;

  /// @param is_checked whether an answer with a fault is refused.
  AnswerPart(HWND parent, HFONT font, const window::Texts& texts, const std::wstring& request,
             std::function<bool()> is_checked, Sender send);

  /// Shows what would be answered now, unless the person edits the answer.
  void ShowPreview(const std::wstring& json);
  /// Gives the person an answer to edit.
  void Offer(const std::wstring& json);

  /// Whether the person wants to see an answer before it is sent.
  bool EditsFirst() const;
  /// Sends what stands in the editor, unless it has a fault. @return whether it was sent.
  bool Send();
  /// The fault that is shown; empty if there is none.
  std::wstring FaultText() const { return m_fault; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void MakeControls(HFONT font, const window::Texts& texts, const std::wstring& request);
  void Place(int width, int height) const;
  void OnCommand(int id, int code);
  void SetEditable(bool editable) const;
  void ShowFault(const std::wstring& text);

  std::function<bool()> m_isChecked;
  Sender m_send;
  std::wstring m_fault;
  bool m_isFilling = false;  // the text that changes is not the person's
};

}  // namespace plm_window
