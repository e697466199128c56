#include "workspace/locations_page.h"

#include "block/block_location_dialog.h"
#include "model/block_location.h"
#include "model/def_document_manager.h"
#include "model/definition_document.h"
#include "ui/dialog_binder.h"
#include "ui/option_menu.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog_names.h"

#include <boost/make_shared.hpp>

#include <algorithm>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

namespace {

bool anyBlockLayoutKnown() {
    return !QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits).empty();
}

} // namespace

void LocationsPage::bindControls(KivNX::UI::NXDialogBase& dialog) {
    KivNX::UI::DialogBinder bind(dialog, *this);
    m_blockFilter = bind.control<KivNX::UI::OptionMenu>(Names::BLOCK_FILTER);
    bind.onActivate(*m_blockFilter, &LocationsPage::onBlockFilterActivated, OpensDialog::No);
    m_list = bind.control<KivNX::UI::SingleSelectList>(Names::LOCATION_LIST);
    bind.onActivate(*m_list, &LocationsPage::onLocationListActivated, OpensDialog::No);
    bind.update(*m_list, &LocationsPage::updateListSensitivity);
    m_newLocation = bind.control<PushButton>(Names::NEW_LOC);
    bind.onActivate(*m_newLocation, &LocationsPage::onNewLocationActivated, OpensDialog::Yes);
    bind.update(*m_newLocation, &LocationsPage::updateNewLocationSensitivity);
    m_editLocation = bind.control<PushButton>(Names::EDIT_LOC);
    bind.onActivate(*m_editLocation, &LocationsPage::onEditLocationActivated, OpensDialog::Yes);
    bind.update(*m_editLocation, &LocationsPage::updateSelectedLocationSensitivity);
    m_copyLocation = bind.control<PushButton>(Names::COPY_LOC);
    bind.onActivate(*m_copyLocation, &LocationsPage::onCopyLocationActivated, OpensDialog::Yes);
    bind.update(*m_copyLocation, &LocationsPage::updateSelectedLocationSensitivity);
    m_deleteLocation = bind.control<PushButton>(Names::DELETE_LOC);
    bind.onActivate(*m_deleteLocation, &LocationsPage::onDeleteLocationActivated, OpensDialog::No);
    bind.update(*m_deleteLocation, &LocationsPage::updateSelectedLocationSensitivity);
    m_moveUp = bind.control<PushButton>(Names::MOVE_LOC_UP);
    bind.onActivate(*m_moveUp, &LocationsPage::onMoveLocationUpActivated, OpensDialog::No);
    bind.update(*m_moveUp, &LocationsPage::updateMoveUpSensitivity);
    m_moveDown = bind.control<PushButton>(Names::MOVE_LOC_DOWN);
    bind.onActivate(*m_moveDown, &LocationsPage::onMoveLocationDownActivated, OpensDialog::No);
    bind.update(*m_moveDown, &LocationsPage::updateMoveDownSensitivity);
}

std::string LocationsPage::rowText(const QorBorder::BlockLocation& location) {
    return location.id + "(Style ID: " +
           (location.styleId.empty() ? std::string("Any Style") : location.styleId) + ")";
}

const std::vector<std::string>& LocationsPage::filterEntries() const {
    if (!m_filterEntriesRead) {
        m_filterEntries = m_blockFilter->Items();
        m_filterEntriesRead = true;
    }
    return m_filterEntries;
}

std::string LocationsPage::filterBlockId() const {
    const std::vector<std::string>& entries = filterEntries();
    const int current = m_blockFilter->ItemValue();
    if (current < 0 || static_cast<std::size_t>(current) >= entries.size()) {
        return {};
    }
    return entries[static_cast<std::size_t>(current)];
}

