#include "border/drawing_size_dialog.h"

#include "base/wildcard_filter.h"
#include "border/drawing_size_dialog_names.h"
#include "border/frame_template.h"
#include "kivug/search_file_list.h"
#include "model/drawing_size.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/sensitivity.h"
#include "ui/single_select_dialog.h"
#include "ui/string_item.h"

#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

#include <cassert>
#include <optional>
#include <vector>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace fs = boost::filesystem;
namespace Names = QorBorderConf::DrawingSizeDialogNames;

namespace QorBorderConf {

DrawingSizeDialog::DrawingSizeDialog(QorBorder::DrawingSize& size)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_size(&size) {}

void DrawingSizeDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&DrawingSizeDialog::onConstruct);
    bind.onOkay(&DrawingSizeDialog::onOk);

    m_name = bind.control<KivNX::UI::StringItem>(Names::NAME);
    m_description = bind.control<KivNX::UI::StringItem>(Names::DESC);
    m_label = bind.control<KivNX::UI::StringItem>(Names::LABEL);
    m_templateFile = bind.control<KivNX::UI::StringItem>(Names::TEMPLATE_FILE);
    bind.onActivate(*m_templateFile, &DrawingSizeDialog::onTemplateFileActivated, OpensDialog::No);
    m_browseTemplate = bind.control<PushButton>(Names::BROWSE_TEMPLATE);
    bind.onActivate(*m_browseTemplate, &DrawingSizeDialog::onBrowseTemplateActivated,
                    OpensDialog::Yes);
    m_extractDims = bind.control<PushButton>(Names::EXTRACT_DIMS);
    bind.onActivate(*m_extractDims, &DrawingSizeDialog::onExtractDimsActivated, OpensDialog::No);
    bind.update(*m_extractDims, &DrawingSizeDialog::updateExtractDimsSensitivity);
    m_height = bind.control<RealItem>(Names::HEIGHT);
    m_length = bind.control<RealItem>(Names::LENGTH);
    m_frameLength = bind.control<RealItem>(Names::FRAME_LENGTH);
    m_pickFrameLength = bind.control<PushButton>(Names::PK_FRAME_LENGTH);
    bind.onActivate(*m_pickFrameLength, &DrawingSizeDialog::onPickFrameLengthActivated,
                    OpensDialog::Yes);
    bind.update(*m_pickFrameLength, &DrawingSizeDialog::updatePickFrameLengthSensitivity);
    m_horizontalZones = bind.control<IntegerItem>(Names::HORZ_ZONES);
    m_verticalZones = bind.control<IntegerItem>(Names::VERT_ZONES);
}

DialogState DrawingSizeDialog::onConstruct(StylerEvent* /*event*/) {
    assert(m_name && m_description && m_label && m_templateFile);
    assert(m_height && m_length && m_frameLength && m_pickFrameLength);
    assert(m_horizontalZones && m_verticalZones);
    m_name->SetItemValue(m_size->name);
    m_description->SetItemValue(m_size->description);
    m_label->SetItemValue(m_size->label);
    m_templateFile->SetItemValue(m_size->templateFile);
    m_height->SetItemValue(m_size->height);
    m_length->SetItemValue(m_size->length);
    m_frameLength->SetItemValue(m_size->frameLength);
    m_horizontalZones->SetItemValue(m_size->horizontalZones);
    m_verticalZones->SetItemValue(m_size->verticalZones);
    // Measuring the frame length stays bound but out of the user's reach, on purpose.
    m_pickFrameLength->SetVisibility(false);
    return DialogStateContinueDialog;
}

DialogState DrawingSizeDialog::onOk(StylerEvent* /*event*/) {
    assert(m_name && m_description);
    const std::string name = m_name->ItemValue();
    if (name.empty()) {
        return KivNX::UI::refuse(*m_name, KivNX::UI::kValidationError, "Name must not be empty.");
    }
    // The name is written before the description is checked, deliberately: a refused OK leaves
    // the new name in the size even if the user then cancels.
    m_size->name = name;
    const std::string description = m_description->ItemValue();
    if (description.empty()) {
        return KivNX::UI::refuse(*m_description, KivNX::UI::kValidationError,
                                 "Description must not be empty.");
    }
    m_size->description = description;
    m_size->label = m_label->ItemValue();
    m_size->templateFile = m_templateFile->ItemValue();
    m_size->height = m_height->ItemValue();
    m_size->length = m_length->ItemValue();
    m_size->frameLength = m_frameLength->ItemValue();
    m_size->horizontalZones = m_horizontalZones->ItemValue();
    m_size->verticalZones = m_verticalZones->ItemValue();
    return DialogStateExitDialog;
}

DialogState DrawingSizeDialog::onTemplateFileActivated(StylerEvent* /*event*/) {
    // Nothing to do beyond letting "EXTRACT_DIMS" follow the new name.
    return DialogStateContinueDialog;
}

DialogState DrawingSizeDialog::onBrowseTemplateActivated(StylerEvent* /*event*/) {
    assert(m_templateFile);
    // The same template in two searched folders is offered once.
    const std::vector<std::string> names =
        KivUg::NxSearchFileList(kFrameTemplateFolder).fileNames(Base::WildcardFilter("*.prt"));
    const int chosen = KivNX::UI::SingleSelectDialog::show("Frame Templates",
                                                           "Select template from list", names, -1);
    if (chosen >= 0 && chosen < static_cast<int>(names.size())) {
        m_templateFile->SetItemValue(names[static_cast<std::size_t>(chosen)]);
    }
    return DialogStateContinueDialog;
}

DialogState DrawingSizeDialog::onExtractDimsActivated(StylerEvent* /*event*/) {
    assert(m_templateFile);
    const std::string name = m_templateFile->ItemValue();
    const fs::path file = findFrameTemplate(name);
    if (file.empty()) {
        reportTemplateNotFound(name);
        return DialogStateContinueDialog;
    }
    const OpenedTemplate opened = openAsDisplayPart(file);
    try {
        extractSheetSize();
    } catch (...) {
        // The template is closed and the user's display part is back also when NX refuses to
        // describe the drawing; the error then goes on to the caller.
        restoreDisplayPart(opened.previous, opened.opened);
        throw;
    }
    restoreDisplayPart(opened.previous, opened.opened);
    return DialogStateContinueDialog;
}

void DrawingSizeDialog::extractSheetSize() {
    assert(m_height && m_length);
    const std::optional<SheetSize> sheet = onlyDrawingSheetSize();
    if (!sheet) {
        KivNX::UI::errorDialog("Error", "Template must have a drawing and only one drawing");
        return;
    }
    m_height->SetItemValue(sheet->height);
    m_length->SetItemValue(sheet->length);
}

DialogState DrawingSizeDialog::onPickFrameLengthActivated(StylerEvent* /*event*/) {
    assert(m_frameLength);
    const tag_t first = selectObject("First object");
    if (first == NULL_TAG) {
        return DialogStateContinueDialog;
    }
    const tag_t second = selectObject("Second object");
    if (second == NULL_TAG) {
        return DialogStateContinueDialog;
    }
    if (const std::optional<double> distance = minimumDistance(first, second)) {
        m_frameLength->SetItemValue(*distance);
    }
    return DialogStateContinueDialog;
}

void DrawingSizeDialog::updateExtractDimsSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, !m_templateFile->ItemValue().empty());
}

void DrawingSizeDialog::updatePickFrameLengthSensitivity(StylerItem* item) {
    // Objects can be selected only in a displayed part.
    KivNX::UI::setSensitivity(item, NXOpen::Session::GetSession()->Parts()->Display() != nullptr);
}

} // namespace QorBorderConf
