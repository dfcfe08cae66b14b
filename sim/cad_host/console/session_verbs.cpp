// The commands for what a person does at the host.
#include "session.h"

namespace cad_host {
namespace {

struct TypeName {
  const wchar_t* name;
  swDocumentTypes_e type;
};
constexpr TypeName kDocumentTypes[] = {
    {L"part", swDocPART}, {L"assembly", swDocASSEMBLY}, {L"drawing", swDocDRAWING}};

struct PropertyTypeName {
  const wchar_t* name;
  swCustomInfoType_e type;
};
constexpr PropertyTypeName kPropertyTypes[] = {{L"text", swCustomInfoText},
                                               {L"number", swCustomInfoNumber},
                                               {L"date", swCustomInfoDate},
                                               {L"yesno", swCustomInfoYesOrNo}};

template <class Names>
auto TakeType(Command& command, const Names& names) {
  const std::wstring word = command.Take(L"a type");
  for (const auto& known : names) {
    if (word == known.name) return known.type;
  }
  command.Fail(L"\"" + word + L"\" is not a type");
}

CustomProperty& PropertyNamed(CustomProperties& properties, const std::wstring& name) {
  for (CustomProperty& property : properties) {
    if (property.name == name) return property;
  }
  properties.push_back({.name = name, .text = {}});
  return properties.back();
}

}  // namespace

std::span<const Session::Verb> Session::Verbs() {
  static constexpr Verb kTable[] = {
      {L"connect", &Session::Connect},
      {L"disconnect", &Session::Disconnect},
      {L"pick", &Session::Pick},
      {L"open", &Session::Open},
      {L"new", &Session::New},
      {L"save", &Session::Save},
      {L"activate", &Session::Activate},
      {L"close", &Session::Close},
      {L"insert", &Session::Insert},
      {L"suppress", &Session::Suppress},
      {L"unsuppress", &Session::Unsuppress},
      {L"select", &Session::Select},
      {L"property", &Session::SetProperty},
      {L"remove", &Session::Remove},
      {L"quantity", &Session::SetQuantity},
      {L"fault", &Session::Fault},
      {L"quirk", &Session::SetQuirk},
      {L"quirks", &Session::ShowQuirks},
      {L"answer", &Session::Answer},
      {L"picture", &Session::TakePicture},
      {L"properties", &Session::ShowProperties},
      {L"components", &Session::ShowComponents},
      {L"items", &Session::ShowItems},
      {L"tabs", &Session::ShowTabs},
      {L"print", &Session::Print},
      {L"expect", &Session::Expect},
  };
  return kTable;
}

// connect ["title or CLSID"]
void Session::Connect(Command& command) {
  if (!command.AtEnd()) {
    const std::wstring name = command.Take(L"an add-in");
    command.ExpectEnd();
    m_host.Connect(name);
    return;
  }
  const auto registered = Host::RegisteredAddIns();
  if (registered.empty()) command.Fail(L"no add-in is registered");
  if (registered.size() > 1) command.Fail(L"several add-ins are registered; name one");
  m_host.Connect(registered[0].clsid);
}

// disconnect ["title or CLSID"]
void Session::Disconnect(Command& command) {
  AddIn& add_in = command.AtEnd() ? ConnectedAddIn(command) : AddInNamed(command.Take(L"an add-in"), command);
  command.ExpectEnd();
  const bool disconnected = m_host.Disconnect(add_in);
  Check(command, disconnected, L"the add-in did not report that it has disconnected");
}

// pick "menu text"|CALLBACK [of "title or CLSID"]
void Session::Pick(Command& command) {
  const std::wstring item = command.Take(L"an item");
  AddIn& add_in =
      command.TakeIf(L"of") ? AddInNamed(command.Take(L"an add-in"), command) : ConnectedAddIn(command);
  command.ExpectEnd();
  const PickResult picked = m_host.Pick(add_in, item);
  if (!picked.enabled) Write(L"    (greyed out)");
}

// open PATH
void Session::Open(Command& command) {
  const std::wstring path = command.Take(L"a path");
  command.ExpectEnd();
  m_host.Open(path);
}

// new part|assembly|drawing
void Session::New(Command& command) {
  const swDocumentTypes_e type = TakeType(command, kDocumentTypes);
  command.ExpectEnd();
  m_host.New(type);
}

// save [PATH]
void Session::Save(Command& command) {
  const std::wstring path = command.AtEnd() ? L"" : command.Take(L"a path");
  command.ExpectEnd();
  m_host.Save(ActiveDocument(command), path);
}

// activate NAME
void Session::Activate(Command& command) {
  const auto document = FindDocument(command);
  command.ExpectEnd();
  m_host.Activate(document);
}

// close NAME
void Session::Close(Command& command) {
  const auto document = FindDocument(command);
  command.ExpectEnd();
  m_host.Close(document);
}

// insert PATH [at X Y Z]
void Session::Insert(Command& command) {
  const std::wstring path = command.Take(L"a path");
  const Point point = TakePoint(command);
  command.ExpectEnd();
  Document& assembly = ActiveDocument(command);
  if (assembly.Type() != swDocASSEMBLY) command.Fail(assembly.Describe() + L" is not an assembly");
  m_host.AddComponent(assembly, path, point);
}

// suppress NAME
void Session::Suppress(Command& command) {
  const auto component = TakeComponent(command);
  command.ExpectEnd();
  m_host.Suppress(ActiveDocument(command), *component);
}

// unsuppress NAME
void Session::Unsuppress(Command& command) {
  const auto component = TakeComponent(command);
  command.ExpectEnd();
  m_host.Resolve(ActiveDocument(command), *component);
}

// select component NAME | face | nothing [at X Y Z]
void Session::Select(Command& command) {
  Document& document = ActiveDocument(command);
  const std::wstring what = command.Take(L"what to select");
  if (what == L"nothing") {
    command.ExpectEnd();
    document.selection.clear();
    return;
  }
  Selection selection;
  if (what == L"component") {
    selection.component = TakeComponent(command);
  } else if (what != L"face") {
    command.Fail(L"\"" + what + L"\" cannot be selected; component NAME, face or nothing can");
  }
  selection.point = TakePoint(command);
  command.ExpectEnd();
  document.selection = {selection};
}

// property NAME = VALUE [text|number|date|yesno]
void Session::SetProperty(Command& command) {
  Document& document = ActiveDocument(command);
  const std::wstring name = command.Take(L"a property");
  if (!command.TakeIf(L"=")) command.Fail(L"= is missing");
  CustomProperty& property = PropertyNamed(document.model.properties, name);
  property.text = command.Take(L"a value");
  if (!command.AtEnd()) property.type = TakeType(command, kPropertyTypes);
  command.ExpectEnd();
  document.changed = true;
}

// remove property NAME
void Session::Remove(Command& command) {
  Document& document = ActiveDocument(command);
  if (!command.TakeIf(L"property")) command.Fail(L"\"remove\" needs \"property\"");
  const std::wstring name = command.Take(L"a property");
  command.ExpectEnd();
  const auto removed = std::erase_if(document.model.properties,
                                     [&](const CustomProperty& property) { return property.name == name; });
  if (removed == 0) command.Fail(document.Describe() + L" has no property \"" + name + L"\"");
  document.changed = true;
}

// quantity NAME = VALUE
void Session::SetQuantity(Command& command) {
  Document& document = ActiveDocument(command);
  const std::wstring name = command.Take(L"a quantity");
  if (!command.TakeIf(L"=")) command.Fail(L"= is missing");
  document.model.quantities[name] = command.Take(L"a value");
  command.ExpectEnd();
}

// fault TEXT
void Session::Fault(Command& command) { m_host.GetFaults().Add(command.TakeRest()); }

// quirk NAME on|off
void Session::SetQuirk(Command& command) {
  const Quirk quirk = Quirks::Named(command.Take(L"the name of a quirk"));
  const std::wstring state = command.Take(L"on or off");
  if (state != L"on" && state != L"off") command.Fail(L"\"" + state + L"\" is neither on nor off");
  command.ExpectEnd();
  m_host.GetQuirks().Set(quirk, state == L"on");
}

// quirks
void Session::ShowQuirks(Command& command) {
  command.ExpectEnd();
  for (const NamedQuirk& named : Quirks::All()) {
    Write(L"    " + std::wstring(named.name) + (m_host.GetQuirks().IsOn(named.quirk) ? L" on" : L" off"));
  }
}

// answer BUTTON [picture NAME]
void Session::Answer(Command& command) {
  const std::wstring button = command.Take(L"a button");
  const std::wstring picture = command.TakeIf(L"picture") ? command.Take(L"a name") : L"";
  command.ExpectEnd();
  if (!m_answers.Queue(button, picture))
    command.Fail(L"\"" + button + L"\" is not a button of a message box");
}

// picture NAME
void Session::TakePicture(Command& command) {
  const std::wstring name = command.Take(L"a name");
  command.ExpectEnd();
  if (m_onPicture) m_onPicture(name);
}

// properties
void Session::ShowProperties(Command& command) {
  command.ExpectEnd();
  const Document& document = ActiveDocument(command);
  for (const CustomProperty& property : document.model.properties) {
    Write(L"    " + property.name + L" = " + property.text);
  }
}

// components
void Session::ShowComponents(Command& command) {
  command.ExpectEnd();
  for (const auto& component : ActiveDocument(command).components) {
    Write(L"    " + component->record.name + L" " + component->record.path +
          (component->IsSuppressed() ? L" suppressed"
                                     : L" revision " + std::to_wstring(component->loaded_revision)));
  }
}

// items
void Session::ShowItems(Command& command) {
  command.ExpectEnd();
  AddIn& add_in = ConnectedAddIn(command);
  for (const auto& group : m_host.Groups()) {
    Write(L"    " + group->title);
    for (const CommandItem& item : group->items) {
      Write(L"      " + item.name + L" (" + item.callback + L")" +
            (m_host.IsEnabled(add_in, item.callback) ? L"" : L", greyed out"));
    }
  }
}

// tabs
void Session::ShowTabs(Command& command) {
  command.ExpectEnd();
  for (const auto& tab : m_host.Tabs()) {
    std::size_t commands = 0;
    for (const auto& box : tab->boxes) commands += box->commands.size();
    Write(L"    " + DocumentTypeName(tab->document_type) + L" tab \"" + tab->name + L"\", " +
          std::to_wstring(commands) + L" commands" + (tab->visible ? L"" : L", hidden"));
  }
}

// print TEXT
void Session::Print(Command& command) {
  Write((m_output == Output::kFull ? L"\n== " : L"== ") + command.TakeRest());
}

// expect ...
void Session::Expect(Command& command) {
  (this->*Find(Expectations(), command.Take(L"what to expect"), command))(command);
}

}  // namespace cad_host
