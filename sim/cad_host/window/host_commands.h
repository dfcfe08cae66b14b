/// @file What the host's own commands do.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "pane.h"
#include "pick_point.h"
#include "property_table.h"

namespace cad_host {

/// What the commands need of the main window.
struct CommandSurroundings {
  HWND owner = nullptr;  ///< of dialogs
  const PickPoint* pick_point = nullptr;
  PropertyTable* properties = nullptr;
  std::function<void()> update;                               ///< asks all enable methods again
  std::function<void(const std::wstring& path)> play_script;  ///< plays a session script
};

class HostCommands {
 public:
  explicit HostCommands(const Desk& desk) : m_desk(desk) {}

  /// Must be called before a command runs.
  void Use(CommandSurroundings surroundings) { m_surroundings = std::move(surroundings); }

  /// Whether this is the number of a command of the host, or of an entry in the menu of add-ins or of quirks.
  bool Knows(UINT id) const;

  ItemState StateOf(UINT id) const;

  /// Runs the command, if it is enabled; it may ask the person first.
  /// @throws HostError with the reason if it fails.
  void Run(UINT id);

  /// Closes the document; if it has been changed the person may save it first.
  /// @return false if the person cancels.
  bool Close(const std::shared_ptr<Document>& document);

  /// Lets the person save the documents that have been changed. @return false if the person cancels.
  bool OfferToSave();

 private:
  bool IsEnabled(UINT id) const;
  bool IsConnected(const AddInEntry& entry) const;
  void RunFile(UINT id);
  void RunTool(UINT id);
  void Toggle(const AddInEntry& entry);
  void Toggle(const NamedQuirk& quirk);
  void Open();
  void Insert();
  bool Save(const Document& document);
  bool SaveAs(const Document& document);
  bool OfferToSave(const Document& document);
  void About() const;

  const Desk& m_desk;
  CommandSurroundings m_surroundings;
};

}  // namespace cad_host
