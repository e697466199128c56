#include "model/lint/lint.h"

#include "model/fordef_format.h"
#include "model/fordef_reader.h"
#include "model/zone_scheme.h"

#include "model/document_error.h"

#include "base/regular_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <exception>
#include <map>
#include <new>
#include <set>
#include <sstream>
#include <string_view>
#include <thread>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace fs = boost::filesystem;
using namespace QorBorder;

namespace QorLint {

namespace {

const char* const kMissingRequiredBlock = "missing-required-block";
const char* const kLocationTarget = "location-target";
const char* const kDefaultStyle = "default-style";
const char* const kUnknownField = "unknown-field";
const char* const kTranslationKey = "translation-key";
const char* const kIdUnderscore = "id-underscore";
const char* const kMissingTemplate = "missing-template";
const char* const kDuplicateId = "duplicate-id";
const char* const kZoneCount = "zone-count";
const char* const kDuplicateInLayout = "duplicate-in-layout";
const char* const kTextChoice = "text-choice";
const char* const kDrawingSize = "drawing-size";

const char* const kFrameTemplates = "format_defs/frame_templates";
const char* const kBlockTemplates = "format_defs/block_templates";

std::string q(const std::string& text) {
    return "'" + text + "'";
}

bool contains(const std::vector<std::string>& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

// The parts of a translation key: split at every "_", as the translation dialog splits it.
std::vector<std::string> keyParts(const std::string& key) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    while (true) {
        const auto underscore = key.find('_', start);
        parts.push_back(key.substr(start, underscore - start));
        if (underscore == std::string::npos) {
            return parts;
        }
        start = underscore + 1;
    }
}

std::string formatNumber(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

// The rules within one document. Checking a document gives its findings and, in its facts,
// what the rules across documents still have to resolve: the blocks it requires, the templates
// and blocks it names.
class DocumentRules {
public:
    DocumentRules(const LintDocument& doc, DocumentFacts& facts) : m_doc(doc), m_facts(facts) {}

    void run() {
        const LintDocument& doc = m_doc;
        for (const auto& border : doc.document->borderLayoutTypes(AllUnits)) {
            checkBorder(doc, *border);
        }
        for (const auto& block : doc.document->blockLayouts(AllUnits)) {
            checkBlock(doc, *block);
        }
        for (const auto& translation : doc.document->translations()) {
            checkTranslation(doc, translation.first);
        }
    }

private:
    void report(const LintDocument& doc, int line, Severity severity, const char* rule,
                const std::string& message) {
        m_facts.findings.push_back({doc.file, line, severity, message, rule});
    }
    void error(const LintDocument& doc, int line, const char* rule, const std::string& message) {
        report(doc, line, Severity::Error, rule, message);
    }

    // Whether the template is found is asked once per site, after every document is checked.
    void needTemplate(int line, const std::string& name, bool frame, const std::string& item,
                      const std::string& owner) {
        m_facts.templates.push_back({line, name, frame, item, owner});
    }

    // The line of an entry without an object of its own; without building its key when the
    // document was read without lines, as most documents of a site are.
    int entryLine(const void* owner, const char* element, std::size_t index) const {
        return m_doc.lines.hasEntries() ? m_doc.lines.of(owner, element, std::to_string(index)) : 0;
    }
    int entryLine(const void* owner, const char* element, const std::string& key) const {
        return m_doc.lines.hasEntries() ? m_doc.lines.of(owner, element, key) : 0;
    }

    // Every ID after the first of its kind in one list of `count` items: `id(i)` gives item i's
    // ID, `what` names the item ("field"), `where()` the list's owner ("block 'TB'"); `line(i)`
    // gives item i's line. The names are only built for a finding.
    template <class Id, class Where, class Line>
    void checkUnique(const LintDocument& doc, std::size_t count, const Id& id, const char* what,
                     const Where& where, const Line& line) {
        const auto reportAt = [&](std::size_t i, std::size_t first) {
            error(doc, line(i), kDuplicateInLayout,
                  std::string(what) + " " + q(id(i)) + " occurs twice in " + where() +
                      "; the first is at line " + std::to_string(line(first)));
        };
        // Lists are short: comparing each with those before it costs less than an index.
        if (count <= 32) {
            for (std::size_t i = 1; i < count; ++i) {
                for (std::size_t j = 0; j < i; ++j) {
                    if (id(j) == id(i)) {
                        reportAt(i, j);
                        break;
                    }
                }
            }
            return;
        }
        std::unordered_map<std::string_view, std::size_t> first;
        first.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string& text = id(i);
            const auto inserted = first.emplace(std::string_view(text), i);
            if (!inserted.second) {
                reportAt(i, inserted.first->second);
            }
        }
    }

    template <class What>
    void checkDrawingSizeValues(const LintDocument& doc, int line, const What& what,
                                const DrawingSize& size) {
        const std::pair<double, const char*> extents[] = {{size.height, "height"},
                                                          {size.length, "length"}};
        for (const auto& extent : extents) {
            if (!std::isfinite(extent.first) || extent.first <= 0) {
                error(doc, line, kDrawingSize,
                      what() + " has " + extent.second + " " + formatNumber(extent.first) +
                          ", which is not a positive number");
            }
        }
        const std::pair<int, const char*> zones[] = {{size.horizontalZones, "horizontal"},
                                                     {size.verticalZones, "vertical"}};
        for (const auto& count : zones) {
            if (count.first < 0 || count.first > Fordef::kMaxZones) {
                error(doc, line, kDrawingSize,
                      what() + " has " + std::to_string(count.first) + " " + count.second +
                          " zones; a drawing size has 0 to " + std::to_string(Fordef::kMaxZones));
            }
        }
    }

    void checkBorder(const LintDocument& doc, const BorderLayout& border) {
        const std::pair<const std::vector<std::string>*, const char*> requirements[] = {
            {&border.coreRequiredBlocks, "coreRequiredBlock"},
            {&border.sheet1RequiredBlocks, "sheet1RequiredBlock"}};
        for (const auto& requirement : requirements) {
            const std::vector<std::string>& ids = *requirement.first;
            const bool core = requirement.first == &border.coreRequiredBlocks;
            for (std::size_t i = 0; i < ids.size(); ++i) {
                m_facts.requiredBlocks.push_back(
                    {entryLine(&border, requirement.second, i), border.id, ids[i], core});
            }
        }
        for (std::size_t i = 0; i < border.secondLanguages.size(); ++i) {
            const std::string& language = border.secondLanguages[i];
            if (language.find('_') != std::string::npos) {
                error(doc, entryLine(&border, "secondLanguage", i), kIdUnderscore,
                      "second language " + q(language) + " of border " + q(border.id) +
                          " contains '_', which breaks translation keys");
            }
        }
        const auto& sizes = border.drawingSizes();
        checkUnique(
            doc, sizes.size(), [&](std::size_t i) -> const std::string& { return sizes[i].name; },
            "drawing size", [&] { return "border " + q(border.id); },
            [&](std::size_t i) { return entryLine(&border, "drawingSize", i); });
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const DrawingSize& size = sizes[i];
            const int line = entryLine(&border, "drawingSize", i);
            const auto what = [&] {
                return "drawing size " + q(size.name) + " of border " + q(border.id);
            };
            if (size.templateFile.empty()) {
                error(doc, line, kMissingTemplate, what() + " names no frame template");
            } else {
                needTemplate(line, size.templateFile, true, size.name, border.id);
            }
            checkDrawingSizeValues(doc, line, what, size);
            std::vector<std::string> unzoned;
            if (numbersZones(border.horizontalZoneType) && size.horizontalZones == 0) {
                unzoned.push_back("0 horizontal");
            }
            if (numbersZones(border.verticalZoneType) && size.verticalZones == 0) {
                unzoned.push_back("0 vertical");
            }
            if (!unzoned.empty()) {
                report(doc, line, Severity::Warning, kZoneCount,
                       what() + " has " + unzoned[0] + (unzoned.size() > 1 ? " and " : "") +
                           (unzoned.size() > 1 ? unzoned[1] : std::string()) +
                           " zones, but the border numbers its zones");
            }
        }
    }

