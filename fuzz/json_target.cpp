#include <optional>
#include <string>

#include "json/json_parser.h"
#include "peer_json.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {
namespace {

void RequireUsable(const JsonFault& fault, std::string_view text, const JsonDocument& document) {
  Require(fault.offset <= text.size(), "a fault lies in the text");
  Require(fault.reason && *fault.reason, "a fault has a reason");
  Require(document.IsNull(), "a malformed text leaves the document unchanged");
  const TextPosition position = PositionInText(text, fault.offset);
  Require(position.line >= 1 && position.column >= 1, "a position counts from 1");
}

}  // namespace

void TryJson(std::string_view bytes) {
  const std::optional<PeerValue> peer = ParseAsPeer(bytes);

  JsonDocument document;
  const std::optional<JsonFault> fault = ParseJson(bytes, document);
  Require(!fault == peer.has_value(), "the parsers agree on what is well-formed");
  if (fault) RequireUsable(*fault, bytes, document);
  if (peer) Require(IsSame(document, *peer), "the parsers read the same values");

  std::string text(bytes);
  JsonDocument in_place;
  const std::optional<JsonFault> fault_in_place = ParseJsonInPlace(text, in_place);
  Require(!fault == !fault_in_place, "parsing in place agrees on what is well-formed");
  if (fault) {
    Require(fault->offset == fault_in_place->offset, "parsing in place finds the same place");
    Require(std::string_view(fault->reason) == fault_in_place->reason,
            "parsing in place finds the same reason");
  } else {
    Require(IsSame(in_place, *peer), "parsing in place reads the same values");
  }
}

}  // namespace fuzz
