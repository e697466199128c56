#pragma once

#include "model/definition_document.h"
#include "model/file_replace.h"

#include <boost/filesystem/path.hpp>

#include <string>

namespace QorBorder {

/// Writes documents in the .fordef format, version 1: every member in a fixed order, so that an
/// unchanged document always gives the same bytes.
class FordefWriter {
public:
    /// The document's file content.
    static std::string toXml(const DefinitionDocument& document);
    /// Writes the content to `file` atomically (see replaceFileAtomically) and returns the state
    /// of the new file. Throws DocumentError naming the file and the reason, or what `check`
    /// throws; the old file is then untouched.
    static FileState write(const DefinitionDocument& document, const boost::filesystem::path& file,
                           const CommitCheck& check = CommitCheck());
};

} // namespace QorBorder
