#pragma once

// The resource file, dialog name and control names of the text choice dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace TextChoiceDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_choice.dlg";
inline constexpr char kDialogName[] = "qorborder_config_choice";

inline constexpr char SHORT_VALUE[] = "SHORT_VALUE";
inline constexpr char LOOKUP_KEY[] = "LOOKUP_KEY";
inline constexpr char FULL_VALUE[] = "FULL_VALUE";

} // namespace TextChoiceDialogNames
} // namespace QorBorderConf
