#pragma once

#include "model/definition_document.h"
#include "model/source_lines.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <string>

namespace QorBorder {

/// Reads documents in the .fordef format, version 1. Every failure throws DocumentError with the
/// file, the line (0 when none applies) and the reason. References between objects (required
/// blocks, default style, second-language fields, ...) are read as they stand, never checked.
class FordefReader {
public:
    /// When `lines` is given, it receives the line of every element of the document read.
    static boost::shared_ptr<DefinitionDocument> read(const boost::filesystem::path& file,
                                                      SourceLines* lines = nullptr);
    /// Reads from memory; `fileName` names the document and appears in errors.
    static boost::shared_ptr<DefinitionDocument> parse(const char* data, std::size_t size,
                                                       const std::string& fileName,
                                                       SourceLines* lines = nullptr);
};

} // namespace QorBorder
