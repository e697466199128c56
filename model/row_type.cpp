#include "model/row_type.h"

#include "model/list_util.h"

#include <algorithm>

namespace QorBorder {

RowType::RowType(const RowType& other)
    : id(other.id), zoneFieldId(other.zoneFieldId), listSeparator(other.listSeparator),
      headerRow(other.headerRow), showBottomBorder(other.showBottomBorder),
      typeManagerFieldId(other.typeManagerFieldId), keyFieldId(other.keyFieldId),
      m_fields(ListUtil::deepCopy(other.m_fields)), m_dialogListFields(other.m_dialogListFields),
      m_choiceSettings(other.m_choiceSettings) {}

// A deep copy, then a move: the member list lives in the copy constructor only.
RowType& RowType::operator=(const RowType& other) {
    if (this != &other) {
        *this = RowType(other);
    }
    return *this;
}

std::vector<boost::shared_ptr<const Field>> RowType::fields() const {
    return ListUtil::constView(m_fields);
}

boost::shared_ptr<Field> RowType::getField(int index) {
    return ListUtil::at(m_fields, index);
}

boost::shared_ptr<const Field> RowType::getField(const std::string& fieldId) const {
    for (const boost::shared_ptr<Field>& field : m_fields) {
        if (field->id == fieldId) {
            return field;
        }
    }
    return boost::shared_ptr<const Field>();
}

void RowType::addField(const boost::shared_ptr<Field>& field, StyleList& styles) {
    m_fields.push_back(field);
    // A row type that has no ID yet (a new one, whose ID reaches it when its dialog ends) would
    // leave entries under "" that no row type ever claims; its columns are stored once it has one.
    if (id.empty()) {
        return;
    }
    for (const boost::shared_ptr<BlockStyle>& style : styles) {
        if (!style->hasTableColumn(id, field->id)) {
            style->setTableColumn(id, field->id, 0);
        }
    }
}

void RowType::deleteField(int index, StyleList& styles) {
    const std::size_t at = ListUtil::checkedIndex(index, m_fields.size(), "deleteField");
    const std::string fieldId = m_fields[at]->id;
    m_fields.erase(m_fields.begin() + static_cast<long>(at));
    if (getField(fieldId)) {
        return; // another field of the row still answers to that ID
    }
    for (const boost::shared_ptr<BlockStyle>& style : styles) {
        style->removeTableColumn(id, fieldId);
    }
    m_dialogListFields.erase(
        std::remove(m_dialogListFields.begin(), m_dialogListFields.end(), fieldId),
        m_dialogListFields.end());
    if (zoneFieldId == fieldId) {
        zoneFieldId.clear();
    }
    if (keyFieldId == fieldId) {
        keyFieldId.clear();
    }
    if (typeManagerFieldId == fieldId) {
        typeManagerFieldId.clear();
        clearTypeManagerSettings();
    }
}

void RowType::fieldRenamed(int index, const std::string& oldId, StyleList& styles) {
    const std::size_t at = ListUtil::checkedIndex(index, m_fields.size(), "fieldRenamed");
    const std::string& newId = m_fields[at]->id;
    if (newId == oldId) {
        return;
    }
    for (std::string* role : {&zoneFieldId, &typeManagerFieldId, &keyFieldId}) {
        if (*role == oldId) {
            *role = newId;
        }
    }
    std::replace(m_dialogListFields.begin(), m_dialogListFields.end(), oldId, newId);
    for (const boost::shared_ptr<BlockStyle>& style : styles) {
        style->renameTableField(id, oldId, newId);
    }
}

void RowType::setDialogListFields(std::vector<std::string> fieldIds) {
    m_dialogListFields = std::move(fieldIds);
}

std::string RowType::validSymbolIndices(int choiceIndex) const {
    const auto it = m_choiceSettings.find(choiceIndex);
    return it == m_choiceSettings.end() ? std::string() : it->second.validSymbolIndices;
}

void RowType::setValidSymbolIndices(int choiceIndex, const std::string& text) {
    m_choiceSettings[choiceIndex].validSymbolIndices = text;
}

std::string RowType::disabledFieldIds(int choiceIndex) const {
    const auto it = m_choiceSettings.find(choiceIndex);
    return it == m_choiceSettings.end() ? std::string() : it->second.disabledFieldIds;
}

void RowType::setDisabledFieldIds(int choiceIndex, const std::string& text) {
    m_choiceSettings[choiceIndex].disabledFieldIds = text;
}

bool RowType::operator==(const RowType& other) const {
    return id == other.id && zoneFieldId == other.zoneFieldId &&
           listSeparator == other.listSeparator && headerRow == other.headerRow &&
           showBottomBorder == other.showBottomBorder &&
           typeManagerFieldId == other.typeManagerFieldId && keyFieldId == other.keyFieldId &&
           ListUtil::deepEqual(m_fields, other.m_fields) &&
           m_dialogListFields == other.m_dialogListFields &&
           m_choiceSettings == other.m_choiceSettings;
}

} // namespace QorBorder
