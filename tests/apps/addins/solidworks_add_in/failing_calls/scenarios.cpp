#include "scenarios.h"

#include <ostream>

#include "base/com_pointers.h"
#include "result_codes.h"
#include "solidworks_add_in_h.h"

_COM_SMARTPTR_TYPEDEF(ISolidWorksAddIn, __uuidof(ISolidWorksAddIn));

namespace {

void LogIn(Stage& stage) {
  stage.BeLoggedIn();
  stage.PutModelsBack();
}

void OpenAnAssembly(Stage& stage) {
  LogIn(stage);
  stage.OpenAssembly();
}

void OpenAPart(Stage& stage) {
  LogIn(stage);
  stage.OpenPart();
}

void NameFile(Stage& stage, const char* member, const wchar_t* file) {
  const std::string answer = AnswerNaming(member, stage.ModelPath(file));
  for (const char* command :
       {"QD_PLMDataSelector", "QD_PLMQuery", "QD_PLMMyCheckOutList", "QD_PLMTaskManage"}) {
    stage.Answer(command, answer);
  }
}

void OfferToOpen(Stage& stage) {
  LogIn(stage);
  NameFile(stage, "OpenFile", L"download\\screw.sldprt");
}

HRESULT ReadTypeInformation(Stage& stage) {
  ITypeInfoPtr information;
  return stage.Object()->GetTypeInfo(0, LOCALE_NEUTRAL, &information);
}

/// Creates a bitmap handler as any client does, and calls it by name.
HRESULT MakeBitmapByName(Stage&) {
  constexpr long kToolbar = 254;
  IDispatchPtr handler;
  HRESULT result =
      CoCreateInstance(CLSID_BitmapHandler, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&handler));
  if (FAILED(result)) return result;
  wchar_t name[] = L"CreateBitmapFileFromResource";
  LPOLESTR names[] = {name};
  DISPID id = DISPID_UNKNOWN;
  result = handler->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id);
  if (FAILED(result)) return result;
  _variant_t resource(kToolbar);
  _variant_t path;
  DISPPARAMS parameters{&resource, nullptr, 1, 0};
  return handler->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, &path, nullptr, nullptr);
}

HRESULT ConnectToNothing(Stage&) {
  ISwAddinPtr add_in;
  const HRESULT result =
      CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in));
  if (FAILED(result)) return result;
  VARIANT_BOOL connected = VARIANT_FALSE;
  return add_in->ConnectToSW(nullptr, 1, &connected);
}

/// What is wrong here is logged, for which the log starts.
HRESULT CommandWithoutConnection(Stage&) {
  ISolidWorksAddInPtr add_in;
  const HRESULT result =
      CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in));
  if (FAILED(result)) return result;
  return add_in->PlmWf();
}

constexpr const char* kDone = R"({"__InvokeResult__":true})";

}  // namespace

void PrintTo(const Scenario& scenario, std::ostream* stream) { *stream << scenario.name; }

std::vector<Scenario> ConnectionScenarios() {
  return {
      {"Connect",
       [](Stage& stage) { stage.BeDisconnected(); },
       [](Stage& stage) { return stage.Connect(); },
       {L"connected", L"event sinks: 1", L"logged out"}},
      {"Disconnect",
       [](Stage& stage) {
         stage.BeDisconnected();
         stage.BeLoggedIn();
       },
       [](Stage& stage) { return stage.Disconnect(); },
       {L"asked: QD_PLMLogout ", L"not connected", L"event sinks: 0"}},
      {"Events",
       [](Stage& stage) {
         stage.BeDisconnected();
         stage.BeConnected();
       },
       [](Stage& stage) {
         stage.OpenPart();
         stage.PutModelsBack();
         return S_OK;
       },
       {L"connected"}},
      {.name = "ConnectToNothing",
       .prepare = [](Stage& stage) { stage.BeDisconnected(); },
       .run = ConnectToNothing,
       .effects = {L"not connected"},
       .result = E_POINTER},
      {"EnableMethods", LogIn, [](Stage& stage) { return stage.AskWhatIsEnabled(); }, {L"logged in"}},
  };
}

std::vector<Scenario> PanelScenarios() {
  const auto log_in = [](Stage& stage) { LogIn(stage); };
  return {
      {"PlmLogin",
       [](Stage& stage) { stage.BeLoggedOut(); },
       [](Stage& stage) { return stage.Pick(L"PlmLogin"); },
       {L"asked: QD_PLMLogin ", L"logged in"}},
      {.name = "PlmWfWhileLoggedOut",
       .prepare = [](Stage& stage) { stage.BeLoggedOut(); },
       .run = [](Stage& stage) { return stage.Call(L"PlmWf"); },
       .effects = {L"logged out"},
       .result = E_POINTER},
      {"PlmLogOut",
       log_in,
       [](Stage& stage) { return stage.Pick(L"PlmLogOut"); },
       {L"asked: QD_PLMLogout ", L"logged out"}},
      {"PlmWf",
       log_in,
       [](Stage& stage) { return stage.Pick(L"PlmWf"); },
       {LR"(asked: QD_PLMStartWF {"__InvokeResult__":true,"user":"王","id":7})"}},
      {"PlmCode",
       log_in,
       [](Stage& stage) { return stage.Pick(L"PlmCode"); },
       {LR"(asked: QD_PLMGetcode {"__InvokeResult__":true,"user":"王","id":7})"}},
      {"PlmMyTempMaterial",
       log_in,
       [](Stage& stage) { return stage.Pick(L"PlmMyTempMaterial"); },
       {L"asked: QD_PLMMyTempMaterial "}},
      {"PlmMyCheckOutList",
       OfferToOpen,
       [](Stage& stage) { return stage.Pick(L"PlmMyCheckOutList"); },
       {L"open: screw.sldprt, active"}},
      {"PlmTaskManage",
       OfferToOpen,
       [](Stage& stage) { return stage.Pick(L"PlmTaskManage"); },
       {L"open: screw.sldprt, active"}},
      {"PlmQuery",
       OfferToOpen,
       [](Stage& stage) { return stage.Pick(L"PlmQuery"); },
       {L"open: screw.sldprt, active"}},
      {"PlmLotimport",
       [](Stage& stage) {
         LogIn(stage);
         stage.Answer("QD_PLMLotimport", kDone);
       },
       [](Stage& stage) { return stage.Pick(L"PlmLotimport"); },
       {L"asked: QD_PLMLotimport "}},
  };
}

