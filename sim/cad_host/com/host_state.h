/// @file The state of a session of the host.
#pragma once

#include <cwchar>
#include <memory>
#include <string>
#include <utility>

#include "add_ins.h"
#include "com_apartment.h"
#include "commands/command_interface.h"
#include "document_notifications.h"
#include "documents/documents.h"
#include "event_source.h"
#include "services.h"
#include "type_library.h"

namespace cad_host {

struct HostState : std::enable_shared_from_this<HostState> {
  /// @param serve returns the COM object of a document, for the events of new documents.
  HostState(const std::wstring& state_folder, std::wstring revision_number, DocumentServer serve)
      : revision(std::move(revision_number)),
        services(std::make_shared<Services>()),
        type_library(static_cast<WORD>(std::wcstoul(revision.c_str(), nullptr, 10))),
        events(services->journal),
        notifications(services, events, std::move(serve)),
        documents(services->journal, services->quirks, notifications),
        commands(state_folder),
        add_ins(services) {}

  ComApartment apartment;
  std::wstring revision;
  std::shared_ptr<Services> services;
  TypeLibraryRegistration type_library;
  ApplicationEvents events;
  DocumentNotifications notifications;
  Documents documents;
  CommandInterface commands;
  AddIns add_ins;
};

}  // namespace cad_host
