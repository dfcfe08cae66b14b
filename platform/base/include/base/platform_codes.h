/// @file The platform's own result codes: HRESULTs with the customer bit set, so they begin with 0xA3.
#pragma once

namespace platform_code {
inline constexpr long kDownloadMissing = static_cast<long>(0xA3012003);
inline constexpr long kCopyFailed = static_cast<long>(0xA3012005);
inline constexpr long kMoveToBackupFailed = static_cast<long>(0xA3012006);
inline constexpr long kBackupFolderNotMade = static_cast<long>(0xA3012012);
inline constexpr long kJsonMemberMissing = static_cast<long>(0xA3013000);
inline constexpr long kJsonWrongType = static_cast<long>(0xA3013001);
inline constexpr long kNoAnswer = static_cast<long>(0xA3013005);
inline constexpr long kBackupFolderInvalid = static_cast<long>(0xA3017001);
}  // namespace platform_code
