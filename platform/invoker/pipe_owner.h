/// @file Checking the owner of the pipe.
#pragma once

#include <windows.h>

#include <string>

namespace invoker {

/// The user of this process as "S-1-5-...".
/// @throws NoAnswer if it cannot be determined.
std::wstring UserSidText();

/// The name of the pipe of this process's user where none is configured, without `\\.\pipe\`.
/// @throws NoAnswer if the user cannot be determined.
std::wstring DefaultPipe();

/// Whether a process of `user` may use a pipe of `owner`, null if the system does not know it.
/// `default_owner` is the owner of the process's new objects.
bool IsTrustedOwner(PSID owner, PSID user, PSID default_owner);

/// Checks that the pipe belongs to the user of this process. A pipe without an owner is allowed only where
/// the system gives new pipes of this process no owner either.
/// @throws ClientNotReached if the pipe belongs to another user or its owner is not known; NoAnswer if the
/// system refuses to report the owner or the client has closed the pipe.
void CheckPipeOwner(HANDLE pipe);

/// @throws ClientNotReached if the system reports that the pipe's server is in another terminal session.
void CheckPipeSession(HANDLE pipe);

}  // namespace invoker