    // `owner()` names the field's owner: its block, or its row type and block.
    template <class Owner>
    void checkField(const LintDocument& doc, const BlockLayout& block, const Field& field,
                    const std::vector<std::string>& partners, const Owner& owner) {
        const auto name = [&] { return "field " + q(field.id) + " of " + owner(); };
        const auto& choices = field.choices();
        checkUnique(
            doc, choices.size(),
            [&](std::size_t i) -> const std::string& { return choices[i].lookupKey; }, "lookup key",
            [&] { return "the choices of " + name(); },
            [&](std::size_t i) { return entryLine(&field, "choice", i); });
        if (field.type == Field::kTextChoiceType) {
            if (choices.empty()) {
                error(doc, doc.lines.of(&field), kTextChoice,
                      name() + " is a text choice field without choices");
            } else if (field.defaultChoice >= static_cast<int>(choices.size())) {
                report(doc, doc.lines.of(&field), Severity::Warning, kTextChoice,
                       name() + " has default choice " + std::to_string(field.defaultChoice) +
                           ", but its " + std::to_string(choices.size()) +
                           " choices are numbered from 0");
            }
        }
        if (!field.secondLanguageFieldId.empty() &&
            !contains(partners, field.secondLanguageFieldId)) {
            error(doc, doc.lines.of(&field), kUnknownField,
                  "field " + q(field.id) + " of " + owner() + " names second-language field " +
                      q(field.secondLanguageFieldId) + ", which block " + q(block.id) +
                      " does not have");
        }
    }

