#include "border/border_layout_dialog.h"

#include "base/log.h"
#include "border/border_layout_dialog_names.h"
#include "border/frame_template.h"
#include "model/border_layout.h"
#include "model/def_document_manager.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/multi_text_box.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "ui/string_item.h"

#include <NXOpen/NXException.hxx>

#include <algorithm>
#include <cassert>
#include <exception>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::BorderLayoutDialogNames;

namespace QorBorderConf {

namespace {

/// Moves the selected row of `from` to the end of `to`; nothing is checked.
void moveSelectedRow(KivNX::UI::SingleSelectList& from, KivNX::UI::SingleSelectList& to) {
    const int row = from.SelectedIndexValue();
    if (row < 0) {
        return;
    }
    to.Append(from.SelectedString());
    from.DeleteSubItem(row);
}

} // namespace

BorderLayoutDialog::BorderLayoutDialog(const boost::shared_ptr<QorBorder::BorderLayout>& layout,
                                       bool existingLayout)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_layout(layout),
      m_existingLayout(existingLayout) {}

BorderLayoutDialog::~BorderLayoutDialog() {
    if (!m_template) {
        return;
    }
    // Users expect their own display part back once the dialog is gone.
    try {
        restoreDisplayPart(m_previousDisplay, m_template);
    } catch (const std::exception& error) {
        Base::log::LoggerStream(QorBorder::info_log())
            << "Closing the frame template failed: " << error.what();
    }
}

void BorderLayoutDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&BorderLayoutDialog::onConstruct);
    bind.onOkay(&BorderLayoutDialog::onOk);

    m_id = bind.control<KivNX::UI::StringItem>(Names::FORMAT_ID);
    m_description = bind.control<KivNX::UI::StringItem>(Names::DESCRIPTION);
    m_category = bind.control<KivNX::UI::StringItem>(Names::CATEGORY);
    m_secondLanguages = bind.control<KivNX::UI::MultiTextBox>(Names::SECOND_LANGUAGES);
    m_coreRequired = bind.control<KivNX::UI::SingleSelectList>(Names::CORE_REQUIRED);
    bind.onActivate(*m_coreRequired, &BorderLayoutDialog::onBlockListActivated, OpensDialog::No);
    m_sheet1Required = bind.control<KivNX::UI::SingleSelectList>(Names::SH1_REQUIRED);
    bind.onActivate(*m_sheet1Required, &BorderLayoutDialog::onBlockListActivated, OpensDialog::No);
    m_availableBlocks = bind.control<KivNX::UI::SingleSelectList>(Names::AVAIL_BLOCKS);
    bind.onActivate(*m_availableBlocks, &BorderLayoutDialog::onBlockListActivated, OpensDialog::No);
    m_makeCore = bind.control<PushButton>(Names::MAKE_CORE);
    bind.onActivate(*m_makeCore, &BorderLayoutDialog::onMakeCoreActivated, OpensDialog::No);
    bind.update(*m_makeCore, &BorderLayoutDialog::updateMakeRequiredSensitivity);
    m_makeSheet1 = bind.control<PushButton>(Names::MAKE_SH1);
    bind.onActivate(*m_makeSheet1, &BorderLayoutDialog::onMakeSheet1Activated, OpensDialog::No);
    bind.update(*m_makeSheet1, &BorderLayoutDialog::updateMakeRequiredSensitivity);
    m_removeCore = bind.control<PushButton>(Names::REMOVE_CORE);
    bind.onActivate(*m_removeCore, &BorderLayoutDialog::onRemoveCoreActivated, OpensDialog::No);
    bind.update(*m_removeCore, &BorderLayoutDialog::updateRemoveCoreSensitivity);
    m_removeSheet1 = bind.control<PushButton>(Names::REMOVE_SH1);
    bind.onActivate(*m_removeSheet1, &BorderLayoutDialog::onRemoveSheet1Activated, OpensDialog::No);
    bind.update(*m_removeSheet1, &BorderLayoutDialog::updateRemoveSheet1Sensitivity);

    bindFrameSizesPage();
    bindCornersPage();
    bindZonesPage();
}

