/// @file Tests in which the PLM client names files and an assembly may be active.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "add_in_fixture.h"
#include "shown_texts.h"

class DocumentsFixture : public AddInFixture {
 protected:
  /// The pick point of the first selected object in OpenAssembly.
  static constexpr cad_host::Point kPicked = {0.25, -1.5, 3};

  DocumentsFixture();

  /// Answers QD_PLMDataSelector with the files and picks its item.
  cad_host::PickResult PickFiles(const std::vector<NamedFiles>& members);

  /// The same for a command that succeeds.
  void PickFilesWithSuccess(const std::vector<NamedFiles>& members) {
    EXPECT_EQ(PickFiles(members).result, S_OK);
  }

  /// The user opens `name`: an assembly of two bolts and a nut, with a mate between each bolt and the nut.
  /// The first bolt is selected.
  std::shared_ptr<cad_host::Document> OpenAssembly(const std::wstring& name = L"Top.sldasm");

  /// Expects one more message box, which the user closes with OK.
  void ExpectBox() { m_boxes->Expect(IDOK); }

  /// The texts of the message boxes so far.
  Texts BoxTexts() const;

  /// How many lines the log had while each box was shown.
  const std::vector<std::size_t>& LinesAtBoxes() const { return m_linesAtBoxes; }

  /// The file names of the open documents, in the order in which they became active.
  Texts OpenNames() const;

  /// The file names of an assembly's components.
  static Texts ComponentNames(const cad_host::Document& assembly);

 private:
  std::vector<std::size_t> m_linesAtBoxes;
};
