/// @file Values of the host's enumerations, under the host's own names.
#pragma once

/// Document types.
enum swDocumentTypes_e : long {
  swDocNONE = 0,
  swDocPART = 1,
  swDocASSEMBLY = 2,
  swDocDRAWING = 3,
};

/// Options of ISldWorks::OpenDoc6.
enum swOpenDocOptions_e : long {
  swOpenDocOptions_Silent = 1,
};

/// Error bits that ISldWorks::OpenDoc6 stores in its Errors argument.
enum swFileLoadError_e : long {
  swGenericError = 1,
  swFileNotFoundError = 2,
  swInvalidFileTypeError = 1024,
};

/// States of a component, as IComponent2::SetSuppression2 takes them.
enum swComponentSuppressionState_e : long {
  swComponentSuppressed = 0,
  swComponentLightweight = 1,
  swComponentFullyResolved = 2,
  swComponentResolved = 3,
};

/// How a command tab box shows a command's text.
enum swCommandTabButtonTextDisplay_e : long {
  swCommandTabButton_NoText = 1,
  swCommandTabButton_TextBelow = 2,
  swCommandTabButton_TextHorizontal = 4,
};

/// Types of a custom property.
enum swCustomInfoType_e : long {
  swCustomInfoNumber = 3,
  swCustomInfoYesOrNo = 11,
  swCustomInfoText = 30,
  swCustomInfoDate = 64,
};
