/// @file Numbers of the panes and of their controls. They are stable: programs that operate the window find
/// the controls by them.
#pragma once

namespace cad_host {

enum ControlId {
  kCommandBar = 1000,
  kDocumentTabs,
  kComponentTree,
  kPickPoint,
  kModelView,
  kPropertyTable,
  kJournalPane,
  kStatusBar,

  kHostToolbar = 1100,
  kRibbonTabs,
  kRibbon,
  kTabs = 1120,
  kTreeList = 1130,
  kPointX = 1140,
  kPointY,
  kPointZ,
  kSelectionText,
  kSelectFace,
  kPropertyList = 1150,
  kAddProperty,
  kChangeProperty,
  kDeleteProperty,
  kJournalList = 1160,
  kJournalFilter,
  kJournalKind,
  kJournalClear,
  kJournalCopy,
  kJournalLabel,
};

}  // namespace cad_host
