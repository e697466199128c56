#pragma once

#include <boost/filesystem/path.hpp>

#include <string>
#include <vector>

namespace QorfmtCli {

/// One message of a gettext PO file.
struct PoEntry {
    std::string context; ///< msgctxt
    std::string source;  ///< msgid
    std::string translation;
    std::string comment;       ///< the extracted comment ("#." lines) for the translator
    std::string referenceFile; ///< the "#:" reference: where the source text is; "" for none
    int referenceLine = 0;
    bool fuzzy = false;     ///< marked as needing review: not to be used as it is
    bool hasPlural = false; ///< has msgid_plural (the documents have no plural forms)
    int line = 0;           ///< where the entry starts in the file read; 0 when unknown
};

/// A PO file: its header's language and its messages, the header itself left out. Files are
/// read and written through GNU libgettextpo.
struct PoCatalog {
    std::string language;
    std::string project; ///< Project-Id-Version of the header
    std::vector<PoEntry> entries;
};

/// Writes the catalog as a PO file, UTF-8; "-" writes to standard output. Another file is
/// replaced atomically (written beside it and renamed over it). Throws InputError naming the
/// file and the reason when it cannot be written.
void writePoFile(const PoCatalog& catalog, const boost::filesystem::path& file);

/// Reads a PO file, standard input for "-"; obsolete messages are left out. Throws InputError with
/// FILE:LINE: REASON (libgettextpo's own messages) when it cannot be read or is not a valid PO
/// file. The file must be a regular file of at most 256 MiB; a byte order mark at its start is
/// skipped.
PoCatalog readPoFile(const boost::filesystem::path& file);
/// The same for the bytes of a catalog; `name` names it in errors.
PoCatalog parsePoCatalog(std::string content, const std::string& name);

} // namespace QorfmtCli
