/// @file Checking the owner of the pipe.
#pragma once

#include <windows.h>

#include <string>

namespace invoker {

/// The user of this process as "S-1-5-...".
/// @throws NoAnswer if it cannot be determined.
std::wstring UserSidText();

/// Whether a process of `user` may use a pipe of `owner`. `default_owner` is the owner of the process's new
/// objects. A null `owner` is trusted: Wine reports it for each pipe that was made without a security
/// descriptor (measured with GetSecurityInfo, Wine 8), and Windows gives every pipe an owner.
bool IsTrustedOwner(PSID owner, PSID user, PSID default_owner);

/// @throws ClientNotReached if the pipe belongs to another user; NoAnswer if its owner cannot be determined
/// or the client has closed the pipe.
void CheckPipeOwner(HANDLE pipe);

/// @throws ClientNotReached if the system reports that the pipe's server is in another terminal session.
void CheckPipeSession(HANDLE pipe);

}  // namespace invoker
