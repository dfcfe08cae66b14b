#include "actions.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace {

// Even revisions are those of downloads, odd ones those of components' files.
long RevisionOfDownload(const Turn& turn) { return 2L * turn.number; }
long RevisionOfPart(const Turn& turn) { return 2L * turn.number + 1; }

std::wstring Value(const Turn& turn) { return L"value " + std::to_wstring(turn.number); }

std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

void LogIn(const Turn& turn) {
  turn.scene.LogIn();
  turn.scene.CloseDocuments();
}

std::function<HRESULT(const Turn&)> Pick(const wchar_t* callback) {
  return [callback](const Turn& turn) { return turn.scene.Pick(callback); };
}

/// The data selector and the search give the same answers.
HRESULT Choose(const Turn& turn) {
  return turn.scene.Pick(turn.number % 2 ? L"OpenDataSelector" : L"PlmQuery");
}

/// A command that only asks the PLM client, of which the host sees nothing.
Action Ask(const char* name, const wchar_t* callback, const char* command, const char* answer) {
  // The size of the client's record before the command; the actions are used on one thread.
  const auto before = std::make_shared<long long>(0);
  return {name,
          [=](const Turn& turn) {
            LogIn(turn);
            turn.scene.GetHost().Open(turn.scene.ModelPath(L"part.sldprt"));
            turn.scene.Answer(command, answer);
            *before = turn.scene.Client().RecordSize();
          },
          Pick(callback), [=](const Turn& turn) { return turn.scene.Client().RecordSize() > *before; }};
}

Action Open(const char* name, std::function<HRESULT(const Turn&)> run) {
  return {name,
          [](const Turn& turn) {
            LogIn(turn);
            turn.scene.AnswerWithFile("OpenFile", L"download\\screw.sldprt");
          },
          std::move(run),
          [](const Turn& turn) {
            const auto active = turn.scene.GetHost().ActiveDocument();
            return active && active->path == turn.scene.ModelPath(L"download\\screw.sldprt");
          }};
}

constexpr const wchar_t* kAskToExtract =
    L"Extract properties: Whether to extract the current drawing attribute information to populate the page?";
constexpr const wchar_t* kAskToBackFill =
    L"Backfill Properties: Whether to backfill the created material property information into the drawing?";
constexpr const wchar_t* kBackFilled = L"Backfill Properties: Backfill Properties Completed";

/// A command that changes the properties of the active document.
Action ChangeProperties(const char* name, const wchar_t* callback, Texts boxes, std::string logged) {
  return {.name = name,
          .prepare =
              [](const Turn& turn) {
                LogIn(turn);
                turn.scene.GetHost().Open(turn.scene.ModelPath(L"part.sldprt"));
                turn.scene.Answer("QD_PLMCreateMaterial", R"({"data":{"no":"M-1"}})");
                turn.scene.Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":")" +
                                                                Narrow(Value(turn)) + R"("}})");
              },
          .run = Pick(callback),
          .is_done =
              [](const Turn& turn) {
                const auto document = turn.scene.GetHost().ActiveDocument();
                const auto& properties = document->model.properties;
                return std::ranges::any_of(properties, [&](const auto& property) {
                  return property.name == L"A" && property.text == Value(turn);
                });
              },
          .boxes = std::move(boxes),
          .logged = std::move(logged)};
}

/// Whether the assembly has a component with this file, loaded from what is there now.
bool ShowsComponent(const Turn& turn, const std::wstring& name) {
  const auto assembly = turn.scene.GetHost().ActiveDocument();
  return std::ranges::any_of(assembly->components, [&](const auto& component) {
    return component->record.path == turn.scene.ModelPath(name) && !component->IsSuppressed() &&
           component->loaded_revision == turn.scene.RevisionOf(name);
  });
}

/// Whether the download and what it may replace are whole somewhere.
bool KeepsFiles(const Turn& turn) {
  const auto has = [&turn](const wchar_t* name, long revision) {
    return turn.scene.RevisionOf(name) == revision;
  };
  const long download = RevisionOfDownload(turn);
  const long part = RevisionOfPart(turn);
  return (has(L"download\\nut.sldprt", download) || has(L"download\\screw.sldprt", download)) &&
         (has(L"parts\\nut.sldprt", part) || has(L"download\\temp\\nut.sldprt", part));
}

/// A command that brings the file `download` into the assembly, where its component has the file `placed`.
Action Place(const char* name, const char* member, const wchar_t* selected, const wchar_t* download,
             const wchar_t* placed) {
  return {name,
          [=](const Turn& turn) {
            LogIn(turn);
            turn.scene.RemoveFile(L"parts\\screw.sldprt");
            turn.scene.WritePart(L"parts\\nut.sldprt", RevisionOfPart(turn));
            turn.scene.WritePart(download, RevisionOfDownload(turn));
            turn.scene.OpenAssembly(selected);
            turn.scene.AnswerWithFile(member, download);
          },
          Choose,
          [=](const Turn& turn) {
            return ShowsComponent(turn, placed) && turn.scene.RevisionOf(placed) == RevisionOfDownload(turn);
          },
          KeepsFiles};
}

