// The frame sizes page of the border layout dialog: units and layer, the border's drawing sizes
// and the frame template part that the corner picks work on.

#include "border/border_layout_dialog.h"
#include "border/border_layout_dialog_names.h"
#include "border/drawing_size_dialog.h"
#include "border/frame_template.h"
#include "model/border_layout.h"
#include "ui/dialog_binder.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"

#include <cassert>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::BorderLayoutDialogNames;

namespace QorBorderConf {

void BorderLayoutDialog::bindFrameSizesPage() {
    KivNX::UI::DialogBinder bind(*this, *this);
    m_units = bind.control<KivNX::UI::OptionMenu>(Names::UNITS);
    m_layer = bind.control<IntegerItem>(Names::LAYER);
    m_frameSizes = bind.control<KivNX::UI::SingleSelectList>(Names::FRAME_SIZES);
    bind.onActivate(*m_frameSizes, &BorderLayoutDialog::onFrameSizesActivated, OpensDialog::No);
    m_addFrameSize = bind.control<PushButton>(Names::ADD_FRAME_SIZE);
    bind.onActivate(*m_addFrameSize, &BorderLayoutDialog::onAddFrameSizeActivated,
                    OpensDialog::Yes);
    m_copyFrameSize = bind.control<PushButton>(Names::COPY_FRAME_SIZE);
    bind.onActivate(*m_copyFrameSize, &BorderLayoutDialog::onCopyFrameSizeActivated,
                    OpensDialog::Yes);
    bind.update(*m_copyFrameSize, &BorderLayoutDialog::updateFrameSizeActionSensitivity);
    m_editFrameSize = bind.control<PushButton>(Names::EDIT_FRAME_SIZE);
    bind.onActivate(*m_editFrameSize, &BorderLayoutDialog::onEditFrameSizeActivated,
                    OpensDialog::Yes);
    bind.update(*m_editFrameSize, &BorderLayoutDialog::updateFrameSizeActionSensitivity);
    m_cutFrameSize = bind.control<PushButton>(Names::CUT_FRAME_SIZE);
    bind.onActivate(*m_cutFrameSize, &BorderLayoutDialog::onCutFrameSizeActivated, OpensDialog::No);
    bind.update(*m_cutFrameSize, &BorderLayoutDialog::updateFrameSizeActionSensitivity);
    m_openTemplate = bind.control<PushButton>(Names::OPEN_TEMPLATE);
    bind.onActivate(*m_openTemplate, &BorderLayoutDialog::onOpenTemplateActivated, OpensDialog::No);
    bind.update(*m_openTemplate, &BorderLayoutDialog::updateOpenTemplateSensitivity);
}

void BorderLayoutDialog::fillFrameSizesPage() {
    assert(m_units && m_layer);
    m_layer->SetItemValue(m_layout->layer);
    m_units->SetItemValue(m_layout->units - 1);
    fillFrameSizeList();
}

void BorderLayoutDialog::commitFrameSizesPage() {
    assert(m_units && m_layer);
    m_layout->units = m_units->ItemValue() + 1;
    m_layout->layer = m_layer->ItemValue();
}

void BorderLayoutDialog::fillFrameSizeList() {
    assert(m_frameSizes);
    m_frameSizes->ClearList();
    m_frameSizes->SetListItems(m_layout->drawingSizeDescriptions());
}

DialogState BorderLayoutDialog::onFrameSizesActivated(StylerEvent* /*event*/) {
    // Selecting a size only changes which size actions are sensitive.
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onAddFrameSizeActivated(StylerEvent* /*event*/) {
    QorBorder::DrawingSize size;
    if (DrawingSizeDialog(size).show() == DialogResponseOk) {
        m_layout->addDrawingSize(size);
        fillFrameSizeList();
    }
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onCopyFrameSizeActivated(StylerEvent* /*event*/) {
    const int row = m_frameSizes->SelectedIndexValue();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    QorBorder::DrawingSize copy = m_layout->getDrawingSize(row);
    if (DrawingSizeDialog(copy).show() == DialogResponseOk) {
        m_layout->addDrawingSize(copy);
        fillFrameSizeList();
    }
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onEditFrameSizeActivated(StylerEvent* /*event*/) {
    const int row = m_frameSizes->SelectedIndexValue();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    if (DrawingSizeDialog(m_layout->getDrawingSize(row)).show() == DialogResponseOk) {
        fillFrameSizeList();
    }
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onCutFrameSizeActivated(StylerEvent* /*event*/) {
    const int row = m_frameSizes->SelectedIndexValue();
    if (row < 0) {
        return DialogStateContinueDialog;
    }
    m_layout->deleteDrawingSize(row);
    fillFrameSizeList();
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onOpenTemplateActivated(StylerEvent* /*event*/) {
    const int row = m_frameSizes->SelectedIndexValue();
    if (row < 0 || m_template) {
        return DialogStateContinueDialog;
    }
    const std::string name = m_layout->getDrawingSize(row).templateFile;
    const boost::filesystem::path file = findFrameTemplate(name);
    if (file.empty()) {
        reportTemplateNotFound(name);
        return DialogStateContinueDialog;
    }
    const OpenedTemplate opened = openAsDisplayPart(file);
    m_template = opened.opened;
    m_previousDisplay = opened.previous;
    return DialogStateContinueDialog;
}

void BorderLayoutDialog::updateFrameSizeActionSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_frameSizes->HasSelection());
}

void BorderLayoutDialog::updateOpenTemplateSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_frameSizes->HasSelection() && !m_template);
}

} // namespace QorBorderConf
