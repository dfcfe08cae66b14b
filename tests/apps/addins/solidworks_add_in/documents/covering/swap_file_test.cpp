// The exchange of files alone: its codes and the files afterwards.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "case_name.h"
#include "list_difference.h"
#include "result_codes.h"
#include "solidworks_add_in.h"

namespace {

struct Exchange {
  const char* name;
  Texts before;  ///< files, each with its own name as content, and folders, which end with a backslash
  const wchar_t* component;
  const wchar_t* download;
  HRESULT code;
  Texts after;  ///< files as "NAME = CONTENT"
};

void List(const TempFolder& folder, const std::wstring& name, Texts& lines) {
  for (const std::wstring& entry : folder.List(name)) {
    const std::wstring path = name.empty() ? entry : name + L"\\" + entry;
    if (GetFileAttributesW(folder.Path(path).c_str()) & FILE_ATTRIBUTE_DIRECTORY) {
      List(folder, path, lines);
    } else {
      lines.push_back(path + L" = " + folder.ReadText(path));
    }
  }
}

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
  List(folder, L"", after);
  EXPECT_SAME_ENTRIES(after, exchange.after);
}

INSTANTIATE_TEST_SUITE_P(
    , SwapFile,
    testing::Values(Exchange{"Exchanges",
                             {L"dl\\A", L"old\\", L"prj\\A", L"prj\\C"},
                             L"A",
                             L"A",
                             0,
                             {L"dl\\A = dl\\A", L"old\\A = prj\\A", L"prj\\A = dl\\A", L"prj\\C = prj\\C"}},
                    Exchange{"OverwritesAnOlderBackup",
                             {L"dl\\A", L"old\\A", L"prj\\A"},
                             L"A",
                             L"A",
                             0,
                             {L"dl\\A = dl\\A", L"old\\A = prj\\A", L"prj\\A = dl\\A"}},
                    Exchange{"KeepsAnOlderBackupIfThereIsNoFileToMove",
                             {L"dl\\A", L"old\\A", L"prj\\"},
                             L"A",
                             L"A",
                             0,
                             {L"dl\\A = dl\\A", L"old\\A = old\\A", L"prj\\A = dl\\A"}},
                    Exchange{"NamesTheBackupAfterTheComponentAndTheCopyAfterTheDownload",
                             {L"dl\\B", L"old\\", L"prj\\A"},
                             L"A",
                             L"B",
                             0,
                             {L"dl\\B = dl\\B", L"old\\A = prj\\A", L"prj\\B = dl\\B"}},
                    Exchange{"OverwritesAFileOfTheDownloadsName",
                             {L"dl\\B", L"old\\", L"prj\\A", L"prj\\B"},
                             L"A",
                             L"B",
                             0,
                             {L"dl\\B = dl\\B", L"old\\A = prj\\A", L"prj\\B = dl\\B"}},
                    Exchange{"CannotMoveWithoutABackupFolder",
                             {L"dl\\A", L"prj\\A"},
                             L"A",
                             L"A",
                             hr::kMoveToBackupFailed,
                             {L"dl\\A = dl\\A", L"prj\\A = prj\\A"}},
                    Exchange{"LooksForTheDownloadAfterTheMove",
                             {L"dl\\", L"old\\", L"prj\\A"},
                             L"A",
                             L"A",
                             hr::kDownloadMissing,
                             {L"old\\A = prj\\A"}},
                    Exchange{"LooksForTheDownloadIfThereIsNoFileToMove",
                             {L"dl\\", L"old\\A", L"prj\\"},
                             L"A",
                             L"A",
                             hr::kDownloadMissing,
                             {L"old\\A = old\\A"}},
                    Exchange{"CannotCopyWithoutTheComponentsFolder",
                             {L"dl\\A", L"old\\"},
                             L"A",
                             L"A",
                             hr::kCopyFailed,
                             {L"dl\\A = dl\\A"}},
                    Exchange{"CannotCopyOverAFolder",
                             {L"dl\\B", L"old\\", L"prj\\A", L"prj\\B\\"},
                             L"A",
                             L"B",
                             hr::kCopyFailed,
                             {L"dl\\B = dl\\B", L"old\\A = prj\\A"}},
                    Exchange{"CannotCopyAFolder",
                             {L"dl\\A\\", L"old\\", L"prj\\A"},
                             L"A",
                             L"A",
                             hr::kCopyFailed,
                             {L"old\\A = prj\\A"}},
                    Exchange{"AcceptsNamesInAnyScript",
                             {L"dl\\零件 😀 é", L"old\\", L"prj\\零件 😀 é"},
                             L"零件 😀 é",
                             L"零件 😀 é",
                             0,
                             {L"dl\\零件 😀 é = dl\\零件 😀 é", L"old\\零件 😀 é = prj\\零件 😀 é",
                              L"prj\\零件 😀 é = dl\\零件 😀 é"}}),
    CaseName<Exchange>);

}  // namespace
