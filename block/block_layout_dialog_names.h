#pragma once

// The resource file, dialog name and control names of the block layout dialog, shared by the
// dialog and its tests.

namespace QorBorderConf {
namespace BlockLayoutDialogNames {

inline constexpr char kResourceFile[] = "qorfmt_config_blocklayout.dlg";
inline constexpr char kDialogName[] = "qorborder_config_block";

inline constexpr char BLOCK_ID[] = "BLOCK_ID";
inline constexpr char DESCRIPTION[] = "DESCRIPTION";
inline constexpr char CATEGORY[] = "CATEGORY";
inline constexpr char DIALOG_FILENAME[] = "DIALOG_FILENAME";
inline constexpr char UNITS[] = "UNITS";
inline constexpr char LAYER[] = "LAYER";
inline constexpr char EDIT_METHOD[] = "EDIT_METHOD";
inline constexpr char DELEGATE_LIBRARY[] = "DELEGATE_LIBRARY";
inline constexpr char FUNCTION_GROUP[] = "FUNCTION_GROUP";
inline constexpr char SET_STYLE_DELEGATE[] = "SET_STYLE_DELEGATE";
inline constexpr char EDIT_FIELDS_DELEGATE[] = "EDIT_FIELDS_DELEGATE";
inline constexpr char REQ_BLOCK_ONLY[] = "REQ_BLOCK_ONLY";
inline constexpr char REPEATING[] = "REPEATING";
inline constexpr char REPEAT_SPACING[] = "REPEAT_SPACING";
inline constexpr char COL_FOR_ROW_NUM[] = "COL_FOR_ROW_NUM";
inline constexpr char FLIP_BLOCK[] = "FLIP_BLOCK";
inline constexpr char ANGLE[] = "ANGLE";
inline constexpr char SBF_BASE[] = "SBF_BASE";
inline constexpr char SBF_FILENAME[] = "SBF_FILENAME";
inline constexpr char STYLES[] = "STYLES";
inline constexpr char ADD_STYLE[] = "ADD_STYLE";
inline constexpr char EDIT_STYLE[] = "EDIT_STYLE";
inline constexpr char COPY_STYLE[] = "COPY_STYLE";
inline constexpr char DELETE_STYLE[] = "DELETE_STYLE";
inline constexpr char SET_DEFAULT_STYLE[] = "SET_DEFAULT_STYLE";
inline constexpr char FIELDS[] = "FIELDS";
inline constexpr char ADD_FIELD[] = "ADD_FIELD";
inline constexpr char EDIT_FIELD[] = "EDIT_FIELD";
inline constexpr char COPY_FIELD[] = "COPY_FIELD";
inline constexpr char DELETE_FIELD[] = "DELETE_FIELD";
inline constexpr char ROWTYPE_GROUP[] = "ROWTYPE_GROUP";
inline constexpr char ROWTYPES[] = "ROWTYPES";
inline constexpr char ADD_ROWTYPE[] = "ADD_ROWTYPE";
inline constexpr char EDIT_ROWTYPE[] = "EDIT_ROWTYPE";
inline constexpr char DELETE_ROWTYPE[] = "DELETE_ROWTYPE";
inline constexpr char BORDER_TRANSITION[] = "BORDER_TRANSITION";
inline constexpr char ROWS_CREATED[] = "ROWS_CREATED";
inline constexpr char MAXHEIGHT_MARGIN[] = "MAXHEIGHT_MARGIN";
inline constexpr char ALLOW_OVERRIDE[] = "ALLOW_OVERRIDE";
inline constexpr char SYMBOLTYPES[] = "SYMBOLTYPES";
inline constexpr char ADD_SYMBOLTYPE[] = "ADD_SYMBOLTYPE";
inline constexpr char EDIT_SYMBOLTYPE[] = "EDIT_SYMBOLTYPE";
inline constexpr char DELETE_SYMBOLTYPE[] = "DELETE_SYMBOLTYPE";
inline constexpr char SYMBOL_GROUP[] = "SYMBOL_GROUP";
/// Held by the resource file; the dialog neither binds nor reads it.
inline constexpr char UBM_FILENAME[] = "UBM_FILENAME";

} // namespace BlockLayoutDialogNames
} // namespace QorBorderConf