    void checkBlock(const LintDocument& doc, const BlockLayout& block) {
        const int blockLine = doc.lines.of(&block);
        const auto name = [&] { return "block " + q(block.id); };
        if (block.id.find('_') != std::string::npos) {
            error(doc, blockLine, kIdUnderscore,
                  "block ID " + q(block.id) + " contains '_', which breaks translation keys");
        }

        const std::vector<std::string> fieldIds = block.fieldIds();
        const auto fields = block.fields();
        checkUnique(
            doc, fieldIds.size(), [&](std::size_t i) -> const std::string& { return fieldIds[i]; },
            "field", name, [&](std::size_t i) { return doc.lines.of(fields.at(i).get()); });
        for (const auto& field : fields) {
            if (field->id.find('_') != std::string::npos) {
                error(doc, doc.lines.of(field.get()), kIdUnderscore,
                      "field ID " + q(field->id) + " of " + name() +
                          " contains '_', which breaks translation keys");
            }
            const auto& choices = field->choices();
            for (std::size_t i = 0; i < choices.size(); ++i) {
                if (choices[i].lookupKey.find('_') != std::string::npos) {
                    error(doc, entryLine(field.get(), "choice", i), kIdUnderscore,
                          "lookup key " + q(choices[i].lookupKey) + " of field " + q(field->id) +
                              " of " + name() + " contains '_', which breaks translation keys");
                }
            }
            checkField(doc, block, *field, fieldIds, name);
        }

        const auto styles = block.styles();
        checkUnique(
            doc, styles.size(), [&](std::size_t i) -> const std::string& { return styles[i]->id; },
            "style", name, [&](std::size_t i) { return doc.lines.of(styles.at(i).get()); });
        const bool defaultFound = std::any_of(styles.begin(), styles.end(), [&](const auto& style) {
            return style->id == block.defaultStyleId;
        });
        if (block.defaultStyleId.empty() && !styles.empty()) {
            error(doc, blockLine, kDefaultStyle, name() + " has styles but no default style");
        } else if (!block.defaultStyleId.empty() && !defaultFound) {
            error(doc, blockLine, kDefaultStyle,
                  name() + " has default style " + q(block.defaultStyleId) +
                      ", which is none of its styles");
        }

        const auto& rowTypes = block.getTable().rowTypes();
        checkUnique(
            doc, rowTypes.size(),
            [&](std::size_t i) -> const std::string& { return rowTypes[i]->id; }, "row type",
            [&] { return "the table of " + name(); },
            [&](std::size_t i) { return doc.lines.of(rowTypes.at(i).get()); });
        // The row type of an ID that lookups find: the first.
        const auto rowType = [&](const std::string& id) -> const RowType* {
            for (const auto& row : rowTypes) {
                if (row->id == id) {
                    return row.get();
                }
            }
            return nullptr;
        };
        const auto hasField = [](const RowType& row, const std::string& id) {
            const auto& rowFields = row.fields();
            return std::any_of(rowFields.begin(), rowFields.end(),
                               [&](const auto& field) { return field->id == id; });
        };

        for (const auto& style : styles) {
            const auto styleName = [&] { return "style " + q(style->id) + " of " + name(); };
            for (const auto& placement : style->placements()) {
                if (!contains(fieldIds, placement.first)) {
                    error(doc, entryLine(style.get(), "placement", placement.first), kUnknownField,
                          styleName() + " places field " + q(placement.first) +
                              ", which the block does not have");
                }
            }
            for (const auto& column : style->tableColumns()) {
                const std::string& rowTypeId = column.first.first;
                const std::string& fieldId = column.first.second;
                const RowType* row = rowType(rowTypeId);
                if (!row || !hasField(*row, fieldId)) {
                    error(doc, entryLine(style.get(), "tableColumn", rowTypeId + '\n' + fieldId),
                          kUnknownField,
                          styleName() + " gives a table column to field " + q(fieldId) +
                              " of row type " + q(rowTypeId) + ", which the block does not have");
                }
            }
            if (style->templateFile.empty()) {
                error(doc, doc.lines.of(style.get()), kMissingTemplate,
                      styleName() + " names no block template");
            } else {
                needTemplate(doc.lines.of(style.get()), style->templateFile, false, style->id,
                             block.id);
            }
        }

        std::vector<std::string> partners;
        for (const auto& row : rowTypes) {
            const auto rowName = [&] { return "row type " + q(row->id) + " of " + name(); };
            const auto& rowFields = row->fields();
            checkUnique(
                doc, rowFields.size(),
                [&](std::size_t i) -> const std::string& { return rowFields[i]->id; }, "field",
                rowName, [&](std::size_t i) { return doc.lines.of(rowFields.at(i).get()); });
            const std::pair<const std::string*, const char*> roles[] = {
                {&row->zoneFieldId, "zone field"},
                {&row->typeManagerFieldId, "type manager field"},
                {&row->keyFieldId, "key field"}};
            for (const auto& role : roles) {
                if (!role.first->empty() && !hasField(*row, *role.first)) {
                    error(doc, doc.lines.of(row.get()), kUnknownField,
                          rowName() + " names " + q(*role.first) + " as its " + role.second +
                              ", which is no field of the row type");
                }
            }
            const std::vector<std::string> dialogFields = row->dialogListFields();
            for (std::size_t i = 0; i < dialogFields.size(); ++i) {
                if (!hasField(*row, dialogFields[i])) {
                    error(doc, entryLine(row.get(), "dialogField", i), kUnknownField,
                          rowName() + " lists " + q(dialogFields[i]) +
                              " in its input dialog, which is no field of the row type");
                }
            }
            // A table field's partner may be a field of its row or of the block.
            partners.clear();
            for (const auto& field : rowFields) {
                partners.push_back(field->id);
            }
            partners.insert(partners.end(), fieldIds.begin(), fieldIds.end());
            for (const auto& field : rowFields) {
                checkField(doc, block, *field, partners, rowName);
            }
        }

        const auto symbols = block.symbolTypes();
        checkUnique(
            doc, symbols.size(),
            [&](std::size_t i) -> const std::string& { return symbols[i]->dialogText; },
            "symbol type", name, [&](std::size_t i) { return doc.lines.of(symbols.at(i).get()); });
        // A symbol type shows a field of the block or of a row type (of two row types of one
        // ID, the first, which lookups find).
        const auto anyField = [&](const std::string& id) {
            return contains(fieldIds, id) ||
                   std::any_of(rowTypes.begin(), rowTypes.end(), [&](const auto& row) {
                       return rowType(row->id) == row.get() && hasField(*row, id);
                   });
        };
        for (const auto& symbol : symbols) {
            const std::pair<const std::vector<std::string>*, const char*> lines[] = {
                {&symbol->line1FieldIds, "line1Field"}, {&symbol->line2FieldIds, "line2Field"}};
            for (const auto& line : lines) {
                const std::vector<std::string>& ids = *line.first;
                for (std::size_t i = 0; i < ids.size(); ++i) {
                    if (!anyField(ids[i])) {
                        error(doc, entryLine(symbol.get(), line.second, i), kUnknownField,
                              "symbol type " + q(symbol->dialogText) + " of " + name() +
                                  " shows field " + q(ids[i]) + " on line " +
                                  (line.first == &symbol->line1FieldIds ? "1" : "2") +
                                  ", which the block does not have");
                    }
                }
            }
        }
    }

