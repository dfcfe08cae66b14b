#include "sample_answers.h"

#include "base/utf8.h"

namespace {

std::wstring Folder(Script script) {
  return script == Script::kLatin ? L"C:\\\\PLM\\\\Arbeitsbereich\\\\Müller\\\\Getriebe 4711\\\\"
                                  : L"C:\\\\协同管理\\\\工作区\\\\王小明\\\\减速机总成\\\\";
}

std::wstring Name(Script script, std::size_t number) {
  return (script == Script::kLatin ? L"Welle für Lagerbock " : L"轴承座零件图纸") + std::to_wstring(number) +
         L".sldprt";
}

}  // namespace

std::wstring SampleAnswer(Script script, std::size_t bytes) {
  std::wstring text = L"{\"__InvokeResult__\":true,\"task\":{\"number\":4711,\"weight\":12.75}";
  std::size_t number = 0;
  const std::size_t bytes_of_path = utf8::Encode<wchar_t>(Folder(script) + Name(script, 100)).size() + 3;
  const std::size_t paths = bytes / bytes_of_path / 4 + 1;
  for (const wchar_t* list : kReadLists) {
    text += std::wstring(L",\"") + list + L"\":[";
    for (std::size_t path = 0; path < paths; ++path) {
      text += (path == 0 ? L"\"" : L",\"") + Folder(script) + Name(script, ++number) + L"\"";
    }
    text += L"]";
  }
  return text + L"}";
}

std::string SampleAnswerUtf8(Script script, std::size_t bytes) {
  return utf8::Encode<wchar_t>(SampleAnswer(script, bytes));
}

std::wstring SampleText(Script script, std::size_t bytes) {
  const std::wstring sentence = script == Script::kLatin
                                    ? L"Die Welle läuft in zwei Lagern; größte Länge 1250 mm, geprüft. "
                                    : L"该轴由两个轴承支承，最大长度1250毫米，材料为45号钢，已检验。";
  const std::size_t size = utf8::Encode<wchar_t>(sentence).size();
  std::wstring text;
  for (std::size_t written = 0; written < bytes; written += size) text += sentence;
  return text;
}
