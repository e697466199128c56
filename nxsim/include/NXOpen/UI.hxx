#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UIStyler_Styler.hxx>

namespace NXOpen {

class UI {
public:
    static UI* GetUI();
    UIStyler::Styler* Styler();
    NXOpen::NXMessageBox* NXMessageBox();

private:
    UI() = default;
    UIStyler::Styler m_styler;
    NXOpen::NXMessageBox m_messageBox;
};

} // namespace NXOpen
