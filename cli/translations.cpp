#include "translations.h"

#include "input.h"
#include "po_catalog.h"
#include "site.h"
#include "text_diff.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"

#include <boost/filesystem/path.hpp>

#include <algorithm>
#include <iomanip>
#include <map>
#include <ostream>
#include <set>
#include <sstream>

namespace fs = boost::filesystem;
using namespace QorBorder;

namespace QorfmtCli {

namespace {

struct LoadedDocument {
    boost::shared_ptr<DefinitionDocument> document;
    SourceLines lines;
    std::string bytes; ///< the file's content
};

LoadedDocument load(const std::string& file) {
    LoadedDocument loaded;
    DocumentInput input = readDocumentInput(file, &loaded.lines, true);
    loaded.document = input.document;
    loaded.bytes = std::move(input.bytes);
    return loaded;
}

void checkLanguage(const std::string& language) {
    if (language.empty()) {
        throw InputError("the language is empty");
    }
    if (language.find('_') != std::string::npos) {
        throw InputError("language '" + language +
                         "' contains '_', which would break the translation keys");
    }
}

std::string q(const std::string& text) {
    return "'" + text + "'";
}

// Why a msgctxt names nothing of the document, for the message that refuses it.
std::string whyUnknown(const std::string& context, const DefinitionDocument& document) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    for (auto bar = context.find('|'); bar != std::string::npos; bar = context.find('|', start)) {
        parts.push_back(context.substr(start, bar - start));
        start = bar + 1;
    }
    parts.push_back(context.substr(start));
    if (parts.size() != 3) {
        return "it is not BLOCK|FIELD|LOOKUPKEY";
    }
    for (const auto& block : document.blockLayouts(AllUnits)) {
        if (block->id != parts[0]) {
            continue;
        }
        for (const auto& field : block->fields()) {
            if (field->id == parts[1]) {
                return parts[2].empty() ? "field " + q(parts[1]) + " has no title to translate"
                                        : "field " + q(parts[1]) + " has no choice " + q(parts[2]) +
                                              " with a text";
            }
        }
        return "block " + q(parts[0]) + " has no field " + q(parts[1]);
    }
    return "the document has no block " + q(parts[0]);
}

// The language part of a language name, in lower case: "de_DE", "de-DE", "de.UTF-8" and "DE" are
// all "de".
std::string languageOnly(const std::string& language) {
    std::string base = language.substr(0, language.find_first_of("_-.@"));
    std::transform(base.begin(), base.end(), base.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return base;
}

// The languages a document has: its borders' second languages and those of its translations.
std::set<std::string> documentLanguages(const DefinitionDocument& document) {
    std::set<std::string> found;
    for (const auto& border : document.borderLayoutTypes(AllUnits)) {
        found.insert(border->secondLanguages.begin(), border->secondLanguages.end());
    }
    for (const auto& entry : document.translations()) {
        found.insert(entry.first.substr(0, entry.first.find('_')));
    }
    found.erase("");
    return found;
}

// The document's own spelling of `language` when it has that language (case and region aside),
// else `language` as given, with '_' (which would break the translation keys) written as '-'.
std::string resolveLanguage(const std::string& language, const DefinitionDocument& document) {
    for (const std::string& known : documentLanguages(document)) {
        if (languageOnly(known) == languageOnly(language)) {
            return known;
        }
    }
    std::string spelled = language;
    std::replace(spelled.begin(), spelled.end(), '_', '-');
    return spelled;
}

} // namespace

std::vector<TranslatableText> translatableTexts(const DefinitionDocument& document,
                                                const SourceLines& lines) {
    std::vector<TranslatableText> texts;
    std::set<std::string> contexts;
    auto add = [&](TranslatableText text) {
        if (!text.source.empty() && contexts.insert(poContext(text)).second) {
            texts.push_back(std::move(text));
        }
    };
    for (const auto& block : document.blockLayouts(AllUnits)) {
        for (const auto& field : block->fields()) {
            const auto& choices = field->choices();
            if (choices.empty()) {
                add({block->id, field->id, "", field->attrTitle,
                     "Block " + block->id + ", field " + field->id + ": title",
                     lines.of(field.get())});
            }
            for (std::size_t i = 0; i < choices.size(); ++i) {
                add({block->id, field->id, choices[i].lookupKey, choices[i].fullValue,
                     "Block " + block->id + ", field " + field->id + ", choice " +
                         choices[i].lookupKey + " (" + choices[i].shortValue + ")",
                     lines.of(field.get(), "choice", std::to_string(i))});
            }
        }
    }
    return texts;
}

std::string poContext(const TranslatableText& text) {
    return text.blockId + "|" + text.fieldId + "|" + text.lookupKey;
}

namespace {

// The catalog of the document's texts with their translations into `language`; without a
// language, the template: every translation empty. `translated` counts those given.
PoCatalog documentCatalog(const LoadedDocument& loaded, const std::string& file,
                          const std::string& language, int& translated) {
    const auto& translations = loaded.document->translations();
    PoCatalog catalog;
    catalog.language = language;
    catalog.project =
        file == kStandardStream ? inputName(file) : fs::path(file).filename().string();
    translated = 0;
    for (const TranslatableText& text : translatableTexts(*loaded.document, loaded.lines)) {
        PoEntry entry;
        entry.context = poContext(text);
        entry.source = text.source;
        const auto found = language.empty()
                               ? translations.end()
                               : translations.find(translationKey(language, text.blockId,
                                                                  text.fieldId, text.lookupKey));
        if (found != translations.end()) {
            entry.translation = found->second;
            translated += found->second.empty() ? 0 : 1;
        }
        entry.comment = text.note;
        entry.referenceFile = catalog.project;
        entry.referenceLine = text.line;
        catalog.entries.push_back(std::move(entry));
    }
    return catalog;
}

} // namespace

int runExport(const ExportOptions& options, std::ostream& out, std::ostream& err) {
    try {
        checkLanguage(options.language);
        const LoadedDocument loaded = load(options.file);
        int translated = 0;
        const PoCatalog catalog =
            documentCatalog(loaded, options.file, options.language, translated);
        writePoFile(catalog, options.output);
        if (options.output != "-") {
            out << options.output << ": " << catalog.entries.size() << " texts of "
                << inputName(options.file) << ", " << translated << " translated into "
                << options.language << "\n";
        }
        return 0;
    } catch (const InputError& e) {
        err << "qorfmt translations export: " << e.what() << '\n';
        return 2;
    }
}

int runTemplate(const TemplateOptions& options, std::ostream& out, std::ostream& err) {
    try {
        const LoadedDocument loaded = load(options.file);
        int translated = 0;
        const PoCatalog catalog = documentCatalog(loaded, options.file, "", translated);
        writePoFile(catalog, options.output);
        if (options.output != "-") {
            out << options.output << ": " << catalog.entries.size() << " texts of "
                << inputName(options.file) << "\n";
        }
        return 0;
    } catch (const InputError& e) {
        err << "qorfmt translations template: " << e.what() << '\n';
        return 2;
    }
}

int runImport(const ImportOptions& options, std::ostream& out, std::ostream& err) {
    try {
        if (options.file == kStandardStream) {
            throw InputError("the document cannot be standard input: import writes it back");
        }
        const LoadedDocument loaded = load(options.file);
        const PoCatalog catalog = readPoFile(options.catalog);
        if (catalog.language.empty()) {
            throw InputError(inputName(options.catalog) + ": the header names no Language");
        }
        std::string language = resolveLanguage(catalog.language, *loaded.document);
        checkLanguage(language);
        std::map<std::string, TranslatableText> texts;
        for (TranslatableText& text : translatableTexts(*loaded.document, loaded.lines)) {
            texts.emplace(poContext(text), std::move(text));
        }
        auto where = [&](const PoEntry& entry) {
            return inputName(options.catalog) + ":" + std::to_string(entry.line) + ": ";
        };
        bool refused = false;
        for (const PoEntry& entry : catalog.entries) {
            if (texts.count(entry.context) == 0) {
                err << "qorfmt translations import: " << where(entry) << "msgctxt "
                    << q(entry.context) << " names no text of " << options.file << ": "
                    << whyUnknown(entry.context, *loaded.document) << '\n';
                refused = true;
            } else if (entry.hasPlural) {
                err << "qorfmt translations import: " << where(entry) << "msgctxt "
                    << q(entry.context) << " has plural forms, which the documents do not have\n";
                refused = true;
            }
        }
        if (refused) {
            err << "qorfmt translations import: " << options.file << " is left unchanged\n";
            return 2;
        }

        DefinitionDocument::TranslationMap translations = loaded.document->translations();
        int added = 0;
        int changed = 0;
        int unchanged = 0;
        int untranslated = 0;
        int fuzzy = 0;
        int stale = 0;
        for (const PoEntry& entry : catalog.entries) {
            const TranslatableText& text = texts.at(entry.context);
            if (entry.fuzzy) {
                ++fuzzy;
                continue;
            }
            if (entry.translation.empty()) {
                ++untranslated;
                continue;
            }
            if (entry.source != text.source) {
                // Translated from a text the document no longer has: taking it would put a
                // wrong translation beside the new text.
                err << "qorfmt translations import: " << where(entry)
                    << "stale: " << q(entry.context) << " was translated from " << q(entry.source)
                    << ", but the document's text is now " << q(text.source) << "; left out\n";
                ++stale;
                continue;
            }
            const std::string key =
                translationKey(language, text.blockId, text.fieldId, text.lookupKey);
            const auto found = translations.find(key);
            if (found == translations.end()) {
                ++added;
            } else if (found->second != entry.translation) {
                ++changed;
            } else {
                ++unchanged;
                continue;
            }
            translations[key] = entry.translation;
        }
        if (!documentLanguages(*loaded.document).count(language)) {
            out << inputName(options.catalog) << ": language " << q(catalog.language)
                << " is new to the document"
                << (language == catalog.language ? "" : ", written " + q(language)) << "\n";
        } else if (language != catalog.language) {
            out << inputName(options.catalog) << ": language " << q(catalog.language)
                << " is the document's " << q(language) << "\n";
        }
        out << options.file << ": " << language << ": " << added << " added, " << changed
            << " changed, " << unchanged << " unchanged";
        if (untranslated + fuzzy + stale > 0) {
            out << " (" << untranslated << " untranslated, " << fuzzy << " fuzzy and " << stale
                << " stale entries left out)";
        }
        out << "\n";
        if (added + changed > 0) {
            if (const int line = options.dropComments ? 0 : firstCommentLine(loaded.bytes)) {
                throw InputError(options.file + ":" + std::to_string(line) +
                                 ": holds an XML comment, which saving the document would drop; "
                                 "nothing was written (--drop-comments imports anyway)");
            }
            loaded.document->setFieldTranslations(translations);
            try {
                loaded.document->save();
            } catch (const DocumentError& e) {
                throw InputError(e.what());
            }
        }
        return 0;
    } catch (const InputError& e) {
        err << "qorfmt translations import: " << e.what() << '\n';
        return 2;
    }
}

int runCoverage(const CoverageOptions& options, std::ostream& out, std::ostream& err) {
    LoadedDocument loaded;
    std::vector<std::string> languages = options.languages;
    try {
        for (const std::string& language : languages) {
            checkLanguage(language);
        }
        loaded = load(options.file);
    } catch (const InputError& e) {
        err << "qorfmt translations coverage: " << e.what() << '\n';
        return 2;
    }
    const auto& translations = loaded.document->translations();
    if (languages.empty()) {
        const std::set<std::string> found = documentLanguages(*loaded.document);
        languages.assign(found.begin(), found.end());
    }
    const std::vector<TranslatableText> texts = translatableTexts(*loaded.document, loaded.lines);
    std::vector<std::string> blocks;
    for (const auto& block : loaded.document->blockLayouts(AllUnits)) {
        if (std::find(blocks.begin(), blocks.end(), block->id) == blocks.end()) {
            blocks.push_back(block->id);
        }
    }
    // counts[language][block] = {translated, translatable}; "" is the whole document.
    std::map<std::string, std::map<std::string, std::pair<int, int>>> counts;
    for (const std::string& language : languages) {
        for (const TranslatableText& text : texts) {
            const auto found = translations.find(
                translationKey(language, text.blockId, text.fieldId, text.lookupKey));
            const int done = found != translations.end() && !found->second.empty() ? 1 : 0;
            for (const std::string& row : {text.blockId, std::string()}) {
                counts[language][row].first += done;
                counts[language][row].second += 1;
            }
        }
    }
    auto cell = [&](const std::string& language, const std::string& row) {
        const auto& count = counts[language][row];
        if (count.second == 0) {
            return std::string("-");
        }
        return std::to_string(count.first) + "/" + std::to_string(count.second) + " " +
               std::to_string(count.first * 100 / count.second) + "%";
    };
    const std::string total = "All blocks";
    std::size_t firstWidth = total.size();
    for (const std::string& block : blocks) {
        firstWidth = std::max(firstWidth, block.size());
    }
    std::vector<std::size_t> widths;
    for (const std::string& language : languages) {
        std::size_t width = language.size();
        for (const std::string& block : blocks) {
            width = std::max(width, cell(language, block).size());
        }
        widths.push_back(std::max(width, cell(language, "").size()));
    }
    auto row = [&](const std::string& first, const std::vector<std::string>& cells) {
        std::ostringstream line;
        line << std::left << std::setw(static_cast<int>(firstWidth)) << first;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            line << "  " << std::right << std::setw(static_cast<int>(widths[i])) << cells[i];
        }
        std::string text = line.str();
        text.erase(text.find_last_not_of(' ') + 1);
        out << text << '\n';
    };
    if (languages.empty()) {
        out << options.file << ": no languages (the document names none; see --languages)\n";
        return 0;
    }
    row("Block", languages);
    for (const std::string& block : blocks) {
        std::vector<std::string> cells;
        for (const std::string& language : languages) {
            cells.push_back(cell(language, block));
        }
        row(block, cells);
    }
    std::vector<std::string> cells;
    for (const std::string& language : languages) {
        cells.push_back(cell(language, ""));
    }
    row(total, cells);

    int exitCode = 0;
    if (options.minimum >= 0) {
        for (const std::string& language : languages) {
            const auto& count = counts[language][""];
            if (count.second > 0 && count.first * 100.0 < options.minimum * count.second) {
                err << "qorfmt translations coverage: " << language << " covers " << count.first
                    << " of " << count.second << " texts, below " << options.minimum << "%\n";
                exitCode = 1;
            }
        }
    }
    return exitCode;
}

} // namespace QorfmtCli
