#include "model/block_style.h"

namespace QorBorder {

namespace {

FieldPlacement placementOf(const std::map<std::string, FieldPlacement>& placements,
                           const std::string& fieldId) {
    const auto it = placements.find(fieldId);
    return it == placements.end() ? FieldPlacement() : it->second;
}

} // namespace

std::int32_t BlockStyle::getRow(const std::string& fieldId) const {
    return placementOf(m_placements, fieldId).row;
}

void BlockStyle::setRow(const std::string& fieldId, std::int32_t row) {
    m_placements[fieldId].row = row;
}

std::int32_t BlockStyle::getColumn(const std::string& fieldId) const {
    return placementOf(m_placements, fieldId).column;
}

void BlockStyle::setColumn(const std::string& fieldId, std::int32_t column) {
    m_placements[fieldId].column = column;
}

bool BlockStyle::isFieldInHeader(const std::string& fieldId) const {
    return placementOf(m_placements, fieldId).inHeader;
}

void BlockStyle::setFieldInHeader(const std::string& fieldId, bool inHeader) {
    m_placements[fieldId].inHeader = inHeader;
}

std::int32_t BlockStyle::getFieldIndex(const std::string& fieldId) const {
    return placementOf(m_placements, fieldId).fieldIndex;
}

void BlockStyle::setFieldIndex(const std::string& fieldId, std::int32_t index) {
    m_placements[fieldId].fieldIndex = index;
}

std::int32_t BlockStyle::getTableColumn(const std::string& rowTypeId,
                                        const std::string& fieldId) const {
    const auto it = m_tableColumns.find(TableColumnKey(rowTypeId, fieldId));
    return it == m_tableColumns.end() ? 0 : it->second;
}

void BlockStyle::setTableColumn(const std::string& rowTypeId, const std::string& fieldId,
                                std::int32_t column) {
    m_tableColumns[TableColumnKey(rowTypeId, fieldId)] = column;
}

bool BlockStyle::hasPlacement(const std::string& fieldId) const {
    return m_placements.count(fieldId) != 0;
}

bool BlockStyle::hasTableColumn(const std::string& rowTypeId, const std::string& fieldId) const {
    return m_tableColumns.count(TableColumnKey(rowTypeId, fieldId)) != 0;
}

void BlockStyle::removePlacement(const std::string& fieldId) {
    m_placements.erase(fieldId);
}

void BlockStyle::removeTableColumn(const std::string& rowTypeId, const std::string& fieldId) {
    m_tableColumns.erase(TableColumnKey(rowTypeId, fieldId));
}

void BlockStyle::renamePlacement(const std::string& oldId, const std::string& newId) {
    const auto it = m_placements.find(oldId);
    if (it == m_placements.end() || oldId == newId) {
        return;
    }
    const FieldPlacement placement = it->second;
    m_placements.erase(it);
    m_placements[newId] = placement;
}

void BlockStyle::renameRowType(const std::string& oldId, const std::string& newId) {
    if (oldId == newId) {
        return;
    }
    std::map<TableColumnKey, std::int32_t> moved;
    for (auto it = m_tableColumns.begin(); it != m_tableColumns.end();) {
        if (it->first.first == oldId) {
            moved[TableColumnKey(newId, it->first.second)] = it->second;
            it = m_tableColumns.erase(it);
        } else {
            ++it;
        }
    }
    for (const auto& entry : moved) {
        m_tableColumns[entry.first] = entry.second;
    }
}

void BlockStyle::renameTableField(const std::string& rowTypeId, const std::string& oldFieldId,
                                  const std::string& newFieldId) {
    const auto it = m_tableColumns.find(TableColumnKey(rowTypeId, oldFieldId));
    if (it == m_tableColumns.end() || oldFieldId == newFieldId) {
        return;
    }
    const std::int32_t column = it->second;
    m_tableColumns.erase(it);
    m_tableColumns[TableColumnKey(rowTypeId, newFieldId)] = column;
}

bool BlockStyle::operator==(const BlockStyle& other) const {
    return id == other.id && dialogText == other.dialogText && templateFile == other.templateFile &&
           templateType == other.templateType && m_placements == other.m_placements &&
           m_tableColumns == other.m_tableColumns;
}

} // namespace QorBorder
