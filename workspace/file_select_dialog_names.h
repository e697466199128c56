#pragma once

// The resource file and control names of the file select dialog, shared by the dialog and its
// tests. The dialog has no dialog name: it is known by its resource file.

namespace QorBorderConf {
namespace FileSelectDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_selectfile.dlg";
inline constexpr char kDialogName[] = "";

inline constexpr char FILTER[] = "FILTER";
inline constexpr char FILE_LIST[] = "FILE_LIST";
inline constexpr char FILE_SELECTION[] = "FILE_SELECTION";
inline constexpr char OBJECT_GROUP[] = "OBJECT_GROUP";
inline constexpr char OBJECT_LABEL[] = "OBJECT_LABEL";
inline constexpr char OBJECT_LIST[] = "OBJECT_LIST";
inline constexpr char LOC_FILTER[] = "LOC_FILTER";

} // namespace FileSelectDialogNames
} // namespace QorBorderConf
