#pragma once

#include "model/block_style.h"
#include "model/field.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace QorBorder {

/// Texts stored for one choice of a row type's type manager field.
struct TypeManagerChoiceSettings {
    std::string validSymbolIndices;
    std::string disabledFieldIds;

    bool operator==(const TypeManagerChoiceSettings& other) const {
        return validSymbolIndices == other.validSymbolIndices &&
               disabledFieldIds == other.disabledFieldIds;
    }
    bool operator!=(const TypeManagerChoiceSettings& other) const { return !(*this == other); }
};

/// One kind of row of a block layout's table. Copies are deep (fields included).
class RowType {
public:
    using StyleList = std::vector<boost::shared_ptr<BlockStyle>>;

    RowType() = default;
    RowType(const RowType& other);
    RowType& operator=(const RowType& other);
    RowType(RowType&&) = default;
    RowType& operator=(RowType&&) = default;
    ~RowType() = default;

    std::string id;
    std::string zoneFieldId; ///< empty when unassigned
    std::string listSeparator;
    std::int32_t headerRow = 0;
    bool showBottomBorder = false;
    std::string typeManagerFieldId; ///< empty when unassigned
    std::string keyFieldId;         ///< empty when unassigned

    std::vector<boost::shared_ptr<const Field>> fields() const;
    /// The row's own field, or an empty pointer when `index` is outside the list.
    boost::shared_ptr<Field> getField(int index);
    /// The first field with that ID, or an empty pointer.
    boost::shared_ptr<const Field> getField(const std::string& id) const;
    /// Appends; every style gets a table column entry (0) for the new field unless it has one,
    /// provided the row type has an ID.
    void addField(const boost::shared_ptr<Field>& field, StyleList& styles);
    /// Removes the field and, unless another field of the row has the same ID, its entries in
    /// the styles, its place in the dialog list and the roles it held. Throws std::out_of_range.
    void deleteField(int index, StyleList& styles);
    /// Appends without touching any style (used when a document is read).
    void appendField(const boost::shared_ptr<Field>& field) { m_fields.push_back(field); }
    /// The field at `index` now has a new ID: roles, dialog list and style entries follow it.
    void fieldRenamed(int index, const std::string& oldId, StyleList& styles);

    std::vector<std::string> dialogListFields() const { return m_dialogListFields; }
    void setDialogListFields(std::vector<std::string> fieldIds);

    /// "" for a choice without stored text.
    std::string validSymbolIndices(int choiceIndex) const;
    void setValidSymbolIndices(int choiceIndex, const std::string& text);
    std::string disabledFieldIds(int choiceIndex) const;
    void setDisabledFieldIds(int choiceIndex, const std::string& text);
    void clearTypeManagerSettings() { m_choiceSettings.clear(); }
    const std::map<int, TypeManagerChoiceSettings>& typeManagerSettings() const {
        return m_choiceSettings;
    }

    bool operator==(const RowType& other) const;
    bool operator!=(const RowType& other) const { return !(*this == other); }

private:
    std::vector<boost::shared_ptr<Field>> m_fields;
    std::vector<std::string> m_dialogListFields;
    std::map<int, TypeManagerChoiceSettings> m_choiceSettings;
};

} // namespace QorBorder
