/// @file Helpers of the tests of JSON.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "CJsonObject.h"

/// Parses `text`, which must be well-formed.
inline CJsonObject::Pointer Parse(const std::wstring& text) {
  auto json = std::make_shared<CJsonObject>();
  EXPECT_TRUE(json->CreateFrom(text)) << testing::PrintToString(text);
  return json;
}

/// Returns the exception that `call` throws. The test fails if it throws nothing.
template <typename Call>
CZALException ExceptionOf(Call&& call) {
  try {
    call();
  } catch (const CZALException& exception) {
    return exception;
  }
  ADD_FAILURE() << "no exception";
  return {0, L""};
}

/// Expects that `call` throws a CZALException with exactly this code and message.
template <typename Call>
void ExpectException(long code, const std::wstring& message, Call&& call) {
  const CZALException exception = ExceptionOf(call);
  EXPECT_EQ(exception.GetErrorCode(), code);
  EXPECT_EQ(exception.GetErrorMessage(), message);
}

inline constexpr long kMemberMissing = static_cast<long>(0xA3013000);
inline constexpr long kWrongType = static_cast<long>(0xA3013001);
