#include "model/symbol_type.h"

namespace QorBorder {

bool SymbolType::operator==(const SymbolType& other) const {
    return dialogText == other.dialogText && type == other.type && color == other.color &&
           layer == other.layer && line1FieldIds == other.line1FieldIds &&
           line2FieldIds == other.line2FieldIds && fontName == other.fontName &&
           symbolSize == other.symbolSize && textSize == other.textSize &&
           textAspect == other.textAspect && line1Scale == other.line1Scale &&
           line2Scale == other.line2Scale && customSymbolName == other.customSymbolName;
}

} // namespace QorBorder
