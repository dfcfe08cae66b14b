#include "panels/make_panel.h"

#include <map>

#include "back_fill_panel.h"
#include "check_out_list_panel.h"
#include "code_panel.h"
#include "create_material_panel.h"
#include "import_panel.h"
#include "log_in_panel.h"
#include "lot_import_panel.h"
#include "panels/text_ids.h"
#include "request_content.h"
#include "selector_panel.h"
#include "start_workflow_panel.h"
#include "tasks_panel.h"
#include "temporary_materials_panel.h"

namespace plm_panels {
namespace {

/// A command that this client does not know: the person can write an answer, or none.
class OtherPanel : public Panel {
 public:
  using Panel::Panel;
  unsigned Title() const override { return IDS_COMMAND_OTHER; }
  std::vector<Action> Actions() const override { return {}; }
  std::wstring Preview(const std::wstring&) const override { return {}; }
};

using Maker = std::unique_ptr<Panel> (*)(PanelContext, const RequestContent&);

template <class Kind>
std::unique_ptr<Panel> Make(PanelContext context, const RequestContent&) {
  return std::make_unique<Kind>(std::move(context));
}

template <unsigned Title>
std::unique_ptr<Panel> MakeSelector(PanelContext context, const RequestContent&) {
  return std::make_unique<SelectorPanel>(std::move(context), Title);
}

template <ImportPanel::Kind Kind>
std::unique_ptr<Panel> MakeImport(PanelContext context, const RequestContent& request) {
  return std::make_unique<ImportPanel>(std::move(context), Kind, request.file_path);
}

std::unique_ptr<Panel> MakeCreateMaterial(PanelContext context, const RequestContent& request) {
  return std::make_unique<CreateMaterialPanel>(std::move(context), request.extract_info);
}

std::unique_ptr<Panel> MakeBackFill(PanelContext context, const RequestContent& request) {
  return std::make_unique<BackFillPanel>(std::move(context), request.created_material);
}

Maker MakerFor(const std::string& command) {
  static const std::map<std::string, Maker> makers = {
      {"QD_PLMLogin", Make<LogInPanel>},
      {"QD_PLMLogout", Make<LogOutPanel>},
      {"QD_PLMDataSelector", MakeSelector<IDS_COMMAND_DATA_SELECTOR>},
      {"QD_PLMQuery", MakeSelector<IDS_COMMAND_QUERY>},
      {"QD_PLMMyCheckOutList", Make<CheckOutListPanel>},
      {"QD_PLMTaskManage", Make<TasksPanel>},
      {"QD_PLMStartWF", Make<StartWorkflowPanel>},
      {"QD_PLMGetcode", Make<CodePanel>},
      {"QD_PLMMyTempMaterial", Make<TemporaryMaterialsPanel>},
      {"QD_PLMImportCurrent", MakeImport<ImportPanel::Kind::kImport>},
      {"QD_PLMCreateChangeItems", MakeImport<ImportPanel::Kind::kChange>},
      {"QD_PLMLotimport", Make<LotImportPanel>},
      {"QD_PLMCreateMaterial", MakeCreateMaterial},
      {"QD_PLMMaterialBackFill", MakeBackFill},
  };
  const auto maker = makers.find(command);
  return maker == makers.end() ? Make<OtherPanel> : maker->second;
}

}  // namespace

std::unique_ptr<Panel> MakePanel(const std::string& command, std::string_view request, PanelContext context) {
  const RequestContent content = ReadRequestContent(request);
  const std::wstring user = context.vault.UserOfToken(content.token);
  if (!user.empty()) {
    context.user = user;
  } else if (!context.session.user.empty()) {
    context.user = context.session.user;
  }
  return MakerFor(command)(std::move(context), content);
}

}  // namespace plm_panels
