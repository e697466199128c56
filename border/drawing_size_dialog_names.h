#pragma once

// The resource file, dialog name and control names of the drawing size dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace DrawingSizeDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_draw_size.dlg";
inline constexpr char kDialogName[] = "qorborder_config_drawing_size";

inline constexpr char NAME[] = "NAME";
inline constexpr char DESC[] = "DESC";
inline constexpr char LABEL[] = "LABEL";
inline constexpr char TEMPLATE_FILE[] = "TEMPLATE_FILE";
inline constexpr char BROWSE_TEMPLATE[] = "BROWSE_TEMPLATE";
inline constexpr char EXTRACT_DIMS[] = "EXTRACT_DIMS";
inline constexpr char HEIGHT[] = "HEIGHT";
inline constexpr char LENGTH[] = "LENGTH";
inline constexpr char FRAME_LENGTH[] = "FRAME_LENGTH";
inline constexpr char PK_FRAME_LENGTH[] = "PK_FRAME_LENGTH";
inline constexpr char HORZ_ZONES[] = "HORZ_ZONES";
inline constexpr char VERT_ZONES[] = "VERT_ZONES";

} // namespace DrawingSizeDialogNames
} // namespace QorBorderConf
