#pragma once

#include "ui/nx_dialog_base.h"
#include "workspace/blocks_page.h"
#include "workspace/borders_page.h"
#include "workspace/locations_page.h"
#include "workspace/translations_page.h"

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace QorBorder {
class DefinitionDocument;
}

namespace KivNX {
namespace UI {
class SingleSelectList;
}
} // namespace KivNX

namespace QorBorderConf {

/// The configurator's top dialog: the one active document, the file operations, the summary and
/// moving items between documents. Its four pages are served by this object.
class MainDialog : public KivNX::UI::NXDialogBase {
public:
    MainDialog();

    /// The active document; null when none.
    const boost::shared_ptr<QorBorder::DefinitionDocument>& activeDocument() const {
        return m_activeDocument;
    }

private:
    template <class Layout>
    friend class LayoutListPage;
    friend class BlocksPage;
    friend class LocationsPage;
    friend class TranslationsPage;

    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
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

    void saveActiveDocumentAs();
    void moveSelectedBlock(QorBorder::DefinitionDocument& target);
    void moveSelectedBorder(QorBorder::DefinitionDocument& target);
    void moveSelectedLocation(QorBorder::DefinitionDocument& target);
    void moveSelectedTranslation(QorBorder::DefinitionDocument& target);

    /// After the active document changed: translations, lists and labels from the document.
    void refreshAll();
    void updateLabels();
    /// Clears the selection of every page list but `keep`, so that one list at most has one.
    void deselectListsOtherThan(const KivNX::UI::SingleSelectList* keep);

    boost::shared_ptr<QorBorder::DefinitionDocument> m_activeDocument;
    /// Working copy of the active document's field translations, shared with the translations
    /// page; written back to the document after every change.
    std::map<std::string, std::string> m_translations;

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
};

} // namespace QorBorderConf
