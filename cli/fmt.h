#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

struct FmtOptions {
    bool check = false; ///< only report the documents that are not in canonical form
    std::vector<std::string> files;
};

/// Whether the file's bytes are what the model's writer writes for the document it holds.
/// Throws InputError when the file cannot be read or is not a valid document.
bool isCanonical(const std::string& file);

/// The fmt command: rewrites each document that is not in canonical form (through the model's
/// atomic save) and names it on `out`; with `check`, only names them. Returns 0, or 1 when
/// checking found a document to rewrite, or 2 when a document could not be read or written (the
/// others are still handled).
int runFmt(const FmtOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
