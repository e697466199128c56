#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXString.hxx>
#include <NXOpen/UIStyler_Dialog.hxx>

namespace NXOpen::UIStyler {

class Styler {
public:
    /// Creates the dialog from the resource file `file` (a name looked up along the resource
    /// path, or a path); the caller deletes it. Throws NXException naming the file when it is
    /// missing or malformed.
    Dialog* CreateStylerDialog(const NXString& file);
};

} // namespace NXOpen::UIStyler
