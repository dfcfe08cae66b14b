// Saving into and beside files of other programs: what is replaced, refused and kept.
#include <windows.h>

#include "base/unique_handle.h"
#include "base/utf8.h"
#include "other_programs_fixture.h"

namespace {

using cad_host::FileKind;

class SavingTest : public OtherProgramsTest {};

TEST_F(SavingTest, AFileThatCannotBeReplacedStaysAsItWas) {
  const std::wstring path = ChinesePart();
  const std::string before = ReadFileBytes(path);
  const auto document = Host().Open(path);
  SetText(*document, L"Plain", L"new");
  {
    // Another program reads the file and does not let it be replaced.
    const UniqueHandle reader = OwnHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::wstring error = ErrorOfSaving(*document);
    EXPECT_TRUE(error.starts_with(path + L": cannot write: error ")) << testing::PrintToString(error);
  }
  EXPECT_EQ(ReadFileBytes(path), before);
  EXPECT_EQ(Files(), std::vector<std::wstring>{kPartText}) << "the new file is removed";

  EXPECT_EQ(ErrorOfSaving(*document), L"no error");
  EXPECT_EQ(Files(), std::vector<std::wstring>{kPartText});
}

TEST_F(SavingTest, AReadOnlyFileIsNotReplacedButCanBeSavedUnderAnotherName) {
  const std::wstring path = ChinesePart();
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  const auto document = Host().Open(path);
  SetText(*document, L"Plain", L"new");

  EXPECT_TRUE(ErrorOfSaving(*document).starts_with(path + L": cannot write, the file is read-only"));
  EXPECT_EQ(ErrorOfSaving(*document, m_folder.Path(L"copy.sldprt")), L"no error");

  EXPECT_EQ(TextsOf(cad_host::ReadModelFile(m_folder.Path(L"copy.sldprt")).properties).at(L"Plain"), L"new");
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SavingTest, AFileOfThisHostKeepsStreamsOfOtherPrograms) {
  const std::wstring path = MakeCompound({{L"Model", "part\t1\n"}, {L"Notes", "of another program"}});
  const auto document = Host().Open(path);
  EXPECT_EQ(document->model.kind, FileKind::kModel);
  document->model.properties = {{.name = L"Number", .text = L"1.50", .type = swCustomInfoNumber}};

  Host().Save(*document);

  EXPECT_EQ(CompoundContent(path)[L"Notes"].bytes, "of another program");
  const cad_host::ModelFile saved = cad_host::ReadModelFile(path);
  EXPECT_EQ(saved.revision, 2);
  EXPECT_EQ(saved.properties.at(0).text, L"1.50");
}

TEST_F(SavingTest, AMissingFolderIsNamedAsSuch) {
  const auto own = Host().New(swDocPART);
  const auto foreign = Host().Open(ChinesePart());
  const std::wstring target = m_folder.Path(L"missing\\new.sldprt");

  EXPECT_EQ(ErrorOfSaving(*own, target), target + L": cannot write, the folder does not exist: error 3");
  EXPECT_EQ(ErrorOfSaving(*foreign, target), target + L": cannot write, the folder does not exist: error 3");
}

class ForeignStreamTest : public OtherProgramsTest, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(ForeignStreamTest, WithTheNameOfOneOfThisHostStaysAsItIs) {
  const std::string bytes("\0\xff\x01 binary\n", 11);
  const std::wstring path = MakeCompound({{GetParam(), bytes}});
  const auto document = Host().Open(path);
  EXPECT_EQ(document->model.kind, FileKind::kCompound);
  document->model.properties.push_back({.name = L"A", .text = L"1"});
  Host().Save(*document);
  EXPECT_EQ(CompoundContent(path)[GetParam()].bytes, bytes) << "properties need no stream of this host";
  const std::string saved = ReadFileBytes(path);

  document->model.quantities[L"SW-Mass"] = L"1";
  const std::wstring error = ErrorOfSaving(*document);

  EXPECT_EQ(error, path + L": cannot be saved with components or quantities: another program's \"" +
                       GetParam() + L"\" is in the file");
  EXPECT_TRUE(ReadFileBytes(path) == saved);
  EXPECT_EQ(Files(), std::vector<std::wstring>{kPartText});
}

INSTANTIATE_TEST_SUITE_P(, ForeignStreamTest,
                         testing::Values(L"Model", L"Configurations", L"Quantities", L"Components", L"Mates",
                                         L"Views", L"PropertiesAsTyped"),
                         [](const auto& stream) { return utf8::Encode<wchar_t>(stream.param); });

}  // namespace
