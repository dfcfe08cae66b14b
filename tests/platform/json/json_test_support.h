/// @file What the tests of JSON share.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "CJsonObject.h"

/// An object made from `text`, which must be well-formed.
inline CJsonObject::Pointer Parse(const std::wstring& text) {
  auto json = std::make_shared<CJsonObject>();
  EXPECT_TRUE(json->CreateFrom(text)) << testing::PrintToString(text);
  return json;
}

/// The exception that leaves `call`; a failed test where there is none.
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

/// That `call` throws a CZALException of exactly this code and message.
template <typename Call>
void ExpectException(long code, const std::wstring& message, Call&& call) {
  const CZALException exception = ExceptionOf(call);
  EXPECT_EQ(exception.GetErrorCode(), code);
  EXPECT_EQ(exception.GetErrorMessage(), message);
}

inline constexpr long kMemberMissing = static_cast<long>(0xA3013000);
inline constexpr long kWrongType = static_cast<long>(0xA3013001);
