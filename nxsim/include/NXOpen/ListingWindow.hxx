#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXString.hxx>

namespace NXOpen {

/// NX's text output window.
class ListingWindow {
public:
    void Open();
    void Close();
    bool IsOpen();
    /// Appends the text and a line break; throws NXException when the window is not open.
    void WriteLine(const NXString& text);
};

} // namespace NXOpen
