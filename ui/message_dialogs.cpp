#include "ui/message_dialogs.h"

#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

namespace KivNX {
namespace UI {

void errorDialog(const std::string& title, const std::string& message) {
    NXOpen::UI::GetUI()->NXMessageBox()->Show(title, NXOpen::NXMessageBox::DialogTypeError,
                                              message);
}

void informationDialog(const std::string& title, const std::string& message) {
    NXOpen::UI::GetUI()->NXMessageBox()->Show(title, NXOpen::NXMessageBox::DialogTypeInformation,
                                              message);
}

} // namespace UI
} // namespace KivNX
