/// @file The platform's result codes.
#pragma once

#include <windows.h>

/// The codes as numbers of the tests' own: a wrong number in the product makes tests fail.
namespace hr {
inline constexpr auto kDownloadMissing = static_cast<HRESULT>(0xA3012003);
inline constexpr auto kCopyFailed = static_cast<HRESULT>(0xA3012005);
inline constexpr auto kMoveToBackupFailed = static_cast<HRESULT>(0xA3012006);
inline constexpr auto kBackupFolderNotMade = static_cast<HRESULT>(0xA3012012);
inline constexpr auto kJsonMemberMissing = static_cast<HRESULT>(0xA3013000);
inline constexpr auto kJsonWrongType = static_cast<HRESULT>(0xA3013001);
inline constexpr auto kNoAnswer = static_cast<HRESULT>(0xA3013005);
}  // namespace hr
