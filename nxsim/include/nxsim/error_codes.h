#pragma once

#include <string>

namespace nxsim {

/// Error codes of the platform; their texts live in one table (error_codes.cpp).
namespace ErrorCode {
constexpr int InterruptedByUser = 1105003;
constexpr int NotInitialized = 3520001;
constexpr int InvalidTag = 3520002;
constexpr int NoWorkPart = 3520003;
constexpr int FileNotFound = 3520004;
constexpr int NotAPartFile = 3520005;
constexpr int DialogResourceNotFound = 3520006;
constexpr int InvalidDialogResource = 3520007;
constexpr int NoSuchItem = 3520008;
constexpr int WrongItemKind = 3520009;
constexpr int InvalidArgument = 3520010;
constexpr int NotAllowedNow = 3520011;
constexpr int NotADrawing = 3520012;
constexpr int NoDistance = 3520013;
constexpr int DialogDeleted = 3520014;
constexpr int PartClosed = 3520015;
constexpr int NoPresenter = 3520016;
constexpr int ListingWindowClosed = 3520017;
constexpr int Unanswered = 3520018;
} // namespace ErrorCode

/// The table's text for `code`; "NX error code N" for a code not in the table.
std::string errorMessage(int code);

} // namespace nxsim