DialogState BorderLayoutDialog::onConstruct(StylerEvent* /*event*/) {
    assert(m_id && m_description && m_category && m_secondLanguages);
    assert(m_coreRequired && m_sheet1Required);
    m_id->SetItemValue(m_layout->id);
    m_description->SetItemValue(m_layout->description);
    m_category->SetItemValue(m_layout->category);
    m_secondLanguages->SetItemValue(m_layout->secondLanguages);
    fillAvailableBlocks();
    if (!m_layout->coreRequiredBlocks.empty()) {
        m_coreRequired->SetListItems(m_layout->coreRequiredBlocks);
    }
    if (!m_layout->sheet1RequiredBlocks.empty()) {
        m_sheet1Required->SetListItems(m_layout->sheet1RequiredBlocks);
    }
    fillFrameSizesPage();
    fillCornersPage();
    fillZonesPage();
    return DialogStateContinueDialog;
}

void BorderLayoutDialog::fillAvailableBlocks() {
    assert(m_availableBlocks);
    std::vector<std::string> ids;
    for (const auto& block : QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits)) {
        ids.push_back(block->id);
    }
    std::sort(ids.begin(), ids.end());
    // Blocks that are required already are offered too: a block may be core and sheet-1 alike.
    if (!ids.empty()) {
        m_availableBlocks->SetListItems(ids);
    }
}

DialogState BorderLayoutDialog::onOk(StylerEvent* /*event*/) {
    assert(m_id && m_description && m_category && m_secondLanguages);
    const std::string id = m_id->ItemValue();
    if (id.empty()) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kValidationError,
                                 "Border ID must not be empty.");
    }
    // Only a new layout is checked: an existing one may take any ID, even another border's.
    if (!m_existingLayout && QorBorder::DefDocumentManager().getBorderLayout(id)) {
        return KivNX::UI::refuse(*m_id, KivNX::UI::kDuplicateError,
                                 "A border with ID was found. Border ID must be unique.");
    }

    m_layout->id = id;
    m_layout->description = m_description->ItemValue();
    m_layout->category = m_category->ItemValue();
    m_layout->coreRequiredBlocks = m_coreRequired->ListItems();
    m_layout->sheet1RequiredBlocks = m_sheet1Required->ListItems();
    std::vector<std::string> languages = m_secondLanguages->ItemValues();
    if (languages.size() == 1 && languages.front().empty()) {
        languages.clear();
    }
    m_layout->secondLanguages = languages;
    commitFrameSizesPage();
    commitCornersPage();
    commitZonesPage();
    return DialogStateExitDialog;
}

DialogState BorderLayoutDialog::onBlockListActivated(StylerEvent* /*event*/) {
    // Selecting a block only changes which move buttons are sensitive.
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onMakeCoreActivated(StylerEvent* /*event*/) {
    moveSelectedRow(*m_availableBlocks, *m_coreRequired);
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onMakeSheet1Activated(StylerEvent* /*event*/) {
    moveSelectedRow(*m_availableBlocks, *m_sheet1Required);
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onRemoveCoreActivated(StylerEvent* /*event*/) {
    moveSelectedRow(*m_coreRequired, *m_availableBlocks);
    return DialogStateContinueDialog;
}

DialogState BorderLayoutDialog::onRemoveSheet1Activated(StylerEvent* /*event*/) {
    moveSelectedRow(*m_sheet1Required, *m_availableBlocks);
    return DialogStateContinueDialog;
}

void BorderLayoutDialog::updateMakeRequiredSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_availableBlocks->HasSelection());
}

void BorderLayoutDialog::updateRemoveCoreSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_coreRequired->HasSelection());
}

void BorderLayoutDialog::updateRemoveSheet1Sensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_sheet1Required->HasSelection());
}

} // namespace QorBorderConf
