#pragma once

// The resource files, dialog names and control names of the dialog framework's test dialogs in
// this folder, shared by the tests that show and bind them.

namespace TestDialogNames {

/// qorfmt_test_framework.dlg: one control of each wrapped kind.
namespace Framework {
inline constexpr char kResourceFile[] = "qorfmt_test_framework.dlg";
inline constexpr char kDialogName[] = "qorfmt_test_framework";

inline constexpr char GROUP[] = "GROUP";
inline constexpr char BUTTON[] = "BUTTON";
inline constexpr char EXIT_BUTTON[] = "EXIT_BUTTON";
inline constexpr char LABEL[] = "LABEL";
inline constexpr char LIST[] = "LIST";
inline constexpr char MENU[] = "MENU";
inline constexpr char STRING[] = "STRING";
inline constexpr char WIDE[] = "WIDE";
inline constexpr char MULTI[] = "MULTI";
inline constexpr char INTEGER[] = "INTEGER";
inline constexpr char TOGGLE[] = "TOGGLE";
} // namespace Framework

/// qorfmt_test_unnamed.dlg: a dialog without a dialog name, known by its file name.
namespace Unnamed {
inline constexpr char kResourceFile[] = "qorfmt_test_unnamed.dlg";
inline constexpr char kDialogName[] = "";

inline constexpr char BUTTON[] = "BUTTON";
} // namespace Unnamed

} // namespace TestDialogNames
