#pragma once

// The resource file, dialog name and control names of the row type dialog, shared by the dialog
// and its tests.

namespace QorBorderConf {
namespace RowTypeDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_rowtype.dlg";
inline constexpr char kDialogName[] = "qorborder_config_row_type";

inline constexpr char ID[] = "ID";
inline constexpr char HEADER_ROW[] = "HEADER_ROW";
inline constexpr char SHOW_BOTTOM_BORDER[] = "SHOW_BOTTOM_BORDER";
inline constexpr char LIST_SEPARATOR[] = "LIST_SEPARATOR";
inline constexpr char FIELD_LIST[] = "FIELD_LIST";
inline constexpr char ADD_FIELD[] = "ADD_FIELD";
inline constexpr char COPY_FIELD[] = "COPY_FIELD";
inline constexpr char EDIT_FIELD[] = "EDIT_FIELD";
inline constexpr char DELETE_FIELD[] = "DELETE_FIELD";
inline constexpr char SET_ZONE[] = "SET_ZONE";
inline constexpr char SET_TYPE_MANAGER[] = "SET_TYPE_MANAGER";
inline constexpr char SET_KEY_FIELD[] = "SET_KEY_FIELD";
inline constexpr char DIALOGFIELDS_LIST[] = "DIALOGFIELDS_LIST";
inline constexpr char DIALOGFIELDS_TO_ADD[] = "DIALOGFIELDS_TO_ADD";
inline constexpr char ADD_DIALOGFIELD[] = "ADD_DIALOGFIELD";
inline constexpr char MOVEUP_DIALOGFIELD[] = "MOVEUP_DIALOGFIELD";
inline constexpr char MOVEDOWN_DIALOGFIELD[] = "MOVEDOWN_DIALOGFIELD";
inline constexpr char DELETE_DIALOGFIELD[] = "DELETE_DIALOGFIELD";
inline constexpr char TYPE_MANAGER_CHOICE[] = "TYPE_MANAGER_CHOICE";
inline constexpr char VALID_SYMBOL_LIST[] = "VALID_SYMBOL_LIST";
inline constexpr char DISABLED_FIELD_LIST[] = "DISABLED_FIELD_LIST";

} // namespace RowTypeDialogNames
} // namespace QorBorderConf
