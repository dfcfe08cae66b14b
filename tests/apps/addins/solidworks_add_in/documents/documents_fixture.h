/// @file A session in which the PLM client names files and an assembly may be active.
#pragma once

#include <comdef.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "add_in_fixture.h"

/// Texts that the user sees, as in the English string table where they are in one.
namespace shown {
inline constexpr const wchar_t* kReplacementFailed = L"Model replacement failed.";
inline constexpr const wchar_t* kNotSupported = L"The Current Model does not Support Replacement";
inline constexpr const wchar_t* kWrongFileType = L"请检查当前选择插入的文件类型，添加部件失败";
inline constexpr const wchar_t* kNotAdded = L"添加部件失败";
}  // namespace shown

/// "打开文件", the path, "失败".
std::wstring OpenFailed(const std::wstring& path);

/// The log line of a failure in `CSolidWorksAddIn::function`.
std::wstring FailureLine(int line, const std::wstring& function, const std::wstring& text);

/// `text` as JSON writes it within quotes, for texts without control characters.
std::string JsonEscaped(const std::wstring& text);

/// What a call of the add-in's vtable raises as a COM error; S_OK where it raises nothing.
HRESULT RaisedCode(const std::function<void()>& call);

class DocumentsTest : public AddInTest {
 protected:
  using Paths = std::vector<std::wstring>;
  using Texts = std::vector<std::wstring>;

  /// A member of an answer with the files under it.
  using Chosen = std::pair<const char*, Paths>;

  /// Where the first selected object of OpenAssembly was picked.
  static constexpr cad_host::Point kPicked = {0.25, -1.5, 3};

  DocumentsTest();

  /// The answer of a panel in which files were chosen; members stand as given.
  static std::string Selection(const std::vector<Chosen>& chosen);

  /// Answers QD_PLMDataSelector with the files and picks its item.
  cad_host::PickResult PickFiles(const std::vector<Chosen>& chosen);

  /// PickFiles, which has to answer S_OK.
  void Bring(const std::vector<Chosen>& chosen) { EXPECT_EQ(PickFiles(chosen).result, S_OK); }

  /// The person opens `name`: an assembly of two bolts and a nut with a mate of each bolt to the nut, where
  /// the first bolt is selected.
  std::shared_ptr<cad_host::Document> OpenAssembly(const std::wstring& name = L"Top.sldasm");

  /// Expects one more message box, which the person ends with OK.
  void ExpectBox() { m_boxes->Expect(IDOK); }

  /// The texts of the boxes that came up.
  Texts BoxTexts() const;

  /// How many lines the log held while each box was up.
  const std::vector<std::size_t>& LinesAtBoxes() const { return m_linesAtBoxes; }

  /// The methods that the add-in called of the host, without their arguments.
  Texts CalledMethods() const;

  /// The file names of the open documents, in the order in which they came to the front.
  Texts OpenNames() const;

  /// The file names of an assembly's components.
  static Texts ComponentNames(const cad_host::Document& assembly);

 private:
  std::vector<std::size_t> m_linesAtBoxes;
};
