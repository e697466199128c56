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
    /// Joins the stems and numbers of IDs ("BLOCK_00042"). A site that lint should find clean
    /// uses another: lint refuses "_" in block and field IDs, which split translation keys.
    std::string idSeparator = "_";
    /// The blocks every border requires besides one of the document's own.
    std::string revisionBlock = "REVISION";
    std::string partsListBlock = "PARTS_LIST";
};

/// A document of that shape with realistic texts; `prefix` makes its IDs differ from those of
/// other generated documents.
boost::shared_ptr<QorBorder::DefinitionDocument> generateDocument(const DocumentShape& shape,
                                                                  const std::string& prefix);

} // namespace Bench
