#pragma once

#include "model/lint/finding.h"

#include "model/definition_document.h"
#include "model/source_lines.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <functional>
#include <string>
#include <vector>

/// The site's checker: the rules that a document of a site must meet beyond what its reader
/// refuses. It knows nothing of dialogs, NX or the command line: its caller gives it the
/// documents and tells it which templates are found.
namespace QorLint {

/// A rule of the checker: its name, as findings show it, and what it finds.
struct LintRule {
    const char* name;
    const char* summary;
};

/// Every rule, in the order of the documentation.
const std::vector<LintRule>& lintRules();

/// A document to check, with the lines of its elements.
struct LintDocument {
    std::string file; ///< as findings name it
    boost::shared_ptr<const QorBorder::DefinitionDocument> document;
    QorBorder::SourceLines lines;
    bool checked = true; ///< false: only context for the others (what it defines)
};

/// Whether a template file of that name is found in the folder ("format_defs/frame_templates" or
/// "format_defs/block_templates") along the search path.
using TemplateLookup = std::function<bool(const std::string& name, const std::string& folder)>;

/// The findings in the checked documents, sorted. References are resolved across all documents
/// (checked or not), the first definition in document order winning, as the configurator
/// resolves them across all open documents: put context documents first, in search order.
std::vector<Finding> lint(const std::vector<LintDocument>& documents,
                          const TemplateLookup& templateFound);

/// Reads a document with its lines, named `shownAs` in findings; throws QorBorder::DocumentError
/// naming the file, line and reason when it cannot be read.
LintDocument readLintDocument(const boost::filesystem::path& file, const std::string& shownAs,
                              bool checked);

/// A document for readLintDocuments: the file, how findings name it, whether it is checked.
struct LintSource {
    boost::filesystem::path file;
    std::string shownAs;
    bool checked = true;
};

/// What reading one source gave: the document, or the reader's message (file, line, reason).
struct LintReading {
    LintDocument document;
    std::string error;  ///< empty when the document was read
    int errorLine = 0;  ///< the line the error names; 0 for none
    std::string reason; ///< the error without file and line
};

/// Reads the sources on `threads` threads (0: one per core), each file once; the readings are in
/// the order of the sources, whatever order the threads finish in. A file that cannot be read
/// gives its error in its own reading and does not stop the others; so does one too large to
/// hold in memory.
std::vector<LintReading> readLintDocuments(const std::vector<LintSource>& sources,
                                           unsigned threads = 0);

} // namespace QorLint
