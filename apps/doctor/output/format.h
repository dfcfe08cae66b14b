/// @file The findings as text and as JSON.
#pragma once

#include <string>

#include "report.h"

namespace doctor {

/// One line for each finding, below the name of its area; the advice below a finding; a summary at the end.
std::wstring FormatText(const Report& report);

/// One object:
///
///     {"program":"tavo_doctor","version":"1.5.0","failures":0,"warnings":0,
///      "checks":[{"id":"host.key","area":"host","status":"ok","text":"...","advice":""}]}
std::string FormatJson(const Report& report);

}  // namespace doctor
