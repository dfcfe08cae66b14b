/// @file Registration scripts, in many ways of writing.
#pragma once

#include <string>
#include <vector>

#include "choices.h"
#include "registry_script/registry_script.h"

namespace fuzz {

/// A script, and what is read of it.
struct WrittenScript {
  std::wstring text;
  std::vector<registry_script::Root> roots;
  unsigned wrong_line = 0;  ///< the line of the one mistake in it; 0: there is none
};

/// %NAME% in a written script stands for the text of one of these.
const registry_script::Replacements& ScriptReplacements();

/// A script with the content, the writing and the mistake that the choices say.
WrittenScript WriteScript(Choices choices);

}  // namespace fuzz
