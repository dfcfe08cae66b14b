/// @file Values of the vault in the person's language.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "panels/panel.h"

namespace plm_panels {

std::wstring TextOf(const TextSource& text, plm_vault::ItemKind kind);
std::wstring TextOf(const TextSource& text, plm_vault::ItemState state);
std::wstring TextOf(const TextSource& text, plm_vault::TaskState state);

/// The workflows, "release" first.
std::vector<Choice> WorkflowChoices(const TextSource& text);

/// The users with their full names.
std::vector<Choice> UserChoices(const plm_vault::Vault& vault);

/// `pattern` with `value` in the place of "%1".
std::wstring Filled(std::wstring pattern, std::wstring_view value);

/// The texts with a comma and a blank between them.
std::wstring Joined(const std::vector<std::wstring>& texts);

}  // namespace plm_panels
