#pragma once

#include "model/definition_document.h"

#include <boost/filesystem/path.hpp>

#include <string>

namespace QorBorder {

/// Writes documents in the .fordef format, version 1: every member in a fixed order, so that an
/// unchanged document always gives the same bytes.
class FordefWriter {
public:
    /// The document's file content.
    static std::string toXml(const DefinitionDocument& document);
    /// Writes the content to `file` atomically (beside it, flushed to disk, renamed over it).
    /// Throws DocumentError naming the file and the reason; the old file is then untouched.
    static void write(const DefinitionDocument& document, const boost::filesystem::path& file);
};

/// Replaces `file` with `content` atomically. Throws DocumentError naming the file and the reason.
void replaceFileAtomically(const boost::filesystem::path& file, const std::string& content);

} // namespace QorBorder