    // The key's own faults here; the block and field it names are resolved across the site.
    void checkTranslation(const LintDocument& doc, const std::string& key) {
        const int line = doc.lines.of(doc.document.get(), "translation", key);
        const std::vector<std::string> parts = keyParts(key);
        if (parts.size() != 4) {
            error(doc, line, kTranslationKey,
                  "translation key " + q(key) + " splits at '_' into " +
                      std::to_string(parts.size()) +
                      " parts, not into language, block, field and lookup key");
            return;
        }
        const char* const partNames[] = {"language", "block", "field"};
        for (std::size_t i = 0; i < 3; ++i) {
            if (parts[i].empty()) {
                error(doc, line, kTranslationKey,
                      "translation key " + q(key) + " has an empty " + partNames[i] + " part");
                return;
            }
        }
        m_facts.translations.push_back({line, key, parts[1], parts[2]});
    }

    const LintDocument& m_doc;
    DocumentFacts& m_facts;
};

// Where an object is defined: its document and the line of its element.
struct Definition {
    std::size_t document;
    int line;
};

// Every definition of one ID, in document order; most IDs have one, which needs no list.
struct Definitions {
    Definition first;
    std::vector<Definition> more;
};

// A location's key: its block's ID and its own, joined by a character no ID holds.
std::string locationKey(const DocumentFacts::Location& location) {
    std::string key;
    key.reserve(location.blockId.size() + 1 + location.id.size());
    key.append(location.blockId).append(1, '\0').append(location.id);
    return key;
}

// The rules across documents, on the documents' facts.
class SiteRules {
public:
    SiteRules(const std::vector<const DocumentFacts*>& documents,
              const TemplateLookup& templateFound, std::vector<bool>* named)
        : m_documents(documents), m_templateFound(templateFound), m_named(named) {
        if (m_named) {
            m_named->assign(documents.size(), false);
        }
        // Room for every ID at once: a site has thousands.
        std::size_t borders = 0;
        std::size_t blocks = 0;
        std::size_t locations = 0;
        for (const DocumentFacts* doc : documents) {
            borders += doc->borders.size();
            blocks += doc->blocks.size();
            locations += doc->locations.size();
        }
        m_borders.reserve(borders);
        m_blocks.reserve(blocks);
        m_blockFacts.reserve(blocks);
        m_locations.reserve(locations);
        for (std::size_t d = 0; d < documents.size(); ++d) {
            const DocumentFacts& doc = *documents[d];
            for (const auto& border : doc.borders) {
                define<std::string_view>(m_borders, border.id, {d, border.line});
            }
            for (const auto& block : doc.blocks) {
                define<std::string_view>(m_blocks, block.id, {d, block.line});
                m_blockFacts.emplace(block.id, &block);
            }
            for (const auto& location : doc.locations) {
                define<std::string>(m_locations, locationKey(location), {d, location.line});
            }
        }
    }

