/// @file Checking the owner of the pipe.
#pragma once

#include <windows.h>

#include <string>

namespace invoker {

/// The user of this process as "S-1-5-...".
/// @throws NoAnswer if it cannot be determined.
std::wstring UserSidText();

/// Whether a process of `user` may use a pipe of `owner`. `default_owner` is the owner of the process's new
/// objects. An object without an owner does not belong to another account, so it is trusted.
bool IsTrustedOwner(PSID owner, PSID user, PSID default_owner);

/// @throws NoAnswer if the pipe belongs to another user, or its owner cannot be determined.
void CheckPipeOwner(HANDLE pipe);

}  // namespace invoker