std::vector<Scenario> DocumentScenarios() {
  const auto select_data = [](Stage& stage) { return stage.Pick(L"OpenDataSelector"); };
  return {
      {"Open", OfferToOpen, select_data, {L"open: screw.sldprt, active"}},
      {"Insert",
       [](Stage& stage) {
         OpenAnAssembly(stage);
         NameFile(stage, "InsertFile", L"download\\screw.sldprt");
       },
       select_data,
       {L"component: download\\screw.sldprt, revision 2"}},
      {"Replace",
       [](Stage& stage) {
         OpenAnAssembly(stage);
         NameFile(stage, "ReplaceFile", L"download\\screw.sldprt");
       },
       select_data,
       {L"component: download\\screw.sldprt, revision 2"}},
      {"CoverByCopy",
       [](Stage& stage) {
         OpenAnAssembly(stage);
         NameFile(stage, "ReplaceFileByCovering", L"download\\screw.sldprt");
       },
       select_data,
       {L"component: parts\\screw.sldprt, revision 2",
        L"file: parts\\screw.sldprt is the first download\\screw.sldprt"}},
      {"CoverBySwap",
       [](Stage& stage) {
         LogIn(stage);
         stage.OpenAssembly(L"nut-1");
         NameFile(stage, "ReplaceFileByCovering", L"download\\nut.sldprt");
       },
       select_data,
       {L"component: parts\\nut.sldprt, revision 2",
        L"file: download\\temp\\nut.sldprt is the first parts\\nut.sldprt",
        L"file: parts\\nut.sldprt is the first download\\nut.sldprt"}},
      {"PlmImportCurrent",
       [](Stage& stage) {
         OpenAPart(stage);
         stage.Answer("QD_PLMImportCurrent", kDone);
       },
       [](Stage& stage) { return stage.Pick(L"PlmImportCurrent"); },
       {L"open: part.sldprt, active"}},
      {"PlmImportChangeItem",
       [](Stage& stage) {
         OpenAPart(stage);
         stage.Answer("QD_PLMCreateChangeItems", kDone);
       },
       [](Stage& stage) { return stage.Pick(L"PlmImportChangeItem"); },
       {L"open: part.sldprt, active"}},
  };
}

std::vector<Scenario> PropertyScenarios() {
  const auto prepare = [](Stage& stage) {
    OpenAPart(stage);
    stage.Answer("QD_PLMCreateMaterial", R"({"data":{"no":"M-1"}})");
    stage.Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x","C":"z"}})");
  };
  return {
      {"PlmCreateMaterial",
       prepare,
       [](Stage& stage) { return stage.Pick(L"PlmCreateMaterial"); },
       {LR"(asked: QD_PLMCreateMaterial {"extract_info":{"A":"1","B":"2","C":"3"}})",
        LR"(asked: QD_PLMMaterialBackFill {"backfill_info_from_create_material":{"no":"M-1"}})",
        L"property: A=x", L"property: B=2", L"property: C=z"}},
      {"PlmMaterialBackFill",
       prepare,
       [](Stage& stage) { return stage.Pick(L"PlmMaterialBackFill"); },
       {L"property: A=x", L"property: B=2", L"property: C=z"}},
  };
}

std::vector<Scenario> ServiceScenarios() {
  return {
      {.name = "FirstLogLine",
       .prepare = [](Stage& stage) { stage.Reload(); },
       .run = CommandWithoutConnection,
       .effects = {L"not connected"},
       .result = E_POINTER,
       .runs_per_check = 10},
      {"ReadTypeInformation", LogIn, ReadTypeInformation, {L"logged in"}},
      {"MakeBitmapByName", LogIn, MakeBitmapByName, {L"logged in"}},
      {.name = "UnreachableClient",
       .prepare =
           [](Stage& stage) {
             stage.BeConnected();
             stage.UsePipe(false);
           },
       .run = [](Stage& stage) { return stage.Pick(L"PlmLogin"); },
       .effects = {L"logged out"},
       .result = hr::kNoAnswer},
      // Without arguments this program of the system ends at once.
      {.name = "ClientThatEnds",
       .prepare =
           [](Stage& stage) {
             stage.BeConnected();
             stage.UseClientProgram(LR"(%SystemRoot%\system32\rundll32.exe)");
           },
       .run = [](Stage& stage) { return stage.Pick(L"PlmLogin"); },
       .effects = {L"logged out"},
       .result = hr::kNoAnswer,
       .runs_per_check = 10},
  };
}

std::vector<Scenario> AllScenarios() {
  std::vector<Scenario> all;
  for (const auto& some : {ConnectionScenarios(), PanelScenarios(), DocumentScenarios(), PropertyScenarios(),
                           ServiceScenarios()}) {
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}
