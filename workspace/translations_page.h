#pragma once

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

namespace KivNX {
namespace UI {
class SingleSelectList;
}
} // namespace KivNX

namespace QorBorderConf {

class MainDialog;

/// The main dialog's page of field translations, kept in the main dialog's working map. New and
/// edit need the translation dialog, which this program does not have yet: those buttons stay
/// insensitive until it does.
class TranslationsPage {
public:
    explicit TranslationsPage(MainDialog& mainDialog) : m_main(mainDialog) {}

    void bindControls();
    /// Lists the working map's keys in the map's order; nothing is selected afterwards.
    void refreshList();

    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    DialogState onTranslationListActivated(StylerEvent* event);
    DialogState onDeleteTranslationActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateDeleteTranslationSensitivity(StylerItem* item);

    MainDialog& m_main;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newTranslation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editTranslation;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteTranslation;
};

} // namespace QorBorderConf
