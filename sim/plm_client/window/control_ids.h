/// @file Numbers of the controls in a panel and in the main window. Tests find the controls by them.
#pragma once

#include <windows.h>

namespace plm_window {

/// The controls of a panel; Cancel has the system's IDCANCEL.
enum PanelControl : int {
  kFirstField = 200,  ///< in the order of the fields
  kFirstFieldLabel = 300,
  kFirstFieldButton = 350,  ///< beside a folder
  kRowList = 400,
  kDetailList = 401,
  kFirstAction = 500,  ///< in the order of the actions
  kMessage = 590,
  kRequestText = 600,
  kAnswerText = 601,
  kEditFirst = 602,
  kSend = 603,
  kFault = 604,
  kRequestLabel = 605,
  kAnswerLabel = 606,
  kTitleLabel = 607,
  kCommandLabel = 608,
  kAnswerPart = 609,
};

/// The controls of the main window.
enum MainControl : int {
  kSearch = 700,
  kItemList = 701,
  kLogList = 702,
  kStatus = 703,
  kItemsHeading = 704,
  kLogHeading = 705,
};

/// The items of the main window's menu.
enum MenuItem : int {
  kRefresh = 800,
  kExit = 801,
  kAbout = 802,
  kNextOnly = 803,
  kAlways = 804,
  kUnchecked = 805,
  kFirstFault = 810,  ///< in the order of the table of faults
};

}  // namespace plm_window