    std::vector<Finding> run() {
        for (std::size_t d = 0; d < m_documents.size(); ++d) {
            const DocumentFacts& doc = *m_documents[d];
            if (!doc.checked) {
                continue;
            }
            if (!doc.findings.empty()) {
                m_findings.insert(m_findings.end(), doc.findings.begin(), doc.findings.end());
                name(d);
            }
            for (const auto& required : doc.requiredBlocks) {
                if (!block(required.block)) {
                    error(d, required.line, kMissingRequiredBlock,
                          "border " + q(required.border) + " requires block " + q(required.block) +
                              (required.core ? " as a core block" : " on sheet 1") +
                              ", which no document of the site defines");
                }
            }
            for (const auto& wanted : doc.templates) {
                const char* folder = wanted.frame ? kFrameTemplates : kBlockTemplates;
                if (!templateFound(wanted.name, wanted.frame)) {
                    error(d, wanted.line, kMissingTemplate,
                          (wanted.frame ? "drawing size " : "style ") + q(wanted.item) +
                              (wanted.frame ? " of border " : " of block ") + q(wanted.owner) +
                              ": " + (wanted.frame ? "frame" : "block") + " template " +
                              q(wanted.name) + " is not found in " + folder +
                              " along the search path");
                }
            }
            for (const auto& location : doc.locations) {
                checkLocation(d, location);
            }
            for (const auto& translation : doc.translations) {
                checkTranslation(d, translation);
            }
        }
        checkDuplicates(m_borders, "border");
        checkDuplicates(m_blocks, "block");
        checkDuplicates(m_locations, "location");
        std::sort(m_findings.begin(), m_findings.end());
        return m_findings;
    }

private:
    void name(std::size_t document) {
        if (m_named) {
            (*m_named)[document] = true;
        }
    }
    void error(std::size_t document, int line, const char* rule, const std::string& message) {
        m_findings.push_back({m_documents[document]->file, line, Severity::Error, message, rule});
        name(document);
    }

