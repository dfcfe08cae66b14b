// Hosts before release 2018, which lack the method that replaces components.
#include <gtest/gtest.h>

#include <algorithm>

#include "documents/documents_fixture.h"
#include "log_line.h"

namespace {

class OldHost : public DocumentsFixture {
 protected:
  /// Starts a host of `revision`, logs in, opens the assembly and lets the PLM client choose a replacement.
  void Replace(const std::wstring& revision) {
    RestartHost(revision);
    ConnectAndLogIn();
    OpenAssembly();
    const std::wstring screw = MakeModel(L"screw.sldprt");
    m_host->GetJournal().Clear();
    EXPECT_EQ(PickFiles({{"ReplaceFile", {screw}}}).result, S_OK);
  }

  bool WasAsked() const {
    const Texts methods = CalledMethods();
    return std::ranges::count(methods, L"IAssemblyDoc::ReplaceComponents2") > 0;
  }
};

TEST_F(OldHost, IsNotAskedToReplaceAndTheOperationFails) {
  ExpectBox();

  Replace(L"25.5.0");

  EXPECT_FALSE(WasAsked());
  EXPECT_EQ(BoxTexts(), Texts{L"Model replacement failed."});
  EXPECT_EQ(AddInLog(),
            Texts{ErrorLine(948, L"ReplaceCurrentFile", L"pAssDoc->ReplaceComponents2", E_NOTIMPL)});
}

TEST_F(OldHost, IsAskedFromRelease2018On) {
  Replace(L"26.0.0");

  EXPECT_TRUE(WasAsked());
}

TEST_F(OldHost, OfAnUnknownVersionIsAsked) {
  Replace(L"");

  EXPECT_TRUE(WasAsked());
}

}  // namespace
