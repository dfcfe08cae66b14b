// The exchange of files alone: its codes and the files afterwards.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "case_name.h"
#include "folder_tree.h"
#include "list_difference.h"
#include "result_codes.h"
#include "solidworks_add_in.h"

namespace {

struct Exchange {
  const char* name;
  Texts before;  ///< files, each with its own name as content, and folders, which end with a backslash
  const wchar_t* component = L"A";
  const wchar_t* download = L"A";
  HRESULT code = S_OK;
  Texts after;  ///< files as "NAME = CONTENT"
};

class SwapFile : public testing::TestWithParam<Exchange> {};

TEST_P(SwapFile, ReturnsItsCodeAndUndoesNothing) {
  const Exchange& exchange = GetParam();
  const TempFolder folder;
  for (const std::wstring& name : exchange.before) {
    if (name.ends_with(L'\\')) {
      folder.MakeFolder(name.substr(0, name.size() - 1));
    } else {
      folder.WriteText(name, name);
    }
  }
  EXPECT_EQ(CSolidWorksAddIn::SwapFile(folder.Path(L"prj"), exchange.component, folder.Path(L"dl"),
                                       exchange.download, folder.Path(L"old")),
            exchange.code);
  Texts after;
  for (const std::wstring& path : ListTree(folder)) {
    if (!path.ends_with(L'\\')) after.push_back(path + L" = " + folder.ReadText(path));
  }
  EXPECT_SAME_ENTRIES(after, exchange.after);
}

const Exchange kExchanges[] = {
    {.name = "Exchanges",
     .before = {L"dl\\A", L"old\\", L"prj\\A", L"prj\\C"},
     .after = {L"dl\\A = dl\\A", L"old\\A = prj\\A", L"prj\\A = dl\\A", L"prj\\C = prj\\C"}},
    {.name = "OverwritesAnOlderBackup",
     .before = {L"dl\\A", L"old\\A", L"prj\\A"},
     .after = {L"dl\\A = dl\\A", L"old\\A = prj\\A", L"prj\\A = dl\\A"}},
    {.name = "KeepsAnOlderBackupIfThereIsNoFileToMove",
     .before = {L"dl\\A", L"old\\A", L"prj\\"},
     .after = {L"dl\\A = dl\\A", L"old\\A = old\\A", L"prj\\A = dl\\A"}},
    {.name = "NamesTheBackupAfterTheComponentAndTheCopyAfterTheDownload",
     .before = {L"dl\\B", L"old\\", L"prj\\A"},
     .download = L"B",
     .after = {L"dl\\B = dl\\B", L"old\\A = prj\\A", L"prj\\B = dl\\B"}},
    {.name = "OverwritesAFileOfTheDownloadsName",
     .before = {L"dl\\B", L"old\\", L"prj\\A", L"prj\\B"},
     .download = L"B",
     .after = {L"dl\\B = dl\\B", L"old\\A = prj\\A", L"prj\\B = dl\\B"}},
    {.name = "CannotMoveWithoutABackupFolder",
     .before = {L"dl\\A", L"prj\\A"},
     .code = hr::kMoveToBackupFailed,
     .after = {L"dl\\A = dl\\A", L"prj\\A = prj\\A"}},
    {.name = "LooksForTheDownloadAfterTheMove",
     .before = {L"dl\\", L"old\\", L"prj\\A"},
     .code = hr::kDownloadMissing,
     .after = {L"old\\A = prj\\A"}},
    {.name = "LooksForTheDownloadIfThereIsNoFileToMove",
     .before = {L"dl\\", L"old\\A", L"prj\\"},
     .code = hr::kDownloadMissing,
     .after = {L"old\\A = old\\A"}},
    {.name = "CannotCopyWithoutTheComponentsFolder",
     .before = {L"dl\\A", L"old\\"},
     .code = hr::kCopyFailed,
     .after = {L"dl\\A = dl\\A"}},
    {.name = "CannotCopyOverAFolder",
     .before = {L"dl\\B", L"old\\", L"prj\\A", L"prj\\B\\"},
     .download = L"B",
     .code = hr::kCopyFailed,
     .after = {L"dl\\B = dl\\B", L"old\\A = prj\\A"}},
    {.name = "CannotCopyAFolder",
     .before = {L"dl\\A\\", L"old\\", L"prj\\A"},
     .code = hr::kCopyFailed,
     .after = {L"old\\A = prj\\A"}},
    {.name = "AcceptsNamesInAnyScript",
     .before = {L"dl\\零件 😀 é", L"old\\", L"prj\\零件 😀 é"},
     .component = L"零件 😀 é",
     .download = L"零件 😀 é",
     .after = {L"dl\\零件 😀 é = dl\\零件 😀 é", L"old\\零件 😀 é = prj\\零件 😀 é",
               L"prj\\零件 😀 é = dl\\零件 😀 é"}}};

INSTANTIATE_TEST_SUITE_P(, SwapFile, testing::ValuesIn(kExchanges), CaseName<Exchange>);

}  // namespace
