#pragma once

#include "model/definition_document.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace Bench {

/// The size of a synthetic document.
struct DocumentShape {
    int blockLayouts = 2000;
    int fieldsPerBlock = 50;
    int stylesPerBlock = 5;
    int rowTypesPerBlock = 2;
    int borderLayouts = 500;
    int sizesPerBorder = 8;
    int blockLocations = 5000;
    int translations = 20000;
};

/// A document of that shape with realistic texts; `prefix` makes its IDs differ from those of
/// other generated documents.
boost::shared_ptr<QorBorder::DefinitionDocument> generateDocument(const DocumentShape& shape,
                                                                  const std::string& prefix);

} // namespace Bench
