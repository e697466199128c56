#pragma once

#include "model/definition_document.h"
#include "model/source_lines.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

/// A text of a document that can be given a translation: a text choice of a block's own field
/// (its long value), or a block field without choices that has a title (its attribute title).
/// Its translation key is LANGUAGE_BLOCK_FIELD_LOOKUPKEY, the lookup key empty for a title.
struct TranslatableText {
    std::string blockId;
    std::string fieldId;
    std::string lookupKey;
    std::string source;
    std::string note; ///< what the text is, for the translator
    int line = 0;     ///< of the choice or field element in the document's file
};

/// Every translatable text of the document, in document order; texts that are empty are left
/// out, and so is a second text with the same key.
std::vector<TranslatableText> translatableTexts(const QorBorder::DefinitionDocument& document,
                                                const QorBorder::SourceLines& lines);

/// The msgctxt of a text in a PO file: block, field and lookup key joined by '|'.
std::string poContext(const TranslatableText& text);

struct ExportOptions {
    std::string file;
    std::string language;
    std::string output = "-"; ///< "-" for standard output
};

struct TemplateOptions {
    std::string file;
    std::string output = "-"; ///< "-" for standard output
};

struct ImportOptions {
    std::string file;
    std::string catalog;
    bool dropComments = false; ///< save a document that holds XML comments (which are lost)
};

struct CoverageOptions {
    std::string file;
    std::vector<std::string> languages; ///< empty: those of the document
    double minimum = -1;                ///< percent; below 0 for no minimum
};

/// Writes a PO catalog of the document's texts with their translations into `language`.
/// Returns 0, or 2 when the document cannot be read, the language is unusable or the catalog
/// cannot be written.
int runExport(const ExportOptions& options, std::ostream& out, std::ostream& err);

/// Writes a PO template (.pot) of the document's texts: every translation empty, no language.
/// Returns 0, or 2 when the document cannot be read or the template cannot be written.
int runTemplate(const TemplateOptions& options, std::ostream& out, std::ostream& err);

/// Takes the translations of a PO catalog into the document and saves it atomically when any
/// changed. The catalog's language is matched to the document's languages without regard to case
/// and region and stored as the document spells it (a new one as given, '_' written '-'), and
/// `out` says so. Untranslated and fuzzy entries are left out, and so are stale ones (translated
/// from a text the document no longer has), each named on `err`. A document that holds an XML
/// comment is not saved (exit 2, naming its line) unless `dropComments`. A catalog with an entry
/// that names no text of the document (or that cannot be read) is refused whole, with the line of
/// each such entry, and nothing is written: exit 2. Otherwise 0.
int runImport(const ImportOptions& options, std::ostream& out, std::ostream& err);

/// Prints a table of blocks by languages: texts translated out of those that can be. Returns 1
/// when a language's coverage of the whole document is below the minimum, 2 when the document
/// cannot be read, else 0.
int runCoverage(const CoverageOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
