/// @file The names of the add-in's methods, as its interface definition and its documents give them.
#pragma once

#include <ostream>
#include <set>
#include <string>

/// The names that View.json may give.
struct MethodNames {
  std::set<std::string> commands;
  std::set<std::string> enable_methods;

  bool operator==(const MethodNames&) const = default;
};

/// For the messages of tests.
void PrintTo(const MethodNames& names, std::ostream* stream);

/// Those of the interface definition.
MethodNames DefinedMethods();

/// Those of the table in docs/view-json.md.
MethodNames DocumentedMethods();
