/// @file Documents with properties, and what a person sees of the commands that read and write them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "add_in_fixture.h"

using Texts = std::vector<std::wstring>;
using Requests = std::vector<std::string>;

class PropertiesTest : public AddInTest {
 protected:
  /// Opens a new file of this name with the properties, and forgets the journal.
  std::shared_ptr<cad_host::Document> Open(const std::wstring& name,
                                           const cad_host::CustomProperties& properties);

  /// A part with the properties A, B and C, whose texts are "1", "2" and "3".
  std::shared_ptr<cad_host::Document> OpenPartWithThree();

  /// The document's properties as "NAME=TEXT".
  static Texts PropertiesOf(const cad_host::Document& document);

  /// The message boxes so far by what they are: "extract?", "backfill?", "completed", "no model",
  /// "error 0x80004005". A box that is none of these in every detail stands with its caption and text.
  Texts Boxes() const;

  /// The next message boxes are answered with OK.
  void ExpectBoxes(std::size_t count);
};

/// "errormsg|ERROR|LINE|CSolidWorksAddIn::FUNCTION|TEXT".
std::wstring LogLine(int line, const std::wstring& function, const std::wstring& text);
