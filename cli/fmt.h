#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

struct FmtOptions {
    bool check = false;        ///< only report the documents that are not in canonical form
    bool diff = false;         ///< only show, as a unified diff, what would change
    bool dropComments = false; ///< rewrite documents that hold XML comments (which are lost)
    std::vector<std::string> files;
};

/// Whether the file's bytes are what the model's writer writes for the document it holds.
/// Throws InputError when the file cannot be read or is not a valid document.
bool isCanonical(const std::string& file);

/// The fmt command: rewrites each document that is not in canonical form (through the model's
/// atomic save) and names it on `out`; with `check`, only names them; with `diff`, shows the
/// changes. A document that holds an XML comment is not rewritten (the model keeps no comments)
/// unless `dropComments`: an error names the line of the first. Returns 0, or 1 when checking
/// found a document to rewrite, or 2 when a document could not be read or written or holds a
/// comment (the others are still handled).
int runFmt(const FmtOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
