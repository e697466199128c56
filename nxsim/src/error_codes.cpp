#include <nxsim/error_codes.h>

#include "internal.h"

#include <NXOpen/NXException.hxx>

namespace nxsim {

namespace {

struct Entry {
    int code;
    const char* text;
};

// The one table of error texts.
const Entry kMessages[] = {
    {ErrorCode::InterruptedByUser, "Operation interrupted by the user"},
    {ErrorCode::NotInitialized, "The Open API has not been initialized"},
    {ErrorCode::InvalidTag, "Invalid object tag"},
    {ErrorCode::NoWorkPart, "There is no work part"},
    {ErrorCode::FileNotFound, "File not found"},
    {ErrorCode::NotAPartFile, "File is not a part file"},
    {ErrorCode::DialogResourceNotFound, "Dialog resource file not found"},
    {ErrorCode::InvalidDialogResource, "Invalid dialog resource file"},
    {ErrorCode::NoSuchItem, "The dialog has no such item"},
    {ErrorCode::WrongItemKind, "The dialog item is of another kind"},
    {ErrorCode::InvalidArgument, "Invalid argument"},
    {ErrorCode::NotAllowedNow, "The operation is not allowed now"},
    {ErrorCode::NotADrawing, "The object is not a drawing"},
    {ErrorCode::NoDistance, "No distance can be computed between these objects"},
    {ErrorCode::DialogDeleted, "The dialog of this item has been deleted"},
    {ErrorCode::PartClosed, "The part has been closed"},
    {ErrorCode::NoPresenter, "No user interface is available"},
    {ErrorCode::ListingWindowClosed, "The listing window is not open"},
    {ErrorCode::Unanswered, "The user interface has no answer for this request"},
};

} // namespace

std::string errorMessage(int code) {
    for (const Entry& e : kMessages) {
        if (e.code == code) {
            return e.text;
        }
    }
    return "NX error code " + std::to_string(code);
}

namespace detail {

NXOpen::NXException ExceptionFactory::make(int code, const std::string& details) {
    std::string text = errorMessage(code);
    if (!details.empty()) {
        text += ": " + details;
    }
    return NXOpen::NXException(code, text);
}

} // namespace detail

} // namespace nxsim

namespace NXOpen {

NXException NXException::Create(int errorCode) {
    return nxsim::detail::ExceptionFactory::make(errorCode, "");
}

} // namespace NXOpen