    // Each template is looked for once per site: many layouts share a few templates, and each
    // search walks the search path on disk.
    bool templateFound(const std::string& name, bool frame) {
        std::unordered_map<std::string, bool>& known = frame ? m_frameTemplates : m_blockTemplates;
        const auto found = known.find(name);
        if (found != known.end()) {
            return found->second;
        }
        const bool exists = m_templateFound(name, frame ? kFrameTemplates : kBlockTemplates);
        known.emplace(name, exists);
        return exists;
    }

    // The block of that ID that lookups find: the first one, in document order.
    const DocumentFacts::Block* block(const std::string& id) const {
        const auto found = m_blockFacts.find(id);
        return found == m_blockFacts.end() ? nullptr : found->second;
    }

    void checkLocation(std::size_t d, const DocumentFacts::Location& location) {
        const auto name = [&] {
            return "location " + q(location.id) + " of block " + q(location.blockId);
        };
        const DocumentFacts::Block* target = block(location.blockId);
        if (!target) {
            error(d, location.line, kLocationTarget,
                  name() + ": no document of the site defines the block");
        } else if (!location.styleId.empty() && !contains(target->styleIds, location.styleId)) {
            error(d, location.line, kLocationTarget,
                  name() + " names style " + q(location.styleId) +
                      ", which the block does not have");
        }
        if (!location.associatedBlockId.empty() && !block(location.associatedBlockId)) {
            error(d, location.line, kLocationTarget,
                  name() + " is placed relative to block " + q(location.associatedBlockId) +
                      ", which no document of the site defines");
        }
    }

    void checkTranslation(std::size_t d, const DocumentFacts::Translation& translation) {
        const DocumentFacts::Block* target = block(translation.block);
        if (!target) {
            error(d, translation.line, kTranslationKey,
                  "translation key " + q(translation.key) + " names block " + q(translation.block) +
                      ", which no document of the site defines");
        } else if (!contains(target->fieldIds, translation.field)) {
            error(d, translation.line, kTranslationKey,
                  "translation key " + q(translation.key) + " names field " + q(translation.field) +
                      ", which block " + q(translation.block) + " does not have");
        }
    }

    // By ID: a view of the ID in the facts, which outlive the index; a location's key is made.
    template <class Key>
    using Index = std::unordered_map<Key, Definitions>;

    template <class Key>
    static void define(Index<Key>& index, Key id, const Definition& where) {
        const auto inserted = index.try_emplace(std::move(id), Definitions{where, {}});
        if (!inserted.second) {
            inserted.first->second.more.push_back(where);
        }
    }

    // One finding per duplicate at each definition after the first, naming the first; when none
    // of those is checked but the first is, the first names the second. The order does not
    // matter: the findings are sorted.
    template <class Key>
    void checkDuplicates(const Index<Key>& index, const char* kind) {
        for (const auto& entry : index) {
            const Definitions& definitions = entry.second;
            if (definitions.more.empty()) {
                continue;
            }
            const std::string id = idText(kind, entry.first);
            bool reported = false;
            for (const Definition& later : definitions.more) {
                if (m_documents[later.document]->checked) {
                    reportDuplicate(kind, id, later, definitions.first);
                    reported = true;
                }
            }
            if (!reported && m_documents[definitions.first.document]->checked) {
                reportDuplicate(kind, id, definitions.first, definitions.more.front());
            }
        }
    }

    static std::string idText(const char*, std::string_view id) { return q(std::string(id)); }
    static std::string idText(const char*, const std::string& location) {
        const auto separator = location.find('\0');
        return q(location.substr(separator + 1)) + " of block " + q(location.substr(0, separator));
    }

    void reportDuplicate(const char* kind, const std::string& id, const Definition& here,
                         const Definition& other) {
        const DocumentFacts& otherDoc = *m_documents[other.document];
        error(here.document, here.line, kDuplicateId,
              std::string(kind) + " " + id + " is also defined at " + otherDoc.file +
                  // An open document's unsaved objects have no line yet.
                  (other.line > 0 ? ":" + std::to_string(other.line) : std::string()));
        name(other.document);
    }

