#pragma once

// The resource file, dialog name and control names of the symbol type dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace SymbolTypeDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_symbol.dlg";
inline constexpr char kDialogName[] = "qorborder_config_symbol_type";

inline constexpr char DIALOG_TEXT[] = "DIALOG_TEXT";
inline constexpr char TYPE[] = "TYPE";
inline constexpr char LAYER[] = "LAYER";
inline constexpr char COLOR[] = "COLOR";
inline constexpr char FONTNAME[] = "FONTNAME";
inline constexpr char SYMBOLSIZE[] = "SYMBOLSIZE";
inline constexpr char TEXTSIZE[] = "TEXTSIZE";
inline constexpr char TEXTASPECT[] = "TEXTASPECT";
inline constexpr char LINE1_SCALE[] = "LINE1_SCALE";
inline constexpr char LINE2_SCALE[] = "LINE2_SCALE";
inline constexpr char CUSTOMSYMBOLNAME[] = "CUSTOMSYMBOLNAME";
inline constexpr char IDSYMBOL_GROUP[] = "IDSYMBOL_GROUP";
inline constexpr char CUSTOMSYMBOL_GROUP[] = "CUSTOMSYMBOL_GROUP";
inline constexpr char LINE2FIELDS_GROUP[] = "LINE2FIELDS_GROUP";
inline constexpr char LINE1FIELDS_LIST[] = "LINE1FIELDS_LIST";
inline constexpr char LINE2FIELDS_LIST[] = "LINE2FIELDS_LIST";
inline constexpr char LINE1FIELDS_TO_ADD[] = "LINE1FIELDS_TO_ADD";
inline constexpr char LINE2FIELDS_TO_ADD[] = "LINE2FIELDS_TO_ADD";
inline constexpr char ADD_LINE1FIELD[] = "ADD_LINE1FIELD";
inline constexpr char MOVEUP_LINE1FIELD[] = "MOVEUP_LINE1FIELD";
inline constexpr char MOVEDOWN_LINE1FIELD[] = "MOVEDOWN_LINE1FIELD";
inline constexpr char DELETE_LINE1FIELD[] = "DELETE_LINE1FIELD";
inline constexpr char ADD_LINE2FIELD[] = "ADD_LINE2FIELD";
inline constexpr char MOVEUP_LINE2FIELD[] = "MOVEUP_LINE2FIELD";
inline constexpr char MOVEDOWN_LINE2FIELD[] = "MOVEDOWN_LINE2FIELD";
inline constexpr char DELETE_LINE2FIELD[] = "DELETE_LINE2FIELD";

} // namespace SymbolTypeDialogNames
} // namespace QorBorderConf
