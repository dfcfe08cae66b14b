// The archive for support.
#include <minizip/unzip.h>
// After unzip.h, which it needs.
#include <minizip/iowin32.h>

#include <map>

#include "CStringHelper.h"
#include "bundle/bundle.h"
#include "doctor_fixture.h"

namespace {

/// The files in an archive, by their names.
std::map<std::string, std::string> Unzip(const std::wstring& path) {
  zlib_filefunc64_def functions{};
  fill_win32_filefunc64W(&functions);
  std::map<std::string, std::string> files;
  unzFile archive = unzOpen2_64(path.c_str(), &functions);
  EXPECT_NE(archive, nullptr);
  for (int next = unzGoToFirstFile(archive); next == UNZ_OK; next = unzGoToNextFile(archive)) {
    unz_file_info64 info{};
    char name[512] = {};
    EXPECT_EQ(unzGetCurrentFileInfo64(archive, &info, name, sizeof name, nullptr, 0, nullptr, 0), UNZ_OK);
    std::string bytes(info.uncompressed_size, '\0');
    EXPECT_EQ(unzOpenCurrentFile(archive), UNZ_OK);
    EXPECT_EQ(unzReadCurrentFile(archive, bytes.data(), static_cast<unsigned>(bytes.size())),
              static_cast<int>(bytes.size()));
    EXPECT_EQ(unzCloseCurrentFile(archive), UNZ_OK) << "its checksum is wrong";
    files[name] = std::move(bytes);
  }
  unzClose(archive);
  return files;
}

class SupportBundle : public DoctorFixture {
 protected:
  std::map<std::string, std::string> Write() const {
    const std::wstring path = m_folder.Path(L"支持.zip");
    const doctor::AddInLibrary library(m_folder.Path());
    doctor::WriteBundle(path, Check("configuration"), library);
    return Unzip(path);
  }
};

TEST_F(SupportBundle, HasFindingsConfigurationAndLogs) {
  Configure(L"View.json", R"({"name":"x","Menu":[]})");
  m_folder.Write(L"home\\log\\SolidWorks.log", "new");
  m_folder.Write(L"home\\log\\SolidWorks.log.1", "old");
  m_folder.Write(L"home\\log\\another program.log", "not ours");

  const auto files = Write();

  EXPECT_EQ(files.at("configuration/1/View.json"), R"({"name":"x","Menu":[]})");
  EXPECT_FALSE(files.at("configuration/3/View.json").empty()) << "the installed one";
  EXPECT_EQ(files.at("log/1/SolidWorks.log"), "new");
  EXPECT_EQ(files.at("log/2/SolidWorks.log.1"), "old");
  EXPECT_EQ(files.count("log/3/another program.log"), 0u);
  EXPECT_NE(files.at("findings.txt").find("configuration"), std::string::npos);
  EXPECT_NE(files.at("findings.json").find("\"configuration.view\""), std::string::npos);
  EXPECT_NE(files.at("contents.txt").find("log/1/SolidWorks.log: "), std::string::npos);
}

TEST_F(SupportBundle, HasTheLogFilesThatTheConfigurationNames) {
  m_folder.Write(L"home\\log\\Log4cplus.properties",
                 "log4cplus.rootLogger=INFO, f\n"
                 "log4cplus.appender.f=tavo::SharedFileAppender\n"
                 "log4cplus.appender.f.File=elsewhere\\other.log\n");
  m_folder.Write(L"home\\log\\elsewhere\\other.log", "lines");
  const auto files = Write();
  EXPECT_EQ(files.at("log/1/other.log"), "lines");
  EXPECT_EQ(files.count("configuration/1/Log4cplus.properties"), 1u);
}

TEST_F(SupportBundle, HasNoLoginData) {
  const std::string secret = "S3cr3t-93b1";
  Configure(L"View.json", "{\"name\":\"x\",\"Menu\":[],\"password\":\"" + secret + "\"}");
  Configure(L"PlmClient.json", "{\"accessToken\":\"" + secret + "\",\"userName\":\"" + secret + "\"}");
  m_folder.Write(L"home\\log\\SolidWorks.log",
                 "ERROR platform - answer {\"user\":\"" + secret + "\",\"token\":\"" + secret + "\"}\n" +
                     "INFO - \"{\\\"password\\\":\\\"" + secret + "\\\"}\"\n" + "INFO - pwd=" + secret +
                     "\n" + "INFO - client.exe --token " + secret + "\n");
  m_folder.Write(L"home\\log\\SolidWorks.log.1",
                 std::string("\xFF\xFE", 2) + std::string("p\0w\0d\0=\0S\0003\0c\0r\0003\0t\0-\0009\0003\0b\0"
                                                          "1\0",
                                                          30));
  m_folder.Write(L"home\\log\\SolidWorks.log.2", std::string("p\0w\0d\0=\0", 8) + secret);
  m_folder.Write(L"home\\log\\Log4cplus.properties", "log4cplus.appender.mail.password=" + secret + "\n");

  const auto files = Write();

  ASSERT_EQ(files.count("log/1/SolidWorks.log"), 1u);
  EXPECT_NE(files.at("log/1/SolidWorks.log").find("[redacted]"), std::string::npos);
  EXPECT_NE(files.at("contents.txt").find("not a text"), std::string::npos);
  for (const auto& [name, bytes] : files) {
    EXPECT_EQ(bytes.find(secret), std::string::npos) << name << ":\n" << bytes;
    EXPECT_EQ(bytes.find('\0'), std::string::npos) << name;
  }
}

TEST_F(SupportBundle, HasTheEndOfALargeLogFromAWholeLineOn) {
  const std::string line = "password=S3cr3t-93b1 and so on\n";
  std::string text;
  while (text.size() < 17u * 1024 * 1024) text += line;
  m_folder.Write(L"home\\log\\SolidWorks.log", text);
  const std::string log = Write().at("log/1/SolidWorks.log");
  EXPECT_EQ(log.find("S3cr3t"), std::string::npos);
  EXPECT_EQ(log.substr(0, 12), "\npassword=[r");
}

TEST_F(SupportBundle, ReplacesNoFile) {
  const std::wstring path = m_folder.Write(L"a.zip", "something else");
  const doctor::AddInLibrary library(m_folder.Path());
  EXPECT_THROW(doctor::WriteBundle(path, {}, library), doctor::BundleError);
  EXPECT_EQ(m_folder.Read(L"a.zip"), "something else");
}

TEST_F(SupportBundle, ThatCannotBeWrittenIsAnError) {
  const doctor::AddInLibrary library(m_folder.Path());
  EXPECT_THROW(doctor::WriteBundle(m_folder.Path(L"no such folder\\a.zip"), {}, library),
               doctor::BundleError);
}

}  // namespace
