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

#include <NXOpen/NXException.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <uf.h>
#include <uf_disp.h>
#include <uf_draw.h>
#include <uf_modl.h>
#include <uf_ui.h>

#include <cassert>
#include <memory>
#include <stdexcept>
#include <vector>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace fs = boost::filesystem;
namespace Names = QorBorderConf::DrawingSizeDialogNames;

namespace QorBorderConf {

namespace {

/// ANSI sheets A, B, C, D, E, F, H, J in inches, indexed by NX's English size code - 1.
const SheetSize kEnglishSheets[] = {{8.5, 11}, {11, 17}, {17, 22}, {22, 34},
                                    {34, 44},  {28, 40}, {28, 44}, {34, 55}};
/// ISO 216 sheets A0 to A4 in millimetres, indexed by NX's metric size code - 1.
const SheetSize kMetricSheets[] = {{841, 1189}, {594, 841}, {420, 594}, {297, 420}, {210, 297}};

template <std::size_t N>
SheetSize sheetOfCode(const SheetSize (&sheets)[N], int code, const char* kind) {
    if (code < 1 || code > static_cast<int>(N)) {
        throw std::runtime_error("Unknown " + std::string(kind) + " drawing size code " +
                                 std::to_string(code));
    }
    return sheets[code - 1];
}

/// Frees an array that NX allocated.
struct UfFree {
    void operator()(tag_t* data) const { UF_free(data); }
};

} // namespace

SheetSize sheetSizeOf(const UF_DRAW_info_t& info) {
    if (info.size_state == UF_DRAW_CUSTOM_SIZE) {
        return {info.size.custom_size[0], info.size.custom_size[1]};
    }
    if (info.size_state == UF_DRAW_ENGLISH_SIZE) {
        return sheetOfCode(kEnglishSheets, info.size.english_size_code, "English");
    }
    return sheetOfCode(kMetricSheets, info.size.metric_size_code, "metric");
}

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
    int count = 0;
    if (UF_DRAW_ask_num_drawings(&count) != 0 || count != 1) {
        KivNX::UI::errorDialog("Error", "Template must have a drawing and only one drawing");
        return;
    }
    int listed = 0;
    tag_t* drawings = nullptr;
    if (const int code = UF_DRAW_ask_drawings(&listed, &drawings)) {
        throw NXOpen::NXException::Create(code);
    }
    const std::unique_ptr<tag_t, UfFree> ownedDrawings(drawings);
    if (listed < 1 || !drawings) {
        KivNX::UI::errorDialog("Error", "Template must have a drawing and only one drawing");
        return;
    }
    UF_DRAW_info_t info{};
    if (const int code = UF_DRAW_ask_drawing_info(drawings[0], &info)) {
        throw NXOpen::NXException::Create(code);
    }
    const SheetSize sheet = sheetSizeOf(info);
    m_height->SetItemValue(sheet.height);
    m_length->SetItemValue(sheet.length);
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
    double distance = 0.0;
    double onFirst[3] = {0.0, 0.0, 0.0};
    double onSecond[3] = {0.0, 0.0, 0.0};
    if (UF_MODL_ask_minimum_dist(first, second, 0, nullptr, 0, nullptr, &distance, onFirst,
                                 onSecond) != 0) {
        return DialogStateContinueDialog;
    }
    m_frameLength->SetItemValue(distance);
    return DialogStateContinueDialog;
}

tag_t DrawingSizeDialog::selectObject(const std::string& title) {
    std::string message = "Select an object";
    std::string titleText = title;
    int response = 0;
    tag_t object = NULL_TAG;
    double cursor[3] = {0.0, 0.0, 0.0};
    tag_t view = NULL_TAG;
    if (UF_UI_select_with_single_dialog(message.data(), titleText.data(), UF_UI_SEL_SCOPE_WORK_PART,
                                        nullptr, nullptr, &response, &object, cursor, &view) != 0) {
        return NULL_TAG;
    }
    if (response != UF_UI_OBJECT_SELECTED && response != UF_UI_OBJECT_SELECTED_BY_NAME) {
        return NULL_TAG;
    }
    UF_DISP_set_highlight(object, 0);
    return object;
}

void DrawingSizeDialog::updateExtractDimsSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, !m_templateFile->ItemValue().empty());
}

void DrawingSizeDialog::updatePickFrameLengthSensitivity(StylerItem* item) {
    // Objects can be selected only in a displayed part.
    KivNX::UI::setSensitivity(item, NXOpen::Session::GetSession()->Parts()->Display() != nullptr);
}

} // namespace QorBorderConf
