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

  /// The text for `code`: the platform's own codes by table, others from the system.
  ZALErrorMsg GetErrorMsg(long code) const;
};
