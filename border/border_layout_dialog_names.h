#pragma once

// The resource file, dialog name and control names of the border layout dialog and its frame
// pages, shared by the dialog and its tests.

namespace QorBorderConf {
namespace BorderLayoutDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_borderlayout.dlg";
inline constexpr char kDialogName[] = "qorborder_config_border";

// The main page.
inline constexpr char FORMAT_ID[] = "FORMAT_ID";
inline constexpr char DESCRIPTION[] = "DESCRIPTION";
inline constexpr char CATEGORY[] = "CATEGORY";
inline constexpr char SECOND_LANGUAGES[] = "SECOND_LANGUAGES";
inline constexpr char CORE_REQUIRED[] = "CORE_REQUIRED";
inline constexpr char SH1_REQUIRED[] = "SH1_REQUIRED";
inline constexpr char AVAIL_BLOCKS[] = "AVAIL_BLOCKS";
inline constexpr char MAKE_CORE[] = "MAKE_CORE";
inline constexpr char MAKE_SH1[] = "MAKE_SH1";
inline constexpr char REMOVE_CORE[] = "REMOVE_CORE";
inline constexpr char REMOVE_SH1[] = "REMOVE_SH1";

// The frame pages.
inline constexpr char UNITS[] = "UNITS";
inline constexpr char LAYER[] = "LAYER";
inline constexpr char BL_X_LOC[] = "BL_X_LOC";
inline constexpr char BL_Y_LOC[] = "BL_Y_LOC";
inline constexpr char TR_X_LOC[] = "TR_X_LOC";
inline constexpr char TR_Y_LOC[] = "TR_Y_LOC";
inline constexpr char PK_BL_CORNER[] = "PK_BL_CORNER";
inline constexpr char PK_TR_CORNER[] = "PK_TR_CORNER";
inline constexpr char HORZ_TYPE[] = "HORZ_TYPE";
inline constexpr char VERT_TYPE[] = "VERT_TYPE";
inline constexpr char ZONE_START[] = "ZONE_START";
inline constexpr char FRAME_SIZES[] = "FRAME_SIZES";
inline constexpr char ADD_FRAME_SIZE[] = "ADD_FRAME_SIZE";
inline constexpr char COPY_FRAME_SIZE[] = "COPY_FRAME_SIZE";
inline constexpr char EDIT_FRAME_SIZE[] = "EDIT_FRAME_SIZE";
inline constexpr char CUT_FRAME_SIZE[] = "CUT_FRAME_SIZE";
inline constexpr char OPEN_TEMPLATE[] = "OPEN_TEMPLATE";

} // namespace BorderLayoutDialogNames
} // namespace QorBorderConf
