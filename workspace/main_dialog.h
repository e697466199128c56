#pragma once

#include "ui/nx_dialog_base.h"
#include "workspace/blocks_page.h"
#include "workspace/borders_page.h"
#include "workspace/locations_page.h"
#include "workspace/page_host.h"
#include "workspace/save_report.h"
#include "workspace/translations_page.h"

#include <boost/shared_ptr.hpp>

namespace QorBorderConf {

/// The configurator's top dialog: the one active document, the file operations, the summary and
/// moving items between documents. Its four pages are served by this object and reach it only
/// as their PageHost.
class MainDialog : public KivNX::UI::NXDialogBase, private PageHost {
public:
    MainDialog();

    /// The active document; null when none.
    const boost::shared_ptr<QorBorder::DefinitionDocument>& activeDocument() const override {
        return m_activeDocument;
    }

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    /// `action`, with a document that cannot be read or written reported as runFileAction does.
    template <DialogState (MainDialog::*action)(StylerEvent*)>
    DialogState reportingFileErrors(StylerEvent* event) {
        return runFileAction([this, event] { return (this->*action)(event); });
    }
    DialogState onNewFileActivated(StylerEvent* event);
    DialogState onOpenFileActivated(StylerEvent* event);
    DialogState onSaveFileActivated(StylerEvent* event);
    DialogState onSaveAsFileActivated(StylerEvent* event);
    DialogState onSaveAllActivated(StylerEvent* event);
    DialogState onMoveItemsActivated(StylerEvent* event);
    DialogState onFileSummaryActivated(StylerEvent* event);

    void updateFileInfoSensitivity(StylerItem* item);
    void updateSaveFileSensitivity(StylerItem* item);
    void updateSaveAsFileSensitivity(StylerItem* item);
    void updateSaveAllSensitivity(StylerItem* item);
    void updateMoveItemsSensitivity(StylerItem* item);

    void saveActiveDocument();
    void saveActiveDocumentAs();
    void moveSelectedBlock(QorBorder::DefinitionDocument& target);
    void moveSelectedBorder(QorBorder::DefinitionDocument& target);
    void moveSelectedLocation(QorBorder::DefinitionDocument& target);
    void moveSelectedTranslation(QorBorder::DefinitionDocument& target);

    /// After the active document changed: translations, lists and labels from the document.
    void refreshAll();
    void updateLabels();

    // What the pages ask of the dialog.
    void markActiveDocumentModified() override;
    void deselectListsOtherThan(const KivNX::UI::SingleSelectList* keep) override;
    void blockLayoutsChanged() override;
    DialogState runFileAction(const std::function<DialogState()>& action) override;

    boost::shared_ptr<QorBorder::DefinitionDocument> m_activeDocument;

    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_fileInfo;
    boost::shared_ptr<NXOpen::UIStyler::LabelItem> m_location;
    boost::shared_ptr<NXOpen::UIStyler::LabelItem> m_fileName;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newFile;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_openFile;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_saveFile;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_saveAsFile;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_saveAll;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_moveItems;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_fileSummary;

    BordersPage m_bordersPage;
    BlocksPage m_blocksPage;
    LocationsPage m_locationsPage;
    TranslationsPage m_translationsPage;

    SaveReport m_saveReport;
};

} // namespace QorBorderConf
