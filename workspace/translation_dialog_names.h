#pragma once

// The resource file, dialog name and control names of the translation dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace TranslationDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_seclang.dlg";
inline constexpr char kDialogName[] = "qorborder_config_translation";

inline constexpr char LANGUAGE[] = "LANGUAGE";
inline constexpr char BLOCK_ID[] = "BLOCK_ID";
inline constexpr char FIELD_ID[] = "FIELD_ID";
inline constexpr char LOOKUP_KEY[] = "LOOKUP_KEY";
inline constexpr char TRANSLATION[] = "TRANSLATION";

} // namespace TranslationDialogNames
} // namespace QorBorderConf
