#include "models/sample_vault.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "cad_host/model_file.h"
#include "models/model_properties.h"
#include "temp_folder.h"

using namespace plm_vault;

namespace {

/// Made once: it has many files.
class SampleVaultTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_folder = std::make_unique<TempFolder>();
    plm_models::MakeSampleVault(s_folder->Path(L"vault"));
  }
  static void TearDownTestSuite() { s_folder.reset(); }

  static inline std::unique_ptr<TempFolder> s_folder;
  const Vault m_vault = Vault::Open(s_folder->Path(L"vault"));
};

TEST_F(SampleVaultTest, HasItemsOfEveryKindWithModelFilesThatTheHostReads) {
  const std::vector<Item> items = m_vault.Search({});
  EXPECT_GE(items.size(), 30u);
  for (const Item& item : items) {
    for (const Revision& revision : m_vault.Revisions(item.number)) {
      const std::wstring file = m_vault.FileOf(item, revision.revision).wstring();
      const cad_host::ModelFile model = cad_host::ReadModelFile(file);
      EXPECT_EQ(model.type, cad_host::DocumentTypeOfName(file));
      EXPECT_EQ(model.revision, revision.revision);
    }
  }
  EXPECT_EQ(m_vault.FindByFileName(L"bolt.sldprt")->revision, 3);
}

TEST_F(SampleVaultTest, HasAnAssemblyWhoseComponentsAreHandedOutWithIt) {
  Vault vault = Vault::Open(s_folder->Path(L"vault"));
  const Item frame = *vault.FindByFileName(L"frame.sldasm");
  const cad_host::ModelFile model = cad_host::ReadModelFile(vault.HandOut(frame, frame.revision).wstring());
  EXPECT_EQ(model.components.size(), 37u);
  for (const cad_host::ComponentRecord& component : model.components) {
    EXPECT_TRUE(std::filesystem::exists(component.path)) << testing::PrintToString(component.path);
  }
}

TEST_F(SampleVaultTest, HasPropertiesInItsFiles) {
  const Item item = *m_vault.FindByFileName(L"\u652f\u67b6.sldprt");
  const Properties properties = plm_models::ReadModelProperties(m_vault.FileOf(item, 2));
  const auto description =
      std::ranges::find(properties, L"Description", [](const auto& p) { return p.first; });
  ASSERT_NE(description, properties.end());
  EXPECT_EQ(description->second, L"\u652f\u67b6\uff08\u5de6\uff09");
}

TEST_F(SampleVaultTest, HasUsersTasksAndMaterials) {
  EXPECT_EQ(m_vault.Users().size(), 3u);
  EXPECT_EQ(m_vault.Tasks(L"kim").size(), 2u);
  EXPECT_EQ(m_vault.CheckedOutBy(L"kim").size(), 1u);
  EXPECT_EQ(m_vault.FindMaterials({}).size(), 5u);
  EXPECT_EQ(m_vault.TemporaryMaterials(L"kim").size(), 1u);
}

TEST_F(SampleVaultTest, NamesTheFileWhosePropertiesCannotBeRead) {
  const std::wstring opaque = s_folder->Write(L"text.sldprt", "a format of another program");
  EXPECT_TRUE(plm_models::ReadModelProperties(opaque).empty());
  const std::wstring file = s_folder->Path(L"missing.sldprt");
  try {
    plm_models::ReadModelProperties(file);
    ADD_FAILURE() << "it was read";
  } catch (const VaultError& failure) {
    EXPECT_NE(failure.Message().find(file), std::wstring::npos);
  }
}

}  // namespace