    const std::vector<const DocumentFacts*>& m_documents;
    const TemplateLookup& m_templateFound;
    std::vector<bool>* m_named;
    std::unordered_map<std::string, bool> m_frameTemplates;
    std::unordered_map<std::string, bool> m_blockTemplates;
    Index<std::string_view> m_borders;
    Index<std::string_view> m_blocks;
    Index<std::string> m_locations;
    std::unordered_map<std::string_view, const DocumentFacts::Block*> m_blockFacts;
    std::vector<Finding> m_findings;
};

} // namespace

const std::vector<LintRule>& lintRules() {
    static const std::vector<LintRule> rules = {
        {kMissingRequiredBlock,
         "a border requires a block (core or on sheet 1) that no document of the site defines"},
        {kLocationTarget, "a location's block, style or associated block does not exist"},
        {kDefaultStyle, "a block's default style is none of its styles"},
        {kUnknownField, "a style placement, table column, row type role or input dialog entry, "
                        "symbol type line or second-language field names no field of its block"},
        {kTranslationKey, "a translation key does not split into four parts at '_', has an empty "
                          "language, block or field part, or names a block or field that does "
                          "not exist"},
        {kIdUnderscore, "a block ID, field ID, lookup key or second language contains '_', "
                        "which breaks translation keys"},
        {kMissingTemplate, "a drawing size's frame template or a style's block template is not "
                           "found along the search path"},
        {kDuplicateId, "the same border, block or location ID is defined twice in the site"},
        {kZoneCount, "a drawing size has no zones along an edge whose zones the border numbers"},
        {kDuplicateInLayout,
         "an ID occurs twice in one list of a layout: fields, styles, row types or symbol types "
         "of a block, fields of a row type, drawing sizes of a border, lookup keys of a field's "
         "choices"},
        {kTextChoice, "a text choice field has no choices, or its default choice is none of them"},
        {kDrawingSize, "a drawing size's height or length is not a positive number, or it has "
                       "fewer than 0 or more than 1000 zones along an edge"},
    };
    return rules;
}

DocumentFacts documentFacts(const LintDocument& doc) {
    DocumentFacts facts;
    facts.file = doc.file;
    facts.checked = doc.checked;
    for (const auto& border : doc.document->borderLayoutTypes(AllUnits)) {
        facts.borders.push_back({border->id, doc.lines.of(border.get())});
    }
    for (const auto& block : doc.document->blockLayouts(AllUnits)) {
        DocumentFacts::Block& kept = facts.blocks.emplace_back();
        kept.id = block->id;
        kept.line = doc.lines.of(block.get());
        kept.fieldIds = block->fieldIds();
        for (const auto& style : block->styles()) {
            kept.styleIds.push_back(style->id);
        }
    }
    for (const auto& location : doc.document->allBlockLocations()) {
        facts.locations.push_back({location->blockId, location->id, location->styleId,
                                   location->associatedBlockId, doc.lines.of(location.get())});
    }
    if (doc.checked) {
        DocumentRules(doc, facts).run();
    }
    return facts;
}

std::vector<Finding> lint(const std::vector<const DocumentFacts*>& documents,
                          const TemplateLookup& templateFound, std::vector<bool>* named) {
    return SiteRules(documents, templateFound, named).run();
}

std::vector<Finding> lint(const std::vector<LintDocument>& documents,
                          const TemplateLookup& templateFound) {
    std::vector<DocumentFacts> facts;
    facts.reserve(documents.size());
    std::vector<const DocumentFacts*> pointers;
    for (const LintDocument& doc : documents) {
        facts.push_back(documentFacts(doc));
        pointers.push_back(&facts.back());
    }
    return lint(pointers, templateFound);
}

LintDocument readLintDocument(const fs::path& file, const std::string& shownAs, bool checked) {
    return readLintDocument(file, shownAs, checked, true);
}

LintDocument readLintDocument(const fs::path& file, const std::string& shownAs, bool checked,
                              bool withLines) {
    LintDocument doc;
    doc.file = shownAs;
    doc.checked = checked;
    doc.document = FordefReader::read(file, withLines ? &doc.lines : nullptr);
    doc.lines.finish();
    return doc;
}

