#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>

#include "framing.h"
#include "no_answer.h"
#include "peer_frame.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {
namespace {

/// What becomes of the bytes of a connection.
struct Outcome {
  bool is_complete = false;
  bool has_surplus = false;  ///< bytes are left after the frame
  std::string content{};
  std::wstring reason{};  ///< why the frame was refused

  bool operator==(const Outcome&) const = default;
};

/// The size of the next piece, at least 1; what is larger than the rest counts as the rest.
using PieceSize = std::function<std::size_t()>;

/// Reads as a connection does: small pieces until the header is complete, then into the reader's own room.
Outcome Read(std::string_view bytes, const PieceSize& next_size) {
  invoker::FrameReader reader;
  try {
    while (!reader.IsComplete() && !bytes.empty()) {
      std::string_view piece = bytes.substr(0, next_size());
      if (const std::span<char> rest = reader.Rest(); !rest.empty()) {
        piece = piece.substr(0, rest.size());
        std::ranges::copy(piece, rest.begin());
        reader.Fill(piece.size());
      } else {
        reader.Append(piece);
      }
      bytes.remove_prefix(piece.size());
    }
  } catch (const invoker::NoAnswer& refusal) {
    return {.reason = refusal.reason};
  }
  if (!reader.IsComplete()) return {};
  const bool has_surplus = reader.HasSurplus() || !bytes.empty();
  return {.is_complete = true, .has_surplus = has_surplus, .content = reader.TakeContent()};
}

/// Sizes that differ from one text to the next, but not from run to run.
PieceSize MixedSizes(std::string_view bytes, std::uint64_t seed, std::size_t largest) {
  for (const char byte : bytes) seed = seed * 31 + static_cast<unsigned char>(byte);
  return [seed, largest]() mutable {
    seed = seed * 6364136223846793005u + 1442695040888963407u;
    return 1 + static_cast<std::size_t>(seed >> 33) % largest;
  };
}

void RequireSameInAllSplits(std::string_view bytes, const Outcome& expected) {
  constexpr std::size_t kFew = 16;
  constexpr std::size_t kMany = 4096;
  constexpr std::size_t kMostPieces = 256;  // more take too long: a header is looked at from its start
  const std::size_t smallest = 1 + bytes.size() / kMostPieces;
  const PieceSize sizes[] = {[smallest] { return smallest; }, MixedSizes(bytes, 1, kFew * smallest),
                             MixedSizes(bytes, 2, kMany)};
  for (const PieceSize& size : sizes) {
    Require(Read(bytes, size) == expected, "the outcome does not depend on how the bytes are split");
  }
}

void RequireSameAsPeer(std::string_view bytes) {
  const Outcome outcome = Read(bytes, [&] { return bytes.size(); });
  const PeerFrame peer = ReadFrameAsPeer(bytes);
  Require(outcome.reason.empty() != peer.is_refused, "what is no frame is refused, and nothing else");
  Require(outcome.is_complete == peer.content.has_value(), "a frame is complete when all of it is there");
  if (peer.content) {
    Require(outcome.content == *peer.content && outcome.has_surplus == peer.has_surplus,
            "a frame has the content of its length");
  }
  RequireSameInAllSplits(bytes, outcome);
}

}  // namespace

void TryFrames(std::string_view bytes) {
  RequireSameAsPeer(bytes);
  RequireSameAsPeer(WriteFrame(Choices(bytes)));
  const std::string frame = invoker::MakeFrame(bytes);
  RequireSameInAllSplits(frame, {.is_complete = true, .content = std::string(bytes)});
  RequireSameInAllSplits(frame + "x",
                         {.is_complete = true, .has_surplus = true, .content = std::string(bytes)});
}

}  // namespace fuzz
