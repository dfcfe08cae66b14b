/// @file The arguments of the program.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "cad_host/host.h"
#include "window/dpi.h"
#include "window/texts.h"

namespace cad_host {

struct WindowOptions {
  HostOptions host;
  std::wstring connect;   ///< title or class id; empty: the add-ins that load at the start
  std::wstring script;    ///< file to play; empty: none
  unsigned step_ms = 0;   ///< between two lines of the script
  bool stay = false;      ///< the window stays open after the script
  std::wstring record;    ///< file to record into; empty: none
  std::wstring journal;   ///< file for the whole journal; empty: none
  std::wstring pictures;  ///< folder of the pictures that the script wants; empty: none are taken
  LANGID language = window::kEnglish;
  SIZE size{};  ///< of the window; 0: chosen by the window
  int dpi = 0;  ///< 0: that of the display
  bool help = false;
};

/// What `--help` shows.
extern const char* const kWindowUsage;

/// Reads the arguments, without the name of the program.
/// @throws HostError naming the argument that is unknown, lacks its value or has a wrong one.
WindowOptions ParseOptions(const std::vector<std::wstring>& words);

}  // namespace cad_host
