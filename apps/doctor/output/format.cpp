#include "format.h"

#include "CStringHelper.h"
#include "json/json_writer.h"
#include "version.h"

namespace doctor {
namespace {

constexpr const wchar_t* WordFor(Status status) {
  switch (status) {
    case Status::kOk:
      return L"OK       ";
    case Status::kWarning:
      return L"WARNING  ";
    case Status::kFailed:
      return L"FAILED   ";
    case Status::kNotApplicable:
      return L"-        ";
  }
  return L"";
}

std::wstring Summary(const Report& report) {
  return std::to_wstring(report.Findings().size()) + L" findings: " +
         std::to_wstring(report.Count(Status::kFailed)) + L" failed, " +
         std::to_wstring(report.Count(Status::kWarning)) + L" with a warning.";
}

void WriteText(JsonWriter& writer, const char* key, const std::string& text) {
  writer.Key(key);
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteFinding(JsonWriter& writer, const Finding& finding) {
  writer.StartObject();
  WriteText(writer, "id", finding.id);
  WriteText(writer, "area", finding.Area());
  WriteText(writer, "status", NameOf(finding.status));
  WriteText(writer, "text", CStringHelper::UnicodeToUTF8(finding.text));
  WriteText(writer, "advice", CStringHelper::UnicodeToUTF8(finding.advice));
  writer.EndObject();
}

}  // namespace

std::wstring FormatText(const Report& report) {
  std::wstring text = L"TAVO SolidWorks Integration, tavo_doctor " PRODUCT_VERSION_WIDE L"\n";
  std::string area;
  for (const Finding& finding : report.Findings()) {
    if (finding.Area() != area) {
      area = finding.Area();
      text += L"\n" + CStringHelper::UTF8ToUnicode(area) + L"\n";
    }
    text += L"  " + std::wstring(WordFor(finding.status)) + finding.text + L"\n";
    if (!finding.advice.empty()) text += L"           -> " + finding.advice + L"\n";
  }
  text += L"\n" + Summary(report) + L"\n";
  if (!report.Conclusion().empty()) text += report.Conclusion() + L"\n";
  return text;
}

std::string FormatJson(const Report& report) {
  JsonBuffer buffer;
  JsonWriter writer(buffer);
  writer.StartObject();
  WriteText(writer, "program", "tavo_doctor");
  WriteText(writer, "version", PRODUCT_VERSION_TEXT);
  writer.Key("failures");
  writer.Uint64(report.Count(Status::kFailed));
  writer.Key("warnings");
  writer.Uint64(report.Count(Status::kWarning));
  writer.Key("checks");
  writer.StartArray();
  for (const Finding& finding : report.Findings()) WriteFinding(writer, finding);
  writer.EndArray();
  writer.EndObject();
  return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace doctor
