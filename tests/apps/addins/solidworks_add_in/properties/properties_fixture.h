/// @file Documents with properties, and the message boxes of the commands that read and write them.
#pragma once

#include <memory>
#include <string>

#include "add_in_fixture.h"

class PropertiesFixture : public AddInFixture {
 protected:
  /// Opens a new file with the properties, then clears the journal.
  std::shared_ptr<cad_host::Document> Open(const std::wstring& name,
                                           const cad_host::CustomProperties& properties);

  /// Opens a part with the properties A=1, B=2 and C=3.
  std::shared_ptr<cad_host::Document> OpenPartWithThree();

  /// The document's properties as "NAME=TEXT".
  static Texts PropertiesOf(const cad_host::Document& document);

  /// The message boxes so far: "extract?", "backfill?", "completed", "no model" or "error 0x80004005". A box
  /// that differs from all of these in its text, caption, icon or buttons appears as "CAPTION: TEXT".
  Texts Boxes() const;

  /// The next message boxes are answered with OK.
  void ExpectBoxes(std::size_t count);
};
