#pragma once

#include "workspace/page_host.h"

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace KivNX {
namespace UI {
class NXDialogBase;
class SingleSelectList;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// The main dialog's page of field translations. It keeps the working copy of the active
/// document's translations and writes it to the document after every change. New and edit open
/// the translation dialog.
class TranslationsPage {
public:
    explicit TranslationsPage(PageHost& host) : m_host(host) {}

    void bindControls(KivNX::UI::NXDialogBase& dialog);
    /// Reads the active document's translations into the working copy (empty without one) and
    /// lists them.
    void reload();
    /// Lists the working copy's keys in the map's order; nothing is selected afterwards.
    void refreshList();
    /// Erases `key` from the working copy, writes the copy to the active document and lists it.
    void eraseTranslation(const std::string& key);

    /// The working copy: key to translated text.
    const std::map<std::string, std::string>& translations() const { return m_translations; }
    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    DialogState onTranslationListActivated(StylerEvent* event);
    DialogState onNewTranslationActivated(StylerEvent* event);
    DialogState onEditTranslationActivated(StylerEvent* event);
    DialogState onDeleteTranslationActivated(StylerEvent* event);
    /// The list and "NEW_TRANSLATION": sensitive while a document is active.
    void updateListSensitivity(StylerItem* item);
    /// Edit and delete: they act on the selected translation.
    void updateSelectedTranslationSensitivity(StylerItem* item);

    /// Shows the translation dialog; on OK stores its text under its key in the working copy
    /// (replacing an entry with that key), lists the copy and writes it to the active document.
    void storeThroughDialog(const std::string& key, const std::string& text, bool editMode);

    PageHost& m_host;
    std::map<std::string, std::string> m_translations;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newTranslation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editTranslation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteTranslation;
};

} // namespace QorBorderConf
