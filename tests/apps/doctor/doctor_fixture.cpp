#include "doctor_fixture.h"

#include <algorithm>
#include <stdexcept>

#include "CStringHelper.h"
#include "output/format.h"
#include "program_folder.h"

using doctor::Finding;
using doctor::Report;
using doctor::Status;

std::wstring DoctorPath() { return InBin(L"tavo_doctor.exe"); }

std::string Describe(const Report& report) {
  return CStringHelper::UnicodeToUTF8(doctor::FormatText(report));
}

DoctorFixture::DoctorFixture() {
  if (FAILED(m_dll.RegisterServer())) throw std::runtime_error("the add-in cannot be registered");
}

DoctorFixture::~DoctorFixture() {
  m_otherLibrary.reset();
  m_dll.UnregisterServer();
}

Report DoctorFixture::Check(const char* area) const {
  const auto found = std::ranges::find(doctor::kAreas, std::string(area),
                                       [](const doctor::Area& known) { return std::string(known.name); });
  const doctor::AddInLibrary library(m_program.substr(0, m_program.find_last_of(L'\\')));
  return doctor::RunChecks({.own_program = m_program, .add_in = library, .patience = m_patience}, {&*found});
}

void DoctorFixture::ExpectFinding(const Report& report, const std::string& id, Status status,
                                  const std::wstring& text) {
  const bool found = std::ranges::any_of(report.Findings(), [&](const Finding& finding) {
    return finding.id == id && finding.status == status && finding.text.find(text) != std::wstring::npos;
  });
  EXPECT_TRUE(found) << id << " " << doctor::NameOf(status) << ": " << CStringHelper::UnicodeToUTF8(text)
                     << "\nis missing in\n"
                     << Describe(report);
  for (const Finding& finding : report.Findings()) {
    const bool needs_advice = finding.status == Status::kFailed || finding.status == Status::kWarning;
    EXPECT_EQ(finding.advice.empty(), !needs_advice) << finding.id;
  }
}

void DoctorFixture::ExpectHealthy(const Report& report) {
  EXPECT_GT(report.Count(Status::kOk), 0u);
  EXPECT_EQ(report.Count(Status::kFailed) + report.Count(Status::kWarning), 0u) << Describe(report);
}

void DoctorFixture::Configure(const std::wstring& file, std::string_view bytes) const {
  m_folder.Write(L"home\\config\\New TAVO SolidWorks AddOn\\" + file, bytes);
}

std::wstring DoctorFixture::RegisterCopy(const std::string& from, const std::string& to) {
  std::string bytes = ReadFileBytes(AddInDll::BuiltPath());
  bool replaced = from.empty();
  for (std::size_t at = 0; !from.empty() && (at = bytes.find(from, at)) != std::string::npos;
       at += to.size()) {
    bytes.replace(at, from.size(), to);
    replaced = true;
  }
  EXPECT_TRUE(replaced) << from;
  const std::wstring path = m_folder.Write(L"installed\\solidworks_add_in.dll", bytes);
  RegisterLibrary(path);
  return path;
}

void DoctorFixture::RegisterLibrary(const std::wstring& path) {
  m_otherLibrary.reset();
  m_otherLibrary.emplace(HKEY_LOCAL_MACHINE, ClassKey() + L"\\InprocServer32", L"", path);
}

std::wstring DoctorFixture::ClassId() { return doctor::GuidText(doctor::Classes().front().id); }

std::wstring DoctorFixture::ClassKey() { return L"SOFTWARE\\Classes\\CLSID\\" + ClassId(); }
