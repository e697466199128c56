#include "workspace/locations_page.h"

#include "model/def_document_manager.h"
#include "model/definition_document.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

using namespace NXOpen::UIStyler;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

namespace {

bool anyBlockLayoutKnown() {
    return !QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits).empty();
}

} // namespace

void LocationsPage::bindControls() {
    m_blockFilter = m_main.getControl<KivNX::UI::OptionMenu>(Names::BLOCK_FILTER);
    m_blockFilter->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &LocationsPage::onBlockFilterActivated)),
        false);
    m_list = m_main.getControl<KivNX::UI::SingleSelectList>(Names::LOCATION_LIST);
    m_list->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &LocationsPage::onLocationListActivated)),
        false);
    m_main.addUpdateHandler(m_list.get(),
                            Base::makeFunctor(this, &LocationsPage::updateListSensitivity));
    m_newLocation = m_main.getControl<PushButton>(Names::NEW_LOC);
    m_editLocation = m_main.getControl<PushButton>(Names::EDIT_LOC);
    m_copyLocation = m_main.getControl<PushButton>(Names::COPY_LOC);
    m_deleteLocation = m_main.getControl<PushButton>(Names::DELETE_LOC);
    m_deleteLocation->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &LocationsPage::onDeleteLocationActivated)),
        false);
    m_main.addUpdateHandler(
        m_deleteLocation.get(),
        Base::makeFunctor(this, &LocationsPage::updateDeleteLocationSensitivity));
    m_moveUp = m_main.getControl<PushButton>(Names::MOVE_LOC_UP);
    m_moveUp->AddActivateHandler(
        m_main.registerStylerCB(Base::makeFunctor(this, &LocationsPage::onMoveLocationUpActivated)),
        false);
    m_main.addUpdateHandler(m_moveUp.get(),
                            Base::makeFunctor(this, &LocationsPage::updateMoveUpSensitivity));
    m_moveDown = m_main.getControl<PushButton>(Names::MOVE_LOC_DOWN);
    m_moveDown->AddActivateHandler(m_main.registerStylerCB(Base::makeFunctor(
                                       this, &LocationsPage::onMoveLocationDownActivated)),
                                   false);
    m_main.addUpdateHandler(m_moveDown.get(),
                            Base::makeFunctor(this, &LocationsPage::updateMoveDownSensitivity));
}

std::string LocationsPage::rowText(const QorBorder::BlockLocation& location) {
    return location.id + "(Style ID: " +
           (location.styleId.empty() ? std::string("Any Style") : location.styleId) + ")";
}

std::string LocationsPage::filterBlockId() const {
    return m_blockFilter->ItemValueString();
}

void LocationsPage::refreshFilter() {
    std::vector<std::string> ids;
    for (const auto& layout : QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits)) {
        ids.push_back(layout->id);
    }
    if (ids.empty()) {
        return;
    }
    // Refilling keeps the block the user was looking at, and the list must never show another
    // block's locations than the filter names: the row numbers address the filter's block.
    const std::string shown = filterBlockId();
    m_blockFilter->SetItems(ids);
    m_blockFilter->SetItemValue(shown);
    if (filterBlockId() != shown) {
        refreshList();
    }
}

void LocationsPage::refreshList() {
    m_list->ClearList();
    m_rows.clear();
    if (!m_main.m_activeDocument) {
        return;
    }
    m_rows = m_main.m_activeDocument->blockLocations(filterBlockId(), "");
    std::vector<std::string> texts;
    for (const auto& location : m_rows) {
        texts.push_back(rowText(*location));
    }
    m_list->SetListItems(texts);
}

DialogState LocationsPage::onBlockFilterActivated(StylerEvent* /*event*/) {
    refreshList();
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onLocationListActivated(StylerEvent* /*event*/) {
    m_main.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onDeleteLocationActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (m_main.m_activeDocument && row >= 0) {
        m_main.m_activeDocument->deleteBlockLocation(filterBlockId(), row);
        refreshList();
    }
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onMoveLocationUpActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (row >= 1) {
        swapLocations(row, row - 1);
    }
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onMoveLocationDownActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (row >= 0 && static_cast<std::size_t>(row) + 1 < m_rows.size()) {
        swapLocations(row, row + 1);
    }
    return DialogStateContinueDialog;
}

void LocationsPage::swapLocations(int a, int b) {
    QorBorder::DefinitionDocument& document = *m_main.m_activeDocument;
    const std::string blockId = filterBlockId();
    const auto first = document.getBlockLocation(blockId, a);
    const auto second = document.getBlockLocation(blockId, b);
    if (!first || !second) {
        return;
    }
    const QorBorder::BlockLocation temporary = *first;
    *first = *second;
    *second = temporary;
    document.modified = true;
    refreshList();
}

void LocationsPage::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument != nullptr);
}

void LocationsPage::updateDeleteLocationSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument && anyBlockLayoutKnown() &&
                                        m_list->HasSelection());
}

void LocationsPage::updateMoveUpSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, !m_rows.empty() && m_main.m_activeDocument &&
                                        m_list->SelectedIndexValue() >= 1);
}

void LocationsPage::updateMoveDownSensitivity(StylerItem* item) {
    // No selection (a negative row) converts to the largest unsigned value: never sensitive.
    const auto row = static_cast<std::size_t>(static_cast<long long>(m_list->SelectedIndexValue()));
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument && !m_rows.empty() &&
                                        row < m_rows.size() - 1);
}

} // namespace QorBorderConf
