#pragma once

#include "model/definition_document.h"

#include <boost/filesystem/path.hpp>

#include <cstddef>
#include <functional>
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

/// Receives a file's content piece by piece.
using ChunkSink = std::function<void(const char* data, std::size_t size)>;

/// Replaces `file` atomically with what `produce` hands to its sink: the bytes go to a new file
/// beside it, are flushed to disk, and the new file is renamed over the old one. Throws
/// DocumentError naming the file and the reason; the old file is then untouched.
void replaceFileAtomically(const boost::filesystem::path& file,
                           const std::function<void(const ChunkSink&)>& produce);
void replaceFileAtomically(const boost::filesystem::path& file, const std::string& content);

} // namespace QorBorder