void LocationsPage::refreshFilter() {
    const auto& layouts = QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits);
    if (layouts.empty()) {
        return;
    }
    // The same IDs in the same order: the menu and its current entry stay as they are.
    const std::vector<std::string>& entries = filterEntries();
    if (std::equal(layouts.begin(), layouts.end(), entries.begin(), entries.end(),
                   [](const auto& layout, const std::string& id) { return layout->id == id; })) {
        return;
    }
    std::vector<std::string> ids;
    ids.reserve(layouts.size());
    for (const auto& layout : layouts) {
        ids.push_back(layout->id);
    }
    // Refilling keeps the block the user was looking at, and the list must never show another
    // block's locations than the filter names: the row numbers address the filter's block.
    const std::string shown = filterBlockId();
    m_blockFilter->SetItems(ids);
    m_filterEntries = std::move(ids);
    const auto found = std::find(m_filterEntries.begin(), m_filterEntries.end(), shown);
    if (found != m_filterEntries.end()) {
        m_blockFilter->SetItemValue(static_cast<int>(found - m_filterEntries.begin()));
    }
    if (filterBlockId() != shown) {
        refreshList();
    }
}

void LocationsPage::refreshList() {
    m_list->ClearList();
    m_rows.clear();
    const auto& document = m_host.activeDocument();
    if (!document) {
        return;
    }
    m_rows = document->blockLocations(filterBlockId(), "");
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
    m_host.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onNewLocationActivated(StylerEvent* /*event*/) {
    // A location of no block could be neither listed nor edited nor deleted.
    if (!m_host.activeDocument() || filterBlockId().empty()) {
        return DialogStateContinueDialog;
    }
    const auto location = boost::make_shared<QorBorder::BlockLocation>();
    location->blockId = filterBlockId();
    addThroughDialog(location);
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onEditLocationActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (!m_host.activeDocument() || row < 0) {
        return DialogStateContinueDialog;
    }
    const auto location = m_host.activeDocument()->getBlockLocation(filterBlockId(), row);
    if (!location) {
        return DialogStateContinueDialog;
    }
    BlockLocationDialog dialog(location, true);
    if (dialog.show() == DialogResponseOk) {
        m_host.markActiveDocumentModified();
    }
    refreshList();
    return DialogStateContinueDialog;
}

DialogState LocationsPage::onCopyLocationActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (!m_host.activeDocument() || row < 0) {
        return DialogStateContinueDialog;
    }
    const auto source = m_host.activeDocument()->getBlockLocation(filterBlockId(), row);
    if (!source) {
        return DialogStateContinueDialog;
    }
    // The copy keeps every value, its ID too: the dialog refuses it as a duplicate until the
    // user changes the ID or the block.
    addThroughDialog(boost::make_shared<QorBorder::BlockLocation>(*source));
    return DialogStateContinueDialog;
}

void LocationsPage::addThroughDialog(const boost::shared_ptr<QorBorder::BlockLocation>& location) {
    BlockLocationDialog dialog(location, false);
    if (dialog.show() != DialogResponseOk) {
        return;
    }
    m_host.markActiveDocumentModified();
    m_host.activeDocument()->addBlockLocation(location);
    refreshList();
}

DialogState LocationsPage::onDeleteLocationActivated(StylerEvent* /*event*/) {
    const int row = m_list->SelectedIndexValue();
    if (m_host.activeDocument() && row >= 0) {
        m_host.activeDocument()->deleteBlockLocation(filterBlockId(), row);
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
    QorBorder::DefinitionDocument& document = *m_host.activeDocument();
    const std::string blockId = filterBlockId();
    const auto first = document.getBlockLocation(blockId, a);
    const auto second = document.getBlockLocation(blockId, b);
    if (!first || !second) {
        return;
    }
    const QorBorder::BlockLocation temporary = *first;
    *first = *second;
    *second = temporary;
    m_host.markActiveDocumentModified();
    refreshList();
}

void LocationsPage::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() != nullptr);
}

void LocationsPage::updateNewLocationSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() && anyBlockLayoutKnown() &&
                                        !filterBlockId().empty());
}

void LocationsPage::updateSelectedLocationSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() && anyBlockLayoutKnown() &&
                                        m_list->HasSelection());
}

void LocationsPage::updateMoveUpSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, !m_rows.empty() && m_host.activeDocument() &&
                                        m_list->SelectedIndexValue() >= 1);
}

void LocationsPage::updateMoveDownSensitivity(StylerItem* item) {
    // No selection (a negative row) converts to the largest unsigned value: never sensitive.
    const auto row = static_cast<std::size_t>(static_cast<long long>(m_list->SelectedIndexValue()));
    KivNX::UI::setSensitivity(item, m_host.activeDocument() && !m_rows.empty() &&
                                        row < m_rows.size() - 1);
}

} // namespace QorBorderConf