namespace {

// Reads each source with `read(source, reading)` on `threads` threads (0: one per core), each
// reading in its own slot. A DocumentError or a lack of memory becomes the reading's error; any
// other failure is raised in the caller's thread, as a single-threaded read would raise it, the
// first in the order of the sources.
template <class Reading, class Read>
std::vector<Reading> readOnThreads(const std::vector<LintSource>& sources, unsigned threads,
                                   const Read& read) {
    std::vector<Reading> readings(sources.size());
    // Each thread takes the next unread source; the threads share nothing else.
    std::atomic<std::size_t> next{0};
    std::vector<std::exception_ptr> failures(sources.size());
    const auto work = [&] {
        for (std::size_t i = next++; i < sources.size(); i = next++) {
            const LintSource& source = sources[i];
            try {
                read(source, readings[i]);
            } catch (const DocumentError& e) {
                readings[i].error = e.what();
                readings[i].errorLine = e.line();
                readings[i].reason = e.reason().empty() ? e.what() : e.reason();
            } catch (const std::bad_alloc&) {
                readings[i].reason = "too large to read: out of memory";
                readings[i].error = source.file.string() + ": " + readings[i].reason;
            } catch (...) {
                failures[i] = std::current_exception();
            }
        }
    };
    if (threads == 0) {
        threads = std::max(1u, std::thread::hardware_concurrency());
    }
    threads = static_cast<unsigned>(std::min<std::size_t>(threads, sources.size()));
    std::vector<std::thread> pool;
    for (unsigned t = 1; t < threads; ++t) {
        pool.emplace_back(work);
    }
    work();
    for (std::thread& thread : pool) {
        thread.join();
    }
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
    return readings;
}

// A FIFO or a device is refused without being opened: opening one could block, or act.
void refuseIrregular(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        throw DocumentError(file.string(), 0,
                            std::string("cannot open the file: ") + std::strerror(errno));
    }
    if (!S_ISREG(status.st_mode)) {
        throw DocumentError(file.string(), 0,
                            "it is " + Base::fileKind(status.st_mode) + ", not a regular file");
    }
}

} // namespace

std::vector<LintReading> readLintDocuments(const std::vector<LintSource>& sources,
                                           unsigned threads) {
    return readOnThreads<LintReading>(
        sources, threads, [](const LintSource& source, LintReading& reading) {
            reading.document = readLintDocument(source.file, source.shownAs, source.checked);
        });
}

std::vector<FactsReading> readDocumentFacts(const std::vector<LintSource>& sources, bool withLines,
                                            unsigned threads) {
    return readOnThreads<FactsReading>(
        sources, threads, [withLines](const LintSource& source, FactsReading& reading) {
            refuseIrregular(source.file);
            // The document itself is let go on this thread, as soon as its facts are taken.
            reading.facts = documentFacts(
                readLintDocument(source.file, source.shownAs, source.checked, withLines));
        });
}

LintedFiles lintFiles(const std::vector<LintSource>& sources, const TemplateLookup& templateFound,
                      unsigned threads) {
    LintedFiles result;
    std::vector<FactsReading> readings = readDocumentFacts(sources, false, threads);
    // Context documents first, in the order given, so that lookups find what the configurator
    // finds; the read ones only, each remembering its source.
    std::vector<std::size_t> order;
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t i = 0; i < readings.size(); ++i) {
            if (readings[i].error.empty() && readings[i].facts.checked == (pass == 1)) {
                order.push_back(i);
            }
        }
    }
    for (std::size_t i = 0; i < readings.size(); ++i) {
        if (!readings[i].error.empty()) {
            result.unreadable.push_back({i, readings[i].errorLine, readings[i].reason});
        }
    }
    std::vector<const DocumentFacts*> documents;
    for (std::size_t i : order) {
        documents.push_back(&readings[i].facts);
    }
    std::vector<bool> named;
    result.findings = lint(documents, templateFound, &named);
    if (result.findings.empty()) {
        return result;
    }
    // Most documents of a kept site have no finding, and recording where each element stands
    // costs more than reading it: only the documents that the findings name are read again,
    // with their lines, and the same findings are worked out with those lines.
    std::vector<LintSource> again;
    std::vector<std::size_t> againAt;
    for (std::size_t k = 0; k < order.size(); ++k) {
        if (named[k]) {
            again.push_back(sources[order[k]]);
            againAt.push_back(order[k]);
        }
    }
    std::vector<FactsReading> lined = readDocumentFacts(again, true, threads);
    for (std::size_t k = 0; k < lined.size(); ++k) {
        // A file changed or gone since the first read keeps what that read found, without lines.
        if (lined[k].error.empty()) {
            readings[againAt[k]].facts = std::move(lined[k].facts);
        }
    }
    result.findings = lint(documents, templateFound);
    return result;
}

} // namespace QorLint
