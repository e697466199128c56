// The corners page of the border layout dialog: the frame's bottom-left and top-right corners,
// typed or picked on the frame template's drawing sheet.

#include "border/border_layout_dialog.h"
#include "border/border_layout_dialog_names.h"
#include "model/border_layout.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/sensitivity.h"

#include <NXOpen/Drawings_DrawingSheet.hxx>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <uf_ui.h>

#include <cassert>
#include <string>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::BorderLayoutDialogNames;

namespace QorBorderConf {

namespace {

/// uc1616's answer when the user indicated a point.
constexpr int kPointIndicated = 5;

/// Asks the user for a position on the sheet; false when the user did not give one.
bool indicateCorner(double point[3]) {
    std::string cue = "Select corner point";
    int mode[2] = {0, 0};
    return uc1616(cue.data(), mode, 0, point) == kPointIndicated;
}

} // namespace

void BorderLayoutDialog::bindCornersPage() {
    KivNX::UI::DialogBinder bind(*this, *this);
    m_bottomLeftX = bind.control<RealItem>(Names::BL_X_LOC);
    m_bottomLeftY = bind.control<RealItem>(Names::BL_Y_LOC);
    m_topRightX = bind.control<RealItem>(Names::TR_X_LOC);
    m_topRightY = bind.control<RealItem>(Names::TR_Y_LOC);
    m_pickBottomLeft = bind.control<PushButton>(Names::PK_BL_CORNER);
    bind.onActivate(*m_pickBottomLeft, &BorderLayoutDialog::onPickBottomLeftActivated,
                    OpensDialog::Yes);
    bind.update(*m_pickBottomLeft, &BorderLayoutDialog::updatePickCornerSensitivity);
    m_pickTopRight = bind.control<PushButton>(Names::PK_TR_CORNER);
    bind.onActivate(*m_pickTopRight, &BorderLayoutDialog::onPickTopRightActivated,
                    OpensDialog::Yes);
    bind.update(*m_pickTopRight, &BorderLayoutDialog::updatePickCornerSensitivity);
}

void BorderLayoutDialog::fillCornersPage() {
    assert(m_bottomLeftX && m_bottomLeftY && m_topRightX && m_topRightY);
    m_bottomLeftX->SetItemValue(m_layout->bottomLeft.x);
    m_bottomLeftY->SetItemValue(m_layout->bottomLeft.y);
    m_topRightX->SetItemValue(m_layout->topRight.x);
    m_topRightY->SetItemValue(m_layout->topRight.y);
}

void BorderLayoutDialog::commitCornersPage() {
    assert(m_bottomLeftX && m_bottomLeftY && m_topRightX && m_topRightY);
    m_layout->bottomLeft = {m_bottomLeftX->ItemValue(), m_bottomLeftY->ItemValue(), 0.0};
    m_layout->topRight = {m_topRightX->ItemValue(), m_topRightY->ItemValue(), 0.0};
}

DialogState BorderLayoutDialog::onPickBottomLeftActivated(StylerEvent* /*event*/) {
    double point[3] = {0.0, 0.0, 0.0};
    if (!indicateCorner(point)) {
        return DialogStateContinueDialog;
    }
    m_bottomLeftX->SetItemValue(point[0]);
    m_bottomLeftY->SetItemValue(point[1]);
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onPickTopRightActivated(StylerEvent* /*event*/) {
    double point[3] = {0.0, 0.0, 0.0};
    if (!indicateCorner(point)) {
        return DialogStateContinueDialog;
    }
    // The top-right corner is kept as its distances from the sheet's right and top edges.
    NXOpen::Part* work = NXOpen::Session::GetSession()->Parts()->Work();
    NXOpen::Drawings::DrawingSheet* sheet =
        work ? work->DrawingSheets()->CurrentDrawingSheet() : nullptr;
    if (!sheet) {
        KivNX::UI::errorDialog("Error", "The work part has no open drawing sheet.");
        return DialogStateContinueDialog;
    }
    m_topRightX->SetItemValue(sheet->Length() - point[0]);
    m_topRightY->SetItemValue(sheet->Height() - point[1]);
    return DialogStateContinueDialog;
}

void BorderLayoutDialog::updatePickCornerSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_template != nullptr);
}

} // namespace QorBorderConf
