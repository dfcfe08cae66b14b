// Files that the host cannot read: in formats of other programs, and cut off.
#include <windows.h>

#include "other_programs_fixture.h"

namespace {

using cad_host::FileKind;
using cad_host::HostError;

class OpaqueFileTest : public OtherProgramsTest {};

TEST_F(OpaqueFileTest, OpensWithoutPropertiesAndIsNotSaved) {
  for (const auto& [name, type] :
       {std::pair{L"a.sldprt", swDocPART}, {L"b.sldasm", swDocASSEMBLY}, {L"c.slddrw", swDocDRAWING}}) {
    const std::wstring path = m_folder.Write(name, "PK\3\4 another format");
    const auto document = Host().Open(path);
    EXPECT_EQ(document->Type(), type);
    EXPECT_EQ(document->model.kind, FileKind::kOpaque);
    EXPECT_TRUE(document->model.properties.empty());
    EXPECT_TRUE(document->components.empty());

    for (const std::wstring& target : {std::wstring(), m_folder.Path(std::wstring(L"copy-") + name)}) {
      EXPECT_EQ(ErrorOfSaving(*document, target),
                path + L": cannot be saved, because it is not a compound file: this host cannot change it");
    }
    EXPECT_EQ(ReadFileBytes(path), "PK\3\4 another format");
  }
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"a.sldprt", L"b.sldasm", L"c.slddrw"}));
}

TEST_F(OpaqueFileTest, CanBeAComponent) {
  const auto assembly = Host().New(swDocASSEMBLY);
  const auto component = Host().AddComponent(*assembly, m_folder.Write(L"a.sldprt", "first"));
  const long revision = component->loaded_revision;
  m_folder.Write(L"b.sldprt", "second");

  EXPECT_NE(Host().AddComponent(*assembly, m_folder.Path(L"b.sldprt"))->loaded_revision, revision);
  EXPECT_THROW(Host().AddComponent(*assembly, m_folder.Write(L"a.txt", "first")), HostError);
}

TEST_F(OpaqueFileTest, IsRefusedOrOpenedAsAnotherIfItWasCutOff) {
  constexpr std::size_t kTenths = 10;
  cad_host::WriteModelFile(m_folder.Path(L"whole.sldprt"), cad_host::ModelFile{});
  const std::string whole = m_folder.Read(L"whole.sldprt");
  int refused = 0;
  for (std::size_t tenth = 0; tenth < kTenths; ++tenth) {
    const std::wstring path = m_folder.Write(L"cut.sldprt", whole.substr(0, whole.size() * tenth / kTenths));
    try {
      EXPECT_EQ(cad_host::ReadModelFile(path).kind, FileKind::kOpaque) << tenth;
    } catch (const HostError& error) {
      EXPECT_EQ(std::string(error.what()).find("cut.sldprt: ") != std::string::npos, true) << error.what();
      ++refused;
    }
  }
  EXPECT_EQ(refused, 9);
}

}  // namespace