HRESULT AskWhatIsEnabled(const Turn& turn) {
  long enabled = 0;
  const auto& items = turn.scene.GetHost().Groups().at(0)->items;
  for (const auto& item : items) enabled += turn.scene.IsEnabled(item.callback) ? 1 : 0;
  return enabled == static_cast<long>(items.size()) - 1 ? S_OK : E_FAIL;  // all but the login
}

HRESULT UseDocuments(const Turn& turn) {
  cad_host::Host& host = turn.scene.GetHost();
  const auto part = host.Open(turn.scene.ModelPath(L"part.sldprt"));
  host.New(swDocASSEMBLY);
  host.Activate(part);
  host.Save(*part);
  host.New(swDocDRAWING);
  turn.scene.CloseDocuments();
  return S_OK;
}

}  // namespace

std::vector<Action> AllActions() {
  constexpr const char* kDone = R"({"__InvokeResult__":true})";
  return {
      {"PlmLogin",
       [](const Turn& turn) {
         turn.scene.CloseDocuments();
         turn.scene.LogOut();
       },
       Pick(L"PlmLogin"), [](const Turn& turn) { return turn.scene.IsLoggedIn(); }},
      {"PlmLogOut", LogIn, Pick(L"PlmLogOut"), [](const Turn& turn) { return !turn.scene.IsLoggedIn(); }},
      Open("Open", Choose),
      Open("PlmMyCheckOutList", Pick(L"PlmMyCheckOutList")),
      Open("PlmTaskManage", Pick(L"PlmTaskManage")),
      Place("Insert", "InsertFile", L"bolt-1", L"download\\screw.sldprt", L"download\\screw.sldprt"),
      Place("Replace", "ReplaceFile", L"bolt-1", L"download\\screw.sldprt", L"download\\screw.sldprt"),
      Place("CoverByCopy", "ReplaceFileByCovering", L"bolt-1", L"download\\screw.sldprt",
            L"parts\\screw.sldprt"),
      Place("CoverBySwap", "ReplaceFileByCovering", L"nut-1", L"download\\nut.sldprt", L"parts\\nut.sldprt"),
      Ask("OpenDataSelector, closed", L"OpenDataSelector", "QD_PLMDataSelector", ""),
      Ask("PlmQuery, closed", L"PlmQuery", "QD_PLMQuery", ""),
      Ask("PlmWf", L"PlmWf", "QD_PLMStartWF", ""),
      Ask("PlmCode", L"PlmCode", "QD_PLMGetcode", ""),
      Ask("PlmMyTempMaterial", L"PlmMyTempMaterial", "QD_PLMMyTempMaterial", ""),
      Ask("PlmLotimport", L"PlmLotimport", "QD_PLMLotimport", kDone),
      Ask("PlmImportCurrent", L"PlmImportCurrent", "QD_PLMImportCurrent", kDone),
      Ask("PlmImportChangeItem", L"PlmImportChangeItem", "QD_PLMCreateChangeItems", kDone),
      ChangeProperties("PlmCreateMaterial", L"PlmCreateMaterial",
                       {kAskToExtract, kAskToBackFill, kBackFilled},
                       "AttributesBackFill failed<hr=0x0>"),  // logged whatever came of it
      ChangeProperties("PlmMaterialBackFill", L"PlmMaterialBackFill", {kBackFilled}, {}),
      {"EnableMethods", LogIn, AskWhatIsEnabled, [](const Turn& turn) { return turn.scene.IsLoggedIn(); }},
      {"Documents", LogIn, UseDocuments,
       [](const Turn& turn) { return turn.scene.GetHost().OpenDocuments().empty(); }},
  };
}

void MakeModels(Scene& scene) {
  const auto write = [&scene](const wchar_t* name, cad_host::ModelFile model) {
    model.type = cad_host::DocumentTypeOfName(name);
    cad_host::WriteModelFile(scene.ModelPath(name), model);
  };
  cad_host::ModelFile part;
  part.properties = {{.name = L"A", .text = L"1"}, {.name = L"B", .text = L"2"}};
  write(L"part.sldprt", part);
  cad_host::ModelFile assembly;
  assembly.components = {{L"bolt-1", scene.ModelPath(L"parts\\bolt.sldprt"), {1, 0, 0}},
                         {L"nut-1", scene.ModelPath(L"parts\\nut.sldprt"), {}}};
  write(L"top.sldasm", assembly);
  const Turn first{scene};
  scene.WritePart(L"parts\\bolt.sldprt", RevisionOfPart(first));
  scene.WritePart(L"parts\\nut.sldprt", RevisionOfPart(first));
  scene.WritePart(L"download\\screw.sldprt", RevisionOfDownload(first));
}
