#pragma once

// The resource file, dialog name and control names of the block location dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace BlockLocationDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_blocklocation.dlg";
inline constexpr char kDialogName[] = "qorborder_config_block_location";

inline constexpr char DIALOG_TEXT[] = "DIALOG_TEXT";
inline constexpr char ID[] = "ID";
inline constexpr char BLOCK_ID[] = "BLOCK_ID";
inline constexpr char BLOCK_STYLE[] = "BLOCK_STYLE";
inline constexpr char ATTACH_CORNER[] = "ATTACH_CORNER";
inline constexpr char ASSOCIATE_TO[] = "ASSOCIATE_TO";
inline constexpr char ASSOCIATED_CORNER[] = "ASSOCIATED_CORNER";
inline constexpr char OFFSET_X[] = "OFFSET_X";
inline constexpr char OFFSET_Y[] = "OFFSET_Y";
inline constexpr char OVERFLOW_DIRECTION[] = "OVERFLOW_DIRECTION";

} // namespace BlockLocationDialogNames
} // namespace QorBorderConf
