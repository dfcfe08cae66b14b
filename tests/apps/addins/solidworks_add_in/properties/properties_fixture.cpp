#include "properties_fixture.h"

namespace {

/// A box of the commands, with its text and caption in the English string table.
struct KnownBox {
  const wchar_t* name;
  const wchar_t* text;
  const wchar_t* caption;
  bool asks;
};

constexpr KnownBox kKnownBoxes[] = {
    {L"extract?", L"Whether to extract the current drawing attribute information to populate the page?",
     L"Extract properties", true},
    {L"backfill?", L"Whether to backfill the created material property information into the drawing?",
     L"Backfill Properties", true},
    {L"completed", L"Backfill Properties Completed", L"Backfill Properties", false},
    {L"no model", L"No model is currently loaded, please load a valid model and try again.", L"Load Model",
     false},
};

std::wstring SystemText(HRESULT code) {
  std::wstring text(512, L'\0');
  text.resize(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                             static_cast<DWORD>(code), 0, text.data(), static_cast<DWORD>(text.size()),
                             nullptr));
  return text.substr(0, text.find_last_not_of(L" \r\n") + 1);
}

/// Whether the box is the platform's error message for the code in its text.
bool IsErrorBox(const RecordedMessageBox& box, const std::wstring& log_folder) {
  const std::wstring label = L"\n\nError code: 0x";
  const std::size_t place = box.text.find(label);
  if (place == std::wstring::npos) return false;
  const std::wstring digits = box.text.substr(place + label.size(), 8);
  const auto code = static_cast<HRESULT>(std::wcstoul(digits.c_str(), nullptr, 16));
  return box.text == SystemText(code) + label + digits + L"\nLog folder: " + log_folder &&
         box.caption == L"Collaborative management" && box.icon == MB_ICONERROR &&
         box.buttons == std::vector<int>{IDOK};
}

std::wstring NameOf(const RecordedMessageBox& box, const std::wstring& log_folder) {
  for (const KnownBox& known : kKnownBoxes) {
    const std::vector<int> buttons = known.asks ? std::vector<int>{IDOK, IDCANCEL} : std::vector<int>{IDOK};
    if (box.text == known.text && box.caption == known.caption && box.buttons == buttons && box.icon == 0) {
      return known.name;
    }
  }
  if (!IsErrorBox(box, log_folder)) return box.caption + L": " + box.text;
  return L"error " + box.text.substr(box.text.find(L"0x"), 10);
}

}  // namespace

std::shared_ptr<cad_host::Document> PropertiesFixture::Open(const std::wstring& name,
                                                            const cad_host::CustomProperties& properties) {
  cad_host::ModelFile model;
  model.properties = properties;
  auto document = m_host->Open(MakeModel(name, model));
  m_host->GetJournal().Clear();
  return document;
}

std::shared_ptr<cad_host::Document> PropertiesFixture::OpenPartWithThree() {
  return Open(L"part.sldprt",
              {{.name = L"A", .text = L"1"}, {.name = L"B", .text = L"2"}, {.name = L"C", .text = L"3"}});
}

Texts PropertiesFixture::PropertiesOf(const cad_host::Document& document) {
  Texts texts;
  for (const auto& property : document.model.properties)
    texts.push_back(property.name + L"=" + property.text);
  return texts;
}

Texts PropertiesFixture::Boxes() const {
  Texts names;
  const std::wstring log_folder = m_home.Folder().Path(L"log");
  for (const RecordedMessageBox& box : m_boxes->Boxes()) names.push_back(NameOf(box, log_folder));
  return names;
}

void PropertiesFixture::ExpectBoxes(std::size_t count) {
  for (std::size_t index = 0; index < count; ++index) m_boxes->Expect(IDOK);
}
