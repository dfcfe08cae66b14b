#include "misbehaviour.h"

#include <windows.h>

#include <stdexcept>
#include <utility>

#include "CStringHelper.h"

namespace plm_window {
namespace {

constexpr unsigned kExitCodeOfDeath = 3;
constexpr std::size_t kMostDigits = 4;

[[noreturn]] void Refuse(std::wstring_view text) {
  throw std::runtime_error("--misbehave takes late:SECONDS, never, garbage, half-frame or die, not " +
                           CStringHelper::UnicodeToUTF8(text));
}

std::chrono::milliseconds ParseDelay(std::wstring_view seconds, std::wstring_view text) {
  const bool is_number = !seconds.empty() && seconds.size() <= kMostDigits &&
                         seconds.find_first_not_of(L"0123456789") == std::wstring_view::npos;
  if (!is_number) Refuse(text);
  return std::chrono::seconds(std::stoi(std::wstring(seconds)));
}

/// The first half of what would answer request `id`.
plm_client::Reply HalfOf(const std::string& text) {
  // The id has no influence on where the middle is that matters.
  const std::string whole = plm_client::Reply::Text(text).BytesFor(0);
  return plm_client::Reply::Bytes(whole.substr(0, whole.size() / 2)).ThenDisconnect();
}

}  // namespace

FaultChoice ParseFault(std::wstring_view text) {
  constexpr std::wstring_view kLate = L"late:";
  if (text.starts_with(kLate)) return {Fault::kLate, ParseDelay(text.substr(kLate.size()), text)};
  if (text == L"never") return {Fault::kNever};
  if (text == L"garbage") return {Fault::kGarbage};
  if (text == L"half-frame") return {Fault::kHalfFrame};
  if (text == L"die") return {Fault::kDie};
  Refuse(text);
}

plm_client::Reply ReplyWith(const FaultChoice& choice, const std::string& text) {
  using plm_client::Reply;
  switch (choice.fault) {
    case Fault::kNone:
      break;
    case Fault::kLate:
      return Reply::Text(text).After(choice.delay);
    case Fault::kNever:
      return Reply::Nothing();
    case Fault::kGarbage:
      return Reply::Message("\xFF no JSON at all {{{");
    case Fault::kHalfFrame:
      return HalfOf(text);
    case Fault::kDie:
      TerminateProcess(GetCurrentProcess(), kExitCodeOfDeath);
  }
  return Reply::Text(text);
}

void Misbehaviour::Choose(const FaultChoice& choice, bool for_all) {
  const std::lock_guard lock(m_mutex);
  m_choice = choice;
  m_forAll = for_all;
}

FaultChoice Misbehaviour::Take() {
  const std::lock_guard lock(m_mutex);
  return m_forAll ? m_choice : std::exchange(m_choice, {});
}

FaultChoice Misbehaviour::Chosen() const {
  const std::lock_guard lock(m_mutex);
  return m_choice;
}

bool Misbehaviour::IsForAll() const {
  const std::lock_guard lock(m_mutex);
  return m_forAll;
}

}  // namespace plm_window
