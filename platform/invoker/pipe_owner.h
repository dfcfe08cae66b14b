/// @file Whose pipe it is.
#pragma once

#include <windows.h>

#include <string>

namespace invoker {

/// The user of this process as "S-1-5-...".
/// @throws NoAnswer where the system does not tell.
std::wstring UserSidText();

/// Whether a pipe of `owner` may be talked to by a process of `user` whose new objects belong to
/// `defaultOwner`. An object without an owner is one that no other account has made its own.
bool IsTrustedOwner(PSID owner, PSID user, PSID default_owner);

/// @throws NoAnswer where the pipe belongs to another than the user of this process, or to nobody who can
///         be found out.
void CheckPipeOwner(HANDLE pipe);

}  // namespace invoker
