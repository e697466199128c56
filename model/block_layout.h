#pragma once

#include "model/block_style.h"
#include "model/field.h"
#include "model/frame_units_type.h"
#include "model/symbol_type.h"
#include "model/table.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace QorBorder {

/// One title block (or other block) that can be placed on a drawing. Copies are deep: every
/// field, style, row type and symbol type is copied.
class BlockLayout {
public:
    BlockLayout() = default;
    BlockLayout(const BlockLayout& other);
    BlockLayout& operator=(const BlockLayout& other);
    BlockLayout(BlockLayout&&) = default;
    BlockLayout& operator=(BlockLayout&&) = default;
    ~BlockLayout() = default;

    std::string id;
    std::string description;
    std::string category;
    std::int32_t units = Inches; ///< a FrameUnitsType, 1-based
    std::int32_t layer = 0;
    std::int32_t editMethod = 0; ///< 0 dialog file, 1 delegate functions
    std::string dialogFileName;
    std::string delegateLibrary;
    std::string setStyleDelegate;   ///< name of the set-style delegate function
    std::string editFieldsDelegate; ///< name of the edit-fields delegate function
    bool requiredBlockOnly = false;
    bool repeating = false;
    std::string repeatSpacing; ///< kept as text
    std::int32_t columnForRowNumber = 0;
    std::int32_t sbfBase = 0;
    std::string sbfFileName;
    bool flip = false;
    double angle = 0.0;
    std::int32_t borderTransition = 0;
    bool allowOverride = false;
    double maxHeightMargin = 0.0;
    std::string defaultStyleId; ///< the ID of one of its styles

    /// Several lines describing the layout, for the document summary.
    std::string informationString() const;

    void addStyle(const boost::shared_ptr<BlockStyle>& style);
    /// The layout's own style, or an empty pointer when `index` is outside the list.
    boost::shared_ptr<BlockStyle> getStyle(int index);
    /// Throws std::out_of_range.
    void deleteStyle(int index);
    std::vector<boost::shared_ptr<const BlockStyle>> styles() const;
    std::vector<boost::shared_ptr<BlockStyle>> styles2() { return m_styles; }

    void addField(const boost::shared_ptr<Field>& field);
    /// The layout's own field, or an empty pointer when `index` is outside the list.
    boost::shared_ptr<Field> getField(int index);
    /// Removes the field and, unless another field has the same ID, its style placements and
    /// the second-language references to it. Throws std::out_of_range.
    void deleteField(int index);
    std::vector<boost::shared_ptr<const Field>> fields() const;
    /// The field at `index` now has a new ID: style placements and second-language partners
    /// that named `oldId` name the new ID.
    void fieldRenamed(int index, const std::string& oldId);

    Table& getTable() { return m_table; }
    const Table& getTable() const { return m_table; }
    /// The row type at `index` of the table now has a new ID: the styles' table columns follow.
    void rowTypeRenamed(int index, const std::string& oldId);
    /// Fields of the first row type, whose fields the symbol types' lines name, have new IDs:
    /// each line entry that is a key of `oldToNewIds` takes its value, all at once, so that
    /// swapped IDs stay with their fields. The row type follows its own renames
    /// (RowType::fieldRenamed).
    void tableFieldsRenamed(const std::map<std::string, std::string>& oldToNewIds);

    void addSymbolType(const boost::shared_ptr<SymbolType>& symbolType);
    /// The layout's own symbol type, or an empty pointer when `index` is outside the list.
    boost::shared_ptr<SymbolType> getSymbolType(int index);
    /// Throws std::out_of_range.
    void deleteSymbolType(int index);
    std::vector<boost::shared_ptr<const SymbolType>> symbolTypes() const;
    /// The dialog text of each symbol type, in order.
    std::vector<std::string> symbolTypesNames() const;

    std::vector<std::string> fieldIds() const;
    std::vector<std::string> rowTypeIds() const;
    /// The field IDs of the first row type with that ID; empty when there is none.
    std::vector<std::string> tableFieldIds(const std::string& rowTypeId) const;
    /// Every field ID of the layout, in order: any field may be another's partner.
    std::vector<std::string> secondLanguageFieldIds() const;

    bool operator==(const BlockLayout& other) const;
    bool operator!=(const BlockLayout& other) const { return !(*this == other); }

private:
    std::vector<boost::shared_ptr<BlockStyle>> m_styles;
    std::vector<boost::shared_ptr<Field>> m_fields;
    Table m_table;
    std::vector<boost::shared_ptr<SymbolType>> m_symbolTypes;
};

} // namespace QorBorder
