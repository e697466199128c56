#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace QorBorder {

/// Where one field of a block layout goes in a style's template.
struct FieldPlacement {
    std::int32_t row = 0;
    std::int32_t column = 0;
    bool inHeader = false;
    std::int32_t fieldIndex = 0;

    bool operator==(const FieldPlacement& other) const {
        return row == other.row && column == other.column && inHeader == other.inHeader &&
               fieldIndex == other.fieldIndex;
    }
    bool operator!=(const FieldPlacement& other) const { return !(*this == other); }
};

/// How a block layout is drawn from one template part. Getters of keys that the style does not
/// hold return 0 / false; setters create the entry.
class BlockStyle {
public:
    using TableColumnKey = std::pair<std::string, std::string>; ///< row type ID, table field ID

    std::string id;
    std::string dialogText;
    std::string templateFile;      ///< file name of the template part, with its extension
    std::int32_t templateType = 0; ///< 0 tabular note template, 1 the other kind

    std::int32_t getRow(const std::string& fieldId) const;
    void setRow(const std::string& fieldId, std::int32_t row);
    std::int32_t getColumn(const std::string& fieldId) const;
    void setColumn(const std::string& fieldId, std::int32_t column);
    bool isFieldInHeader(const std::string& fieldId) const;
    void setFieldInHeader(const std::string& fieldId, bool inHeader);
    std::int32_t getFieldIndex(const std::string& fieldId) const;
    void setFieldIndex(const std::string& fieldId, std::int32_t index);
    std::int32_t getTableColumn(const std::string& rowTypeId, const std::string& fieldId) const;
    void setTableColumn(const std::string& rowTypeId, const std::string& fieldId,
                        std::int32_t column);

    /// Replaces the whole placement of a field.
    void setPlacement(const std::string& fieldId, const FieldPlacement& placement) {
        m_placements[fieldId] = placement;
    }
    bool hasPlacement(const std::string& fieldId) const;
    bool hasTableColumn(const std::string& rowTypeId, const std::string& fieldId) const;
    void removePlacement(const std::string& fieldId);
    void removeTableColumn(const std::string& rowTypeId, const std::string& fieldId);
    /// Moves the entry of `oldId` to `newId`, replacing what `newId` held.
    void renamePlacement(const std::string& oldId, const std::string& newId);
    /// Moves every table column entry of row type `oldId` to `newId`.
    void renameRowType(const std::string& oldId, const std::string& newId);
    /// Moves the table column entry of (rowTypeId, oldFieldId) to (rowTypeId, newFieldId).
    void renameTableField(const std::string& rowTypeId, const std::string& oldFieldId,
                          const std::string& newFieldId);

    const std::map<std::string, FieldPlacement>& placements() const { return m_placements; }
    const std::map<TableColumnKey, std::int32_t>& tableColumns() const { return m_tableColumns; }

    bool operator==(const BlockStyle& other) const;
    bool operator!=(const BlockStyle& other) const { return !(*this == other); }

private:
    std::map<std::string, FieldPlacement> m_placements;
    std::map<TableColumnKey, std::int32_t> m_tableColumns;
};

} // namespace QorBorder
