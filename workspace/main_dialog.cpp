#include "workspace/main_dialog.h"

#include "model/def_document_manager.h"
#include "model/document_error.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/busy_indicator.h"
#include "workspace/file_select_dialog.h"
#include "workspace/main_dialog_names.h"

#include <NXOpen/ListingWindow.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Session.hxx>

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

#include <cassert>
#include <stdexcept>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

MainDialog::MainDialog()
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_bordersPage(*this),
      m_blocksPage(*this), m_locationsPage(*this), m_translationsPage(*this) {}

void MainDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&MainDialog::onConstruct);

    m_fileInfo = bind.control<GroupBox>(Names::FILEINFO);
    bind.update(*m_fileInfo, &MainDialog::updateFileInfoSensitivity);
    m_location = bind.control<LabelItem>(Names::LOCATION);
    m_fileName = bind.control<LabelItem>(Names::FILENAME);
    m_newFile = bind.control<PushButton>(Names::NEW_FILE);
    bind.onActivate(*m_newFile, &MainDialog::onNewFileActivated, OpensDialog::No);
    m_openFile = bind.control<PushButton>(Names::OPEN_FILE);
    bind.onActivate(*m_openFile, &MainDialog::reportingFileErrors<&MainDialog::onOpenFileActivated>,
                    OpensDialog::Yes);
    m_saveFile = bind.control<PushButton>(Names::SAVE_FILE);
    bind.onActivate(*m_saveFile, &MainDialog::reportingFileErrors<&MainDialog::onSaveFileActivated>,
                    OpensDialog::Yes);
    bind.update(*m_saveFile, &MainDialog::updateSaveFileSensitivity);
    m_saveAsFile = bind.control<PushButton>(Names::SAVEAS_FILE);
    bind.onActivate(*m_saveAsFile,
                    &MainDialog::reportingFileErrors<&MainDialog::onSaveAsFileActivated>,
                    OpensDialog::Yes);
    bind.update(*m_saveAsFile, &MainDialog::updateSaveAsFileSensitivity);
    m_saveAll = bind.control<PushButton>(Names::SAVE_ALL);
    bind.onActivate(*m_saveAll, &MainDialog::reportingFileErrors<&MainDialog::onSaveAllActivated>,
                    OpensDialog::No);
    bind.update(*m_saveAll, &MainDialog::updateSaveAllSensitivity);
    m_moveItems = bind.control<PushButton>(Names::MOVE_ITEMS);
    bind.onActivate(*m_moveItems,
                    &MainDialog::reportingFileErrors<&MainDialog::onMoveItemsActivated>,
                    OpensDialog::Yes);
    bind.update(*m_moveItems, &MainDialog::updateMoveItemsSensitivity);
    m_fileSummary = bind.control<PushButton>(Names::FILE_SUMMARY);
    bind.onActivate(*m_fileSummary, &MainDialog::onFileSummaryActivated, OpensDialog::No);

    m_bordersPage.bindControls(*this);
    m_blocksPage.bindControls(*this);
    m_locationsPage.bindControls(*this);
    m_translationsPage.bindControls(*this);
}

DialogState MainDialog::onConstruct(StylerEvent* /*event*/) {
    m_locationsPage.refreshFilter();
    m_activeDocument.reset();
    updateLabels();
    return DialogStateContinueDialog;
}

DialogState MainDialog::onNewFileActivated(StylerEvent* /*event*/) {
    m_activeDocument = boost::make_shared<QorBorder::DefinitionDocument>("");
    refreshAll();
    return DialogStateContinueDialog;
}

DialogState MainDialog::onOpenFileActivated(StylerEvent* /*event*/) {
    FileSelectDialog fileSelect(boost::filesystem::path(), FileSelectDialog::OpenMode);
    if (fileSelect.chooseFile()) {
        m_activeDocument = QorBorder::DefDocumentManager().getDocument(fileSelect.selectedPath());
        assert(m_activeDocument);
        refreshAll();
    }
    return DialogStateContinueDialog;
}

DialogState MainDialog::onSaveFileActivated(StylerEvent* /*event*/) {
    if (m_activeDocument->filename().empty()) {
        saveActiveDocumentAs();
    } else {
        saveActiveDocument();
    }
    return DialogStateContinueDialog;
}

void MainDialog::saveActiveDocument() {
    {
        BusyIndicator busy;
        m_activeDocument->save();
    }
    m_saveReport.report({m_activeDocument});
}

