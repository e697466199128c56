#pragma once

// The resource file, dialog name and control names of the block style dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace BlockStyleDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_blockstyle.dlg";
inline constexpr char kDialogName[] = "qorborder_config_block_style";

inline constexpr char ID[] = "ID";
inline constexpr char DIALOG_TEXT[] = "DIALOG_TEXT";
inline constexpr char TEMPLATE_FILE[] = "TEMPLATE_FILE";
inline constexpr char BROWSE_TEMPLATE[] = "BROWSE_TEMPLATE";
inline constexpr char TEMPLATE_TYPE[] = "TEMPLATE_TYPE";
inline constexpr char TABULAR_NOTE_SETTINGS[] = "TABULAR_NOTE_SETTINGS";
inline constexpr char FIELD_SETTINGS[] = "FIELD_SETTINGS";
inline constexpr char FIELD_LIST[] = "FIELD_LIST";
inline constexpr char ROW_LOC[] = "ROW_LOC";
inline constexpr char COL_LOC[] = "COL_LOC";
inline constexpr char IN_HEADER[] = "IN_HEADER";
inline constexpr char TABLE_SETTINGS[] = "TABLE_SETTINGS";
inline constexpr char ROW_TYPE[] = "ROW_TYPE";
inline constexpr char TABLE_FIELD[] = "TABLE_FIELD";
inline constexpr char TABLE_FIELD_COLUMN[] = "TABLE_FIELD_COLUMN";
inline constexpr char GENERAL_SETTINGS[] = "GENERAL_SETTINGS";
inline constexpr char FIELD_INDEX_LIST[] = "FIELD_INDEX_LIST";
inline constexpr char FIELD_INDEX[] = "FIELD_INDEX";

} // namespace BlockStyleDialogNames
} // namespace QorBorderConf
