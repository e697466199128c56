#pragma once

// The resource file, dialog name and control names of the main dialog and its four pages, shared
// by the dialog and its tests.

namespace QorBorderConf {
namespace MainDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_main.dlg";
inline constexpr char kDialogName[] = "qorborder_config_main";

inline constexpr char FILEINFO[] = "FILEINFO";
inline constexpr char FILENAME[] = "FILENAME";
inline constexpr char LOCATION[] = "LOCATION";
inline constexpr char NEW_FILE[] = "NEW_FILE";
inline constexpr char OPEN_FILE[] = "OPEN_FILE";
inline constexpr char SAVE_FILE[] = "SAVE_FILE";
inline constexpr char SAVEAS_FILE[] = "SAVEAS_FILE";
inline constexpr char SAVE_ALL[] = "SAVE_ALL";
inline constexpr char MOVE_ITEMS[] = "MOVE_ITEMS";
inline constexpr char FILE_SUMMARY[] = "FILE_SUMMARY";

// Borders page.
inline constexpr char BORDERLIST[] = "BORDERLIST";
inline constexpr char NEWBORDER[] = "NEWBORDER";
inline constexpr char EDITBORDER[] = "EDITBORDER";
inline constexpr char COPYBORDER[] = "COPYBORDER";
inline constexpr char COPYBORDERFROM[] = "COPYBORDERFROM";
inline constexpr char DELETEBORDER[] = "DELETEBORDER";

// Blocks page.
inline constexpr char BLOCKLIST[] = "BLOCKLIST";
inline constexpr char NEWBLOCK[] = "NEWBLOCK";
inline constexpr char EDITBLOCK[] = "EDITBLOCK";
inline constexpr char COPYBLOCK[] = "COPYBLOCK";
inline constexpr char COPYBLOCKFROM[] = "COPYBLOCKFROM";
inline constexpr char DELETEBLOCK[] = "DELETEBLOCK";

// Locations page.
inline constexpr char BLOCK_FILTER[] = "BLOCK_FILTER";
inline constexpr char LOCATION_LIST[] = "LOCATION_LIST";
inline constexpr char NEW_LOC[] = "NEW_LOC";
inline constexpr char EDIT_LOC[] = "EDIT_LOC";
inline constexpr char COPY_LOC[] = "COPY_LOC";
inline constexpr char DELETE_LOC[] = "DELETE_LOC";
inline constexpr char MOVE_LOC_UP[] = "MOVE_LOC_UP";
inline constexpr char MOVE_LOC_DOWN[] = "MOVE_LOC_DOWN";

// Translations page.
inline constexpr char TRANSLATION_LIST[] = "TRANSLATION_LIST";
inline constexpr char NEW_TRANSLATION[] = "NEW_TRANSLATION";
inline constexpr char EDIT_TRANSLATION[] = "EDIT_TRANSLATION";
inline constexpr char DELETE_TRANSLATION[] = "DELETE_TRANSLATION";

} // namespace MainDialogNames
} // namespace QorBorderConf