DialogState MainDialog::onSaveAsFileActivated(StylerEvent* /*event*/) {
    saveActiveDocumentAs();
    return DialogStateContinueDialog;
}

void MainDialog::saveActiveDocumentAs() {
    // Unlike opening, saving takes only OK: the save-as list has no double-click.
    FileSelectDialog fileSelect(boost::filesystem::path(), FileSelectDialog::SaveAsMode);
    if (fileSelect.show() != DialogResponseOk) {
        return;
    }
    const boost::filesystem::path path = fileSelect.selectedPath();
    QorBorder::DefDocumentManagerImpl& manager = QorBorder::DefDocumentManager();
    // A file that exists but is not open is refused as well: saving over it would silently
    // replace a document nobody has looked at.
    boost::system::error_code ec;
    if (manager.hasDocument(path) || boost::filesystem::exists(path, ec)) {
        KivNX::UI::errorDialog("Error", "Document name already exists.");
        return;
    }
    // The copy becomes the active document only once it is saved: a failed save leaves the
    // document the user was working on active, unsaved, and registers nothing.
    const auto copy = boost::make_shared<QorBorder::DefinitionDocument>(*m_activeDocument);
    {
        BusyIndicator busy;
        copy->save(path);
    }
    manager.addDocument(copy);
    m_activeDocument = copy;
    updateLabels();
    // A new document's blocks are known to the manager only now.
    blockLayoutsChanged();
    m_saveReport.report({m_activeDocument});
}

DialogState MainDialog::onSaveAllActivated(StylerEvent* /*event*/) {
    QorBorder::DefDocumentManagerImpl& manager = QorBorder::DefDocumentManager();
    std::vector<boost::shared_ptr<QorBorder::DefinitionDocument>> toSave;
    for (const auto& document : manager.documents()) {
        if (document->modified) {
            toSave.push_back(document);
        }
    }
    // The documents saved before a failure are reported too; the failure then goes on to the
    // "Error" box.
    const auto reportSaved = [&] {
        std::vector<boost::shared_ptr<QorBorder::DefinitionDocument>> saved;
        for (const auto& document : toSave) {
            if (!document->modified) {
                saved.push_back(document);
            }
        }
        m_saveReport.report(saved);
    };
    try {
        BusyIndicator busy;
        manager.saveAll();
    } catch (const QorBorder::DocumentsNotSavedError&) {
        reportSaved();
        throw;
    }
    reportSaved();
    return DialogStateContinueDialog;
}

DialogState MainDialog::onFileSummaryActivated(StylerEvent* /*event*/) {
    if (!m_activeDocument) {
        return DialogStateContinueDialog;
    }
    std::string text = "Contents of " + m_activeDocument->filename();
    text += "\n \nBorders:\n \n";
    for (const auto& border : m_bordersPage.rows()) {
        text += border->informationString() + "\n";
    }
    text += " \nBlocks:\n \n";
    for (const auto& block : m_blocksPage.rows()) {
        text += block->informationString() + "\n";
    }
    NXOpen::ListingWindow* listing = NXOpen::Session::GetSession()->ListingWindow();
    if (!listing->IsOpen()) {
        listing->Open();
    }
    listing->WriteLine(text);
    return DialogStateContinueDialog;
}

DialogState MainDialog::onMoveItemsActivated(StylerEvent* /*event*/) {
    const bool block = m_blocksPage.list()->HasSelection();
    const bool border = !block && m_bordersPage.list()->HasSelection();
    const bool location = !block && !border && m_locationsPage.list()->HasSelection();
    const bool translation =
        !block && !border && !location && m_translationsPage.list()->HasSelection();
    if (!(block || border || location || translation) || !m_activeDocument) {
        return DialogStateContinueDialog;
    }

    FileSelectDialog fileSelect(m_activeDocument->filename(), FileSelectDialog::OpenMode);
    if (!fileSelect.chooseFile()) {
        return DialogStateContinueDialog;
    }
    const boost::shared_ptr<QorBorder::DefinitionDocument> target =
        QorBorder::DefDocumentManager().getDocument(fileSelect.selectedPath());
    assert(target);
    if (block) {
        moveSelectedBlock(*target);
    } else if (border) {
        moveSelectedBorder(*target);
    } else if (location) {
        moveSelectedLocation(*target);
    } else {
        moveSelectedTranslation(*target);
    }
    return DialogStateContinueDialog;
}

