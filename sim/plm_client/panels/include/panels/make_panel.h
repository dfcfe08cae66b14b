/// @file The panel for a command.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "panels/panel.h"

namespace plm_panels {

/// The panel for `command` with the request's JSON text, UTF-8. A command that is unknown gets a panel
/// without actions. The user is the one whose log-in comes back in the request; else the one who is logged
/// in; else the one of `context`.
std::unique_ptr<Panel> MakePanel(const std::string& command, std::string_view request, PanelContext context);

}  // namespace plm_panels
