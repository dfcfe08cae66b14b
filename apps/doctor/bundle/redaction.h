/// @file Taking login data out of a text.
#pragma once

#include <string>
#include <string_view>

namespace doctor {

/// What stands in the place of a value that was taken out.
inline constexpr std::string_view kRedacted = "[redacted]";

/// A copy of `text`, UTF-8, in which the values of names such as "password", "token" or "userName" are
/// replaced. A name is sensitive if it contains one of the words that docs/doctor.md lists. Found are members
/// of JSON, also of JSON in a string of JSON; `name=value` and `name: value`, whose value goes to the end of
/// the line;
/// `--name value`; elements of XML; "Bearer ..."; and what stands before the @ of a URL.
std::string Redact(std::string_view text);

}  // namespace doctor
