/// @file What the person, the host and the PLM client do in a soak, with what must come of it.
#pragma once

#include <functional>
#include <vector>

#include "scene.h"

/// One command or event among many.
struct Turn {
  Scene& scene;
  int number = 0;  ///< another one each time; contents and values are made of it
};

/// Something that is done again and again.
struct Action {
  const char* name;
  /// Makes everything as it must be to succeed. Needs the PLM client.
  std::function<void(const Turn&)> prepare;
  /// @return the HRESULT that the host gets.
  std::function<HRESULT(const Turn&)> run;
  /// Whether it has had its effect.
  std::function<bool(const Turn&)> is_done;
  /// Whether no content of a file is lost, whatever came of it.
  std::function<bool(const Turn&)> keeps_files = [](const Turn&) { return true; };
  /// The message boxes that it shows, and a part of the one line that it logs; empty if it logs none.
  Texts boxes = {};
  std::string logged = {};
};

/// The fourteen commands with each kind of answer that they act on, the enable methods, and documents opened
/// and closed by the person, of which the add-in gets events.
std::vector<Action> AllActions();

/// Writes the files that the actions work on.
void MakeModels(Scene& scene);
