// What is in a package, as other programs read it, and how it is made.
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "computer.h"
#include "list_difference.h"
#include "program_folder.h"
#include "unix_program.h"

namespace {

using namespace computer;

const std::string kVersion = utf8::Encode<wchar_t>(PRODUCT_VERSION);

// As the shell takes them.
const std::string kMaker = UnixPath(SourceFile(L"installer\\make_package"));
const std::string kPackage = UnixPath(InBuild(L"installer\\this.msi"));

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

/// Makes the package `name` in `folder`.
void Make(const TempFolder& folder, const std::string& name, const std::string& options = {}) {
  RunShell(folder, kMaker + " --bin " + UnixPath(InBuild(L"bin")) + " --registry " +
                       UnixPath(InBuild(L"installer\\registry.wxi")) + " --version " + kVersion +
                       " --output " + name + " " + options + " 2>&1");
}

/// Makes a signed package "signed.msi" in `folder`, and its "certificate.pem" and "key.pem".
void MakeSigned(const TempFolder& folder) {
  RunShell(folder,
           "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=Test of TAVO' "
           "-addext extendedKeyUsage=codeSigning -keyout key.pem -out certificate.pem 2>&1");
  Make(folder, "signed.msi", "--sign certificate.pem key.pem");
}

class Package : public testing::Test {
 protected:
  /// A table of the package as lines of fields with tabs between them.
  std::string Table(const std::string& name) const {
    return RunShell(m_folder, "msiinfo export " + kPackage + " " + name + " | tr -d '\r'");
  }

  TempFolder m_folder;
};

TEST_F(Package, HasTheVersionOfTheDll) {
  EXPECT_EQ(FileVersion(BuiltFile(L"solidworks_add_in.dll")), PRODUCT_VERSION L".0");
  EXPECT_TRUE(Contains(Table("Property"), "\nProductVersion\t" + kVersion + "\n")) << Table("Property");
  const std::string files = Table("File");
  EXPECT_TRUE(Contains(files, "\tsolidworks_add_in.dll\t")) << files;
  EXPECT_TRUE(Contains(files, "\t" + kVersion + ".0\t")) << "an upgrade would keep the old DLL:\n" << files;
}

TEST_F(Package, HashesOnlyFilesWithoutAVersion) {
  const std::string hashes = Table("MsiFileHash");
  EXPECT_TRUE(Contains(hashes, "View.json")) << hashes;
  EXPECT_FALSE(Contains(hashes, ".dll")) << hashes;
}

TEST_F(Package, IsFor64BitWindows) {
  EXPECT_TRUE(Contains(RunShell(m_folder, "msiinfo suminfo " + kPackage), "Template: x64;1033\n"));
  const std::string components =
      RunShell(m_folder, "msiinfo export " + kPackage + " Component | tail -n +4 | cut -f 4");
  std::size_t count = 0;
  for (std::size_t start = 0; start < components.size(); start = components.find('\n', start) + 1, ++count) {
    EXPECT_EQ(std::stoi(components.substr(start)) & 256, 256) << components;
  }
  EXPECT_GT(count, 3u);
}

TEST_F(Package, SaysWhichWindowsItNeeds) {
  const std::string conditions = Table("LaunchCondition");
  EXPECT_TRUE(Contains(conditions, "Installed OR VersionNT64\t[ProductName] needs a 64-bit Windows.\n"))
      << conditions;
}

TEST_F(Package, RemovesTheOldVersionAsItsFirstStep) {
  const std::string sequence = Table("InstallExecuteSequence");
  EXPECT_TRUE(Contains(sequence, "\nInstallInitialize\t\t1500\n")) << sequence;
  EXPECT_TRUE(Contains(sequence, "\nRemoveExistingProducts\t\t1501\n")) << sequence;
}

TEST_F(Package, RunsNoProgramsOfItsOwn) {
  EXPECT_EQ(RunShell(m_folder, "msiinfo export " + kPackage + " CustomAction | wc -l"), "3\n");
}

TEST_F(Package, NeitherRestartsTheComputerNorEndsPrograms) {
  const std::string properties = Table("Property");
  EXPECT_TRUE(Contains(properties, "\nREBOOT\tReallySuppress\n")) << properties;
  EXPECT_TRUE(Contains(properties, "\nMSIRESTARTMANAGERCONTROL\tDisableShutdown\n")) << properties;
}

TEST_F(Package, IsTheSameIfMadeAgain) {
  Make(m_folder, "one.msi");
  RunShell(m_folder, "sleep 1");
  Make(m_folder, "two.msi");
  EXPECT_EQ(m_folder.Read(L"one.msi"), m_folder.Read(L"two.msi"));
}

TEST_F(Package, HasLinksOnlyToWhatIsInIt) {
  RunShell(m_folder, UnixPath(SourceFile(L"installer\\make_documents")) + " docs");
  EXPECT_EQ(RunShell(m_folder,
                     "cd docs; grep -ohE '(href|src)=\"[^\":#]+' *.html | sed -E 's/.*\"//' | sort -u | "
                     "while read -r name; do [ -e \"$name\" ] || echo \"$name\"; done"),
            "");
  EXPECT_TRUE(Contains(m_folder.Read(L"docs\\plm-client-protocol.html"), "<table>"));
}

TEST_F(Package, RefusesAVersionThatAPackageCannotHave) {
  try {
    RunShell(m_folder, kMaker + " --bin . --registry . --version 1.5 --output x.msi 2>&1");
    FAIL() << "was accepted";
  } catch (const std::runtime_error& error) {
    EXPECT_TRUE(Contains(error.what(), "a package's version has three numbers, unlike \"1.5\""))
        << error.what();
  }
}

TEST_F(Package, HasNoEntriesOfAClassThatIsNotDescribed) {
  try {
    RunShell(m_folder,
             UnixPath(InBuild(L"installer\\registry_entries\\registry_entries")) + " x.dll " +
                 UnixPath(SourceFile(L"apps\\addins\\solidworks_add_in\\module\\solidworks_add_in.idl")) +
                 " Nobody=nobody.rgs 2>&1");
    FAIL() << "was accepted";
  } catch (const std::runtime_error& error) {
    EXPECT_TRUE(Contains(error.what(), "registry_entries: no class of the name Nobody")) << error.what();
  }
}

class SignedPackage : public Package {
 protected:
  SignedPackage() { MakeSigned(m_folder); }

