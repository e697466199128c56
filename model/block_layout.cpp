#include "model/block_layout.h"

#include "model/list_util.h"

#include <sstream>

namespace QorBorder {

BlockLayout::BlockLayout(const BlockLayout& other)
    : id(other.id), description(other.description), category(other.category), units(other.units),
      layer(other.layer), editMethod(other.editMethod), dialogFileName(other.dialogFileName),
      delegateLibrary(other.delegateLibrary), setStyleDelegate(other.setStyleDelegate),
      editFieldsDelegate(other.editFieldsDelegate), requiredBlockOnly(other.requiredBlockOnly),
      repeating(other.repeating), repeatSpacing(other.repeatSpacing),
      columnForRowNumber(other.columnForRowNumber), sbfBase(other.sbfBase),
      sbfFileName(other.sbfFileName), flip(other.flip), angle(other.angle),
      borderTransition(other.borderTransition), allowOverride(other.allowOverride),
      maxHeightMargin(other.maxHeightMargin), defaultStyleId(other.defaultStyleId),
      m_styles(ListUtil::deepCopy(other.m_styles)), m_fields(ListUtil::deepCopy(other.m_fields)),
      m_table(other.m_table), m_symbolTypes(ListUtil::deepCopy(other.m_symbolTypes)) {}

// A deep copy, then a move: the member list lives in the copy constructor only.
BlockLayout& BlockLayout::operator=(const BlockLayout& other) {
    if (this != &other) {
        *this = BlockLayout(other);
    }
    return *this;
}

std::string BlockLayout::informationString() const {
    std::ostringstream out;
    out << "Block " << id << ": " << description << "\n";
    out << "  Category: " << category << "\n";
    out << "  Units: " << units << ", layer: " << layer << "\n";
    out << "  Edit method: "
        << (editMethod == 0 ? "dialog file " + dialogFileName
                            : "delegate functions in " + delegateLibrary)
        << "\n";
    out << "  Default style: " << defaultStyleId << "\n";
    out << "  Styles: " << m_styles.size() << ", fields: " << m_fields.size()
        << ", row types: " << m_table.rowTypeCount() << ", symbol types: " << m_symbolTypes.size();
    for (const boost::shared_ptr<Field>& field : m_fields) {
        out << "\n    Field " << field->id << " (type " << field->type << ")";
    }
    return out.str();
}

void BlockLayout::addStyle(const boost::shared_ptr<BlockStyle>& style) {
    m_styles.push_back(style);
}

boost::shared_ptr<BlockStyle> BlockLayout::getStyle(int index) {
    return ListUtil::at(m_styles, index);
}

void BlockLayout::deleteStyle(int index) {
    ListUtil::erase(m_styles, index, "deleteStyle");
}

std::vector<boost::shared_ptr<const BlockStyle>> BlockLayout::styles() const {
    return ListUtil::constView(m_styles);
}

void BlockLayout::addField(const boost::shared_ptr<Field>& field) {
    m_fields.push_back(field);
}

boost::shared_ptr<Field> BlockLayout::getField(int index) {
    return ListUtil::at(m_fields, index);
}

void BlockLayout::deleteField(int index) {
    const std::size_t at = ListUtil::checkedIndex(index, m_fields.size(), "deleteField");
    const std::string fieldId = m_fields[at]->id;
    m_fields.erase(m_fields.begin() + static_cast<long>(at));
    for (const boost::shared_ptr<Field>& field : m_fields) {
        if (field->id == fieldId) {
            return; // another field still answers to that ID
        }
    }
    for (const boost::shared_ptr<BlockStyle>& style : m_styles) {
        style->removePlacement(fieldId);
    }
    for (const boost::shared_ptr<Field>& field : m_fields) {
        if (field->secondLanguageFieldId == fieldId) {
            field->secondLanguageFieldId.clear();
        }
    }
}

std::vector<boost::shared_ptr<const Field>> BlockLayout::fields() const {
    return ListUtil::constView(m_fields);
}

void BlockLayout::fieldRenamed(int index, const std::string& oldId) {
    const std::size_t at = ListUtil::checkedIndex(index, m_fields.size(), "fieldRenamed");
    const std::string newId = m_fields[at]->id;
    if (newId == oldId) {
        return;
    }
    for (const boost::shared_ptr<BlockStyle>& style : m_styles) {
        style->renamePlacement(oldId, newId);
    }
    for (const boost::shared_ptr<Field>& field : m_fields) {
        if (field->secondLanguageFieldId == oldId) {
            field->secondLanguageFieldId = newId;
        }
    }
}

void BlockLayout::rowTypeRenamed(int index, const std::string& oldId) {
    const boost::shared_ptr<RowType> rowType = m_table.getRowType(index);
    if (!rowType) {
        ListUtil::checkedIndex(index, m_table.rowTypeCount(), "rowTypeRenamed");
    }
    for (const boost::shared_ptr<BlockStyle>& style : m_styles) {
        style->renameRowType(oldId, rowType->id);
    }
}

void BlockLayout::tableFieldsRenamed(const std::map<std::string, std::string>& oldToNewIds) {
    for (const boost::shared_ptr<SymbolType>& symbolType : m_symbolTypes) {
        for (std::vector<std::string>* line :
             {&symbolType->line1FieldIds, &symbolType->line2FieldIds}) {
            for (std::string& fieldId : *line) {
                const auto renamed = oldToNewIds.find(fieldId);
                if (renamed != oldToNewIds.end()) {
                    fieldId = renamed->second;
                }
            }
        }
    }
}

void BlockLayout::addSymbolType(const boost::shared_ptr<SymbolType>& symbolType) {
    m_symbolTypes.push_back(symbolType);
}

boost::shared_ptr<SymbolType> BlockLayout::getSymbolType(int index) {
    return ListUtil::at(m_symbolTypes, index);
}

void BlockLayout::deleteSymbolType(int index) {
    ListUtil::erase(m_symbolTypes, index, "deleteSymbolType");
}

std::vector<boost::shared_ptr<const SymbolType>> BlockLayout::symbolTypes() const {
    return ListUtil::constView(m_symbolTypes);
}

std::vector<std::string> BlockLayout::symbolTypesNames() const {
    std::vector<std::string> names;
    names.reserve(m_symbolTypes.size());
    for (const boost::shared_ptr<SymbolType>& symbolType : m_symbolTypes) {
        names.push_back(symbolType->dialogText);
    }
    return names;
}

std::vector<std::string> BlockLayout::fieldIds() const {
    std::vector<std::string> ids;
    ids.reserve(m_fields.size());
    for (const boost::shared_ptr<Field>& field : m_fields) {
        ids.push_back(field->id);
    }
    return ids;
}

std::vector<std::string> BlockLayout::rowTypeIds() const {
    std::vector<std::string> ids;
    for (const boost::shared_ptr<const RowType>& rowType : m_table.rowTypes()) {
        ids.push_back(rowType->id);
    }
    return ids;
}

std::vector<std::string> BlockLayout::tableFieldIds(const std::string& rowTypeId) const {
    std::vector<std::string> ids;
    for (const boost::shared_ptr<const RowType>& rowType : m_table.rowTypes()) {
        if (rowType->id == rowTypeId) {
            for (const boost::shared_ptr<const Field>& field : rowType->fields()) {
                ids.push_back(field->id);
            }
            break;
        }
    }
    return ids;
}

std::vector<std::string> BlockLayout::secondLanguageFieldIds() const {
    return fieldIds();
}

bool BlockLayout::operator==(const BlockLayout& other) const {
    return id == other.id && description == other.description && category == other.category &&
           units == other.units && layer == other.layer && editMethod == other.editMethod &&
           dialogFileName == other.dialogFileName && delegateLibrary == other.delegateLibrary &&
           setStyleDelegate == other.setStyleDelegate &&
           editFieldsDelegate == other.editFieldsDelegate &&
           requiredBlockOnly == other.requiredBlockOnly && repeating == other.repeating &&
           repeatSpacing == other.repeatSpacing && columnForRowNumber == other.columnForRowNumber &&
           sbfBase == other.sbfBase && sbfFileName == other.sbfFileName && flip == other.flip &&
           angle == other.angle && borderTransition == other.borderTransition &&
           allowOverride == other.allowOverride && maxHeightMargin == other.maxHeightMargin &&
           defaultStyleId == other.defaultStyleId &&
           ListUtil::deepEqual(m_styles, other.m_styles) &&
           ListUtil::deepEqual(m_fields, other.m_fields) && m_table == other.m_table &&
           ListUtil::deepEqual(m_symbolTypes, other.m_symbolTypes);
}

} // namespace QorBorder
