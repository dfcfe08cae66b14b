#include "sample_answers.h"

#include "base/utf8.h"

namespace {

std::string Folder(Script script) {
  return script == Script::kLatin ? "C:\\\\PLM\\\\Arbeitsbereich\\\\Müller\\\\Getriebe 4711\\\\"
                                  : "C:\\\\协同管理\\\\工作区\\\\王小明\\\\减速机总成\\\\";
}

std::string Name(Script script, std::size_t number) {
  return (script == Script::kLatin ? "Welle für Lagerbock " : "轴承座零件图纸") + std::to_string(number) +
         ".sldprt";
}

}  // namespace

std::string SampleAnswerUtf8(Script script, std::size_t bytes) {
  std::string text = R"({"__InvokeResult__":true,"task":{"number":4711,"weight":12.75})";
  std::size_t number = 0;
  const std::size_t bytes_of_path = Folder(script).size() + Name(script, 100).size() + 3;
  const std::size_t paths = bytes / bytes_of_path / 4 + 1;
  for (const wchar_t* list : kReadLists) {
    text += ",\"" + utf8::Encode<wchar_t>(list) + "\":[";
    for (std::size_t path = 0; path < paths; ++path) {
      text += (path == 0 ? "\"" : ",\"") + Folder(script) + Name(script, ++number) + "\"";
    }
    text += "]";
  }
  return text + "}";
}

std::wstring SampleAnswer(Script script, std::size_t bytes) {
  return utf8::Decode<wchar_t>(SampleAnswerUtf8(script, bytes));
}

std::string SampleTextUtf8(Script script, std::size_t bytes) {
  const std::string sentence = script == Script::kLatin
                                   ? "Die Welle läuft in zwei Lagern; größte Länge 1250 mm, geprüft. "
                                   : "该轴由两个轴承支承，最大长度1250毫米，材料为45号钢，已检验。";
  std::string text;
  while (text.size() < bytes) text += sentence;
  return text;
}