  std::string Verify(const std::string& file) const {
    return RunShell(m_folder, "osslsigncode verify -CAfile certificate.pem -in '" + file + "' 2>&1");
  }
};

TEST_F(SignedPackage, IsSignedWithItsPrograms) {
  EXPECT_TRUE(Contains(Verify("signed.msi"), "Signature verification: ok"));
  RunShell(m_folder, "mkdir content && cd content && msiextract ../signed.msi");
  const std::string dll = "content/TAVO/SolidWorks Integration/solidworks_add_in.dll";
  EXPECT_TRUE(Contains(Verify(dll), "Signature verification: ok"));
}

TEST_F(SignedPackage, IsNoLongerValidIfItIsChanged) {
  std::string bytes = m_folder.Read(L"signed.msi");
  bytes[bytes.find("MSCF") + 100] ^= 1;
  m_folder.Write(L"changed.msi", bytes);
  EXPECT_THROW(Verify("changed.msi"), std::runtime_error);
}

TEST_F(SignedPackage, IsRefusedWithAKeyOfAnotherCertificate) {
  RunShell(m_folder, "openssl genrsa -out other.pem 2048 2>&1");
  EXPECT_THROW(Make(m_folder, "wrong.msi", "--sign certificate.pem other.pem"), std::runtime_error);
  EXPECT_FALSE(m_folder.Exists(L"wrong.msi"));
}

class InstalledSignedPackage : public InstallerTest {};

TEST_F(InstalledSignedPackage, IsLikeAnUnsignedOne) {
  ASSERT_EQ(Msiexec(L"/i " + ThisPackage()), 0u);
  const std::vector<std::wstring> unsigned_entries = ChangesBelow(ChangesSoFar(), {L"HK"});
  ASSERT_EQ(Msiexec(L"/x " + ThisPackage()), 0u);
  MakeSigned(m_folder);

  ASSERT_EQ(Msiexec(L"/i " + m_folder.Path(L"signed.msi")), 0u);

  EXPECT_PRED_FORMAT2(SameEntries, ChangesBelow(ChangesSoFar(), {L"HK"}), unsigned_entries);
  EXPECT_EQ(FileVersion(kDll), PRODUCT_VERSION L".0");
}

}  // namespace
