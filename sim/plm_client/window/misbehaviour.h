/// @file What a client does wrong on purpose, so that one can see what the host makes of it.
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "plm_client/reply.h"

namespace plm_window {

enum class Fault {
  kNone,
  kLate,       ///< the answer comes after a delay
  kNever,      ///< there is no answer, and the connection stays
  kGarbage,    ///< a frame that holds no JSON
  kHalfFrame,  ///< the answer breaks off in its middle, and the connection closes
  kDie,        ///< the client ends at once
};

/// A fault, and for a late answer its delay.
struct FaultChoice {
  Fault fault = Fault::kNone;
  std::chrono::milliseconds delay{0};
};

/// Reads "late:SECONDS", "never", "garbage", "half-frame" or "die".
/// @throws std::runtime_error naming `text` if it is none of them.
FaultChoice ParseFault(std::wstring_view text);

/// The reply with the fault to a request for which the person chose the answer `text`, UTF-8. With kDie it
/// does not return.
plm_client::Reply ReplyWith(const FaultChoice& choice, const std::string& text);

/// Which fault the next answers get. May be used on any thread.
class Misbehaviour {
 public:
  /// From now on, for the next answer only or for all of them.
  void Choose(const FaultChoice& choice, bool for_all);

  /// The fault for the answer that is sent now.
  FaultChoice Take();

  FaultChoice Chosen() const;
  bool IsForAll() const;

 private:
  mutable std::mutex m_mutex;
  FaultChoice m_choice;
  bool m_forAll = false;
};

}  // namespace plm_window
