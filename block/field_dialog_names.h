#pragma once

// The resource file, dialog name and control names of the field dialog, shared by the dialog and
// its tests.

namespace QorBorderConf {
namespace FieldDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_fieldsettings.dlg";
inline constexpr char kDialogName[] = "qorborder_config_field";

inline constexpr char ID[] = "ID";
inline constexpr char TYPE[] = "TYPE";
inline constexpr char CONTROL_TYPE[] = "CONTROL_TYPE";
inline constexpr char DEFAULT_STRING[] = "DEFAULT_STRING";
inline constexpr char DEFAULT_TO_CURRENT_DATE[] = "DEFAULT_TO_CURRENT_DATE";
inline constexpr char SEC_LANG_FIELD[] = "SEC_LANG_FIELD";
inline constexpr char COLLAPSENOVALUE[] = "COLLAPSENOVALUE";
inline constexpr char SYNC_FIELD[] = "SYNC_FIELD";
inline constexpr char PREFIX[] = "PREFIX";
inline constexpr char SUFFIX[] = "SUFFIX";
inline constexpr char ATTR_TITLE[] = "ATTR_TITLE";
inline constexpr char BROADCAST_TYPE[] = "BROADCAST_TYPE";
inline constexpr char BROADCAST_VALUE_TYPE[] = "BROADCAST_VALUE_TYPE";
inline constexpr char BROADCAST_TITLE[] = "BROADCAST_TITLE";
inline constexpr char CONTROLLED_SETTINGS[] = "CONTROLLED_SETTINGS";
inline constexpr char CHOICE_LIST[] = "CHOICE_LIST";
inline constexpr char ADD_CHOICE[] = "ADD_CHOICE";
inline constexpr char EDIT_CHOICE[] = "EDIT_CHOICE";
inline constexpr char COPY_CHOICE[] = "COPY_CHOICE";
inline constexpr char DELETE_CHOICE[] = "DELETE_CHOICE";
inline constexpr char DEFAULT_CHOICE[] = "DEFAULT_CHOICE";

/// The "SEC_LANG_FIELD" entry that stands for no second-language field.
inline constexpr char kNoSecondLanguageField[] = "None";

} // namespace FieldDialogNames
} // namespace QorBorderConf
