#include "model/field.h"

namespace QorBorder {

bool Field::operator==(const Field& other) const {
    return id == other.id && type == other.type && isTableField == other.isTableField &&
           secondLanguageFieldId == other.secondLanguageFieldId &&
           collapseNoValue == other.collapseNoValue && prefix == other.prefix &&
           suffix == other.suffix && broadcastType == other.broadcastType &&
           broadcastValueType == other.broadcastValueType &&
           broadcastTitle == other.broadcastTitle && syncField == other.syncField &&
           controlType == other.controlType && defaultString == other.defaultString &&
           defaultToCurrentDate == other.defaultToCurrentDate &&
           defaultChoice == other.defaultChoice && attrTitle == other.attrTitle &&
           m_textChoices == other.m_textChoices;
}

} // namespace QorBorder
