// The rules within one document: each checked document's own findings, and its facts, what the
// rules across documents need of it (site_rules.cpp).
#include "model/lint/lint.h"
#include "model/lint/rule_names.h"

#include "model/fordef_format.h"
#include "model/zone_scheme.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

using namespace QorBorder;

namespace QorLint {

using namespace detail;

namespace {

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

} // namespace

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

} // namespace QorLint
