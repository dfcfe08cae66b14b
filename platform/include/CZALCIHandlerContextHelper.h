/// @file Texts for result codes.
#pragma once

#include <string>

/// A result code with its text for the user.
struct ZALErrorMsg {
  long code = 0;
  std::wstring text;
};

class CZALCIHandlerContextHelper {
 public:
  static CZALCIHandlerContextHelper& Instance();

  /// The text for `code`: from a table for the platform's own codes, from the system for all others.
  ZALErrorMsg GetErrorMsg(long code) const;
};
