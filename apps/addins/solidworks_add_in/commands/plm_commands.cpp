#include "plm_commands.h"

#include <new>
#include <string_view>

#include "json/json_parser.h"
#include "log/platform_log.h"
#include "solidworks_add_in.h"

namespace {

/// What keeps `text` from being a JSON object, and its line and column.
std::wstring FaultOf(std::string_view text) {
  CJsonObject::Document document;
  if (const auto fault = ParseJson(text, document)) {
    return CStringHelper::UTF8ToUnicode(fault->reason) + L" (" + DescribePositionInText(text, fault->offset) +
           L")";
  }
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  return L"it is another JSON value (" + DescribePositionInText(text, begin) + L")";
}

/// Logs an answer that is not a JSON object. The line does not contain the answer's text, which may hold a
/// login.
void LogUnusableAnswer(const std::wstring& command, const std::wstring& answer) {
  std::wstring fault = L"there is not enough memory to read it";
  try {
    fault = FaultOf(CStringHelper::UnicodeToUTF8(answer));
  } catch (const std::bad_alloc&) {  // what it says already
  }
  LogPlatformError(L"the answer to PLM command [" + command + L"] is not a JSON object: " + fault);
}

}  // namespace

/// For a command that does something before it sends: nobody is asked in vain.
/// @throws _com_error E_POINTER if there is no invoker: before the first connection, or if that failed.
void CSolidWorksAddIn::RequireInvoker() const {
  if (!m_invok) _com_issue_error(E_POINTER);
}

/// Sends `command` through the invoker. @throws like RequireInvoker.
PlmAnswer CSolidWorksAddIn::SendCommand(const wchar_t* command, std::wstring request,
                                        const CZALCommandOptions& options) {
  RequireInvoker();
  // While the command waits, the host may connect the add-in again, which replaces the invoker.
  const std::shared_ptr<CZALCmdInvoker> invoker = m_invok;
  PlmAnswer answer{invoker->Invoke(command, std::move(request), options), std::make_shared<CJsonObject>()};
  if (answer.text.empty()) return answer;
  const bool well_formed = answer.object->CreateFrom(answer.text);
  if (!well_formed || !answer.object->Share()->IsObject()) LogUnusableAnswer(command, answer.text);
  return answer;
}

/// The PLM client's answer to the login, as JSON text. @throws _com_error E_POINTER while logged out.
std::wstring CSolidWorksAddIn::LoginText() const {
  if (!m_loginResult) _com_issue_error(E_POINTER);
  return m_loginResult->ToJson();
}
