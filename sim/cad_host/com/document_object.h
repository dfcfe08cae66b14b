/// @file The COM object of an open document.
#pragma once

#include <memory>

#include "cad_host/document.h"
#include "host/model_doc.h"
#include "services.h"

namespace cad_host {

/// The document's object, with a reference for the caller. An assembly also implements IAssemblyDoc, a
/// drawing IDrawingDoc.
IModelDoc2* ServeDocument(const std::shared_ptr<Services>& services,
                          const std::shared_ptr<Document>& document);

}  // namespace cad_host