void MainDialog::moveSelectedBlock(QorBorder::DefinitionDocument& target) {
    const std::string id =
        m_blocksPage.rows()
            .at(static_cast<std::size_t>(m_blocksPage.list()->SelectedIndexValue()))
            ->id;
    const auto source = m_activeDocument->getBlockLayout(id);
    assert(source);
    target.addBlockLayout(boost::make_shared<QorBorder::BlockLayout>(*source));
    m_activeDocument->deleteBlockLayout(id);
    m_blocksPage.refreshList();
    blockLayoutsChanged();
}

void MainDialog::moveSelectedBorder(QorBorder::DefinitionDocument& target) {
    const std::string id =
        m_bordersPage.rows()
            .at(static_cast<std::size_t>(m_bordersPage.list()->SelectedIndexValue()))
            ->id;
    const auto source = m_activeDocument->getBorderLayout(id);
    assert(source);
    target.addBorderLayout(boost::make_shared<QorBorder::BorderLayout>(*source));
    m_activeDocument->deleteBorderLayout(id);
    m_bordersPage.refreshList();
}

void MainDialog::moveSelectedLocation(QorBorder::DefinitionDocument& target) {
    const std::string blockId = m_locationsPage.filterBlockId();
    const int index = m_locationsPage.list()->SelectedIndexValue();
    const auto source = m_activeDocument->getBlockLocation(blockId, index);
    assert(source);
    target.addBlockLocation(boost::make_shared<QorBorder::BlockLocation>(*source));
    m_activeDocument->deleteBlockLocation(blockId, index);
    m_locationsPage.refreshList();
}

void MainDialog::moveSelectedTranslation(QorBorder::DefinitionDocument& target) {
    const std::string key = m_translationsPage.list()->SelectedString();
    std::map<std::string, std::string> targetTranslations;
    target.fieldTranslations(targetTranslations);
    // A translation the target already has is kept; the moved one is dropped.
    targetTranslations.insert({key, m_translationsPage.translations().at(key)});
    target.setFieldTranslations(targetTranslations);
    m_translationsPage.eraseTranslation(key);
}

void MainDialog::refreshAll() {
    m_translationsPage.reload();
    m_bordersPage.refreshList();
    m_blocksPage.refreshList();
    // The filter is refilled here too: filled only when the dialog was built, it would offer no
    // block of a document opened after that.
    m_locationsPage.refreshFilter();
    m_locationsPage.refreshList();
    updateLabels();
}

void MainDialog::updateLabels() {
    if (m_activeDocument) {
        m_fileName->SetLabel(m_activeDocument->displayName());
        m_location->SetLabel(m_activeDocument->displayLocation());
    } else {
        m_fileName->SetLabel("No active file");
        m_location->SetLabel("???");
    }
}

void MainDialog::markActiveDocumentModified() {
    if (m_activeDocument) {
        m_activeDocument->modified = true;
    }
}

void MainDialog::blockLayoutsChanged() {
    m_locationsPage.refreshFilter();
}

DialogState MainDialog::runFileAction(const std::function<DialogState()>& action) {
    try {
        return action();
    } catch (const NXOpen::NXException&) {
        throw;
    } catch (const std::runtime_error& e) {
        // DocumentError and the file system's errors: the user can try again, or elsewhere,
        // without losing the documents and the dialog they have open.
        KivNX::UI::errorDialog("Error", e.what());
    }
    return DialogStateContinueDialog;
}

void MainDialog::deselectListsOtherThan(const KivNX::UI::SingleSelectList* keep) {
    for (const auto& list : {m_bordersPage.list(), m_blocksPage.list(), m_locationsPage.list(),
                             m_translationsPage.list()}) {
        if (list.get() != keep && list->HasSelection()) {
            list->DeselectSubItem(list->SelectedIndexValue());
        }
    }
}

void MainDialog::updateFileInfoSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_activeDocument != nullptr);
}

void MainDialog::updateSaveFileSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_activeDocument && m_activeDocument->modified);
}

void MainDialog::updateSaveAsFileSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_activeDocument != nullptr);
}

void MainDialog::updateSaveAllSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, QorBorder::DefDocumentManager().isAnyModified());
}

void MainDialog::updateMoveItemsSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_blocksPage.list()->HasSelection() ||
                                        m_bordersPage.list()->HasSelection() ||
                                        m_locationsPage.list()->HasSelection() ||
                                        m_translationsPage.list()->HasSelection());
}

} // namespace QorBorderConf
