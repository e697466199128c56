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

/// What the rules across documents need of one document, once the rules within it ran: the IDs
/// it defines with their lines, what it refers to, and its own findings. It holds none of the
/// document's objects, so that a site's documents need not all be held at once.
struct DocumentFacts {
    struct Defined {
        std::string id;
        int line = 0;
    };
    struct Block {
        std::string id;
        int line = 0;
        std::vector<std::string> fieldIds; ///< the block's own fields, not its table's
        std::vector<std::string> styleIds;
    };
    struct Location {
        std::string blockId;
        std::string id;
        std::string styleId;
        std::string associatedBlockId;
        int line = 0;
    };
    /// A block that a border requires.
    struct RequiredBlock {
        int line = 0;
        std::string border;
        std::string block;
        bool core = false; ///< false: on sheet 1
    };
    /// A template a drawing size (frame) or a style (block) names.
    struct Template {
        int line = 0;
        std::string name;
        bool frame = false;
        std::string item;  ///< the drawing size's name, or the style's ID
        std::string owner; ///< the border's ID, or the block's
    };
    /// A translation key that splits well; the block and field it names.
    struct Translation {
        int line = 0;
        std::string key;
        std::string block;
        std::string field;
    };

    std::string file;
    bool checked = true;
    std::vector<Defined> borders;
    std::vector<Block> blocks;
    std::vector<Location> locations;
    // Of a checked document only:
    std::vector<Finding> findings; ///< of the rules within the document
    std::vector<RequiredBlock> requiredBlocks;
    std::vector<Template> templates;
    std::vector<Translation> translations;
};

/// Runs the rules within a checked document and takes its facts.
DocumentFacts documentFacts(const LintDocument& doc);

/// Whether a template file of that name is found in the folder ("format_defs/frame_templates" or
/// "format_defs/block_templates") along the search path.
using TemplateLookup = std::function<bool(const std::string& name, const std::string& folder)>;

/// The findings in the checked documents, sorted. References are resolved across all documents
/// (checked or not), the first definition in document order winning, as the configurator
/// resolves them across all open documents: put context documents first, in search order.
std::vector<Finding> lint(const std::vector<LintDocument>& documents,
                          const TemplateLookup& templateFound);

/// The same, on the documents' facts. When `named` is given, it tells for each document whether a
/// finding names it (as the faulty one, or as the other definition of a duplicate): the
/// documents whose lines the findings show.
std::vector<Finding> lint(const std::vector<const DocumentFacts*>& documents,
                          const TemplateLookup& templateFound, std::vector<bool>* named = nullptr);

/// Reads a document with its lines, named `shownAs` in findings; throws QorBorder::DocumentError
/// naming the file, line and reason when it cannot be read.
LintDocument readLintDocument(const boost::filesystem::path& file, const std::string& shownAs,
                              bool checked);
/// The same, without its lines when `withLines` is false (every line is then 0).
LintDocument readLintDocument(const boost::filesystem::path& file, const std::string& shownAs,
                              bool checked, bool withLines);

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

/// What reading one source for its facts gave: the facts, or the reader's message.
struct FactsReading {
    DocumentFacts facts;
    std::string error;  ///< empty when the document was read
    int errorLine = 0;  ///< the line the error names; 0 for none
    std::string reason; ///< the error without file and line
};

/// Reads the sources as readLintDocuments does, but keeps of each document only its facts (with
/// its lines or without), so that no more documents are held at once than there are threads. A
/// source that is no regular file (or a link to one) is refused without being opened, with the
/// reason "it is KIND, not a regular file", or "cannot open the file: WHY" when it cannot be
/// looked at.
std::vector<FactsReading> readDocumentFacts(const std::vector<LintSource>& sources, bool withLines,
                                            unsigned threads = 0);

/// A source that could not be read: its index in the sources, the line the error names (0 for
/// none) and the reason.
struct UnreadableSource {
    std::size_t source;
    int line;
    std::string reason;
};

/// What lintFiles found.
struct LintedFiles {
    std::vector<Finding> findings; ///< sorted
    std::vector<UnreadableSource> unreadable;
};

/// Reads the sources on `threads` threads (0: one per core) and checks them as lint() checks
/// them, context documents first in the order given, then the checked ones in the order given.
/// Only the facts of each document are held. The documents are read without their lines; when
/// there are findings, the documents they name are read again with their lines, so that the
/// findings are those that reading every document with its lines gives (a document that cannot
/// be read the second time keeps what the first read found, without lines).
LintedFiles lintFiles(const std::vector<LintSource>& sources, const TemplateLookup& templateFound,
                      unsigned threads = 0);

} // namespace QorLint
