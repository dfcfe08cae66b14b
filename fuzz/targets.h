/// @file The fuzz targets: each tries one part of the product with any bytes.
///
/// They are plain functions. ./dev fuzz links each with libFuzzer; a native test runs the kept inputs through
/// them. A target throws BrokenPromise if a result is wrong; a crash and any other exception are faults, too.
#pragma once

#include <string_view>

namespace fuzz {

/// JSON text: the parser beside another one.
void TryJson(std::string_view bytes);

/// JSON text: everything that CJsonObject reads and writes, held against another parser's result.
void TryJsonObject(std::string_view bytes);

/// A View.json and the list of what is wrong in it.
void TryView(std::string_view bytes);

/// Text as UTF-8 and as UTF-16, both ways, beside iconv.
void TryText(std::string_view bytes);

/// What comes from a pipe, in many splits.
void TryFrames(std::string_view bytes);

/// The content of a frame, as the answer to a request; and as the texts of a request.
void TryMessage(std::string_view bytes);

/// A registration script, UTF-8.
void TryRegistryScript(std::string_view bytes);

/// A property set stream, read and changed.
void TryPropertySet(std::string_view bytes);

/// The directory of a compound file.
void TryCompoundDirectory(std::string_view bytes);

struct Target {
  const char* name;  ///< as for ./dev fuzz, and the folder of its inputs
  void (*run)(std::string_view bytes);
};

inline constexpr Target kTargets[] = {
    {"json", TryJson},
    {"json_object", TryJsonObject},
    {"view", TryView},
    {"text", TryText},
    {"frames", TryFrames},
    {"message", TryMessage},
    {"registry_script", TryRegistryScript},
    {"property_set", TryPropertySet},
    {"compound_directory", TryCompoundDirectory},
};

}  // namespace fuzz
