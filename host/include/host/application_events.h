/// @file The host's application events: a dispinterface that a sink implements.
#pragma once

#include "host/interfaces_fwd.h"

namespace host {

/// The host's type library; its major version is the host's major version.
inline constexpr GUID kTypeLibraryId = {
    0x83a33d31, 0x27c5, 0x11ce, {0xbf, 0xd4, 0x00, 0x40, 0x05, 0x13, 0xbb, 0x57}};

/// The application event interface.
inline constexpr GUID kApplicationEventsId = {
    0x83a33d22, 0x37c5, 0x11ce, {0xbf, 0xd4, 0x00, 0x40, 0x05, 0x13, 0xbb, 0x57}};

/// Dispatch ids of the application events that programs of this project raise or handle.
namespace application_event {
inline constexpr DISPID kActiveDocChange = 4;
inline constexpr DISPID kActiveModelDocChange = 5;
inline constexpr DISPID kDocumentLoad = 11;
inline constexpr DISPID kFileNew2 = 12;
inline constexpr DISPID kFileOpenPost = 22;
inline constexpr DISPID kFileClose = 32;
}  // namespace application_event

}  // namespace host
