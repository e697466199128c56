// The rules across documents, on the documents' facts (document_rules.cpp): IDs defined twice,
// required blocks, locations' targets, templates along the search path, translation keys.
#include "model/lint/lint.h"
#include "model/lint/rule_names.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace QorLint {

using namespace detail;

namespace {

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

} // namespace QorLint
