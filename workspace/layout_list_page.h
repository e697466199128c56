#pragma once

#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace QorBorder {
class DefinitionDocument;
}
namespace KivNX {
namespace UI {
class SingleSelectList;
}
} // namespace KivNX

namespace QorBorderConf {

class MainDialog;

/// What the borders and blocks pages share: the list of the active document's layouts, one row
/// per layout ID in the document's order, clearing the other pages' selections, and deleting the
/// selected layout at once. Creating and editing layouts need their layout dialogs, which this
/// program does not have yet: those buttons stay insensitive until it does.
template <class Layout>
class LayoutListPage {
public:
    using Rows = std::vector<boost::shared_ptr<const Layout>>;

    void bindControls();
    /// Rebuilds the list and the row vector from the active document.
    void refreshList();

    /// The layouts shown, row i being element i.
    const Rows& rows() const { return m_rows; }
    const boost::shared_ptr<KivNX::UI::SingleSelectList>& list() const { return m_list; }

protected:
    /// A page's controls, in the order they are bound.
    struct ControlNames {
        const char* list;
        const char* newButton;
        const char* editButton;
        const char* copyButton;
        const char* copyFromButton;
        const char* deleteButton;
    };

    LayoutListPage(MainDialog& mainDialog, const ControlNames& names)
        : m_main(mainDialog), m_names(names) {}
    ~LayoutListPage() = default;

    MainDialog& m_main;

private:
    using DialogState = NXOpen::UIStyler::DialogState;
    using StylerEvent = NXOpen::UIStyler::StylerEvent;
    using StylerItem = NXOpen::UIStyler::StylerItem;

    /// The document's layouts of this page, in its order.
    virtual Rows documentRows(const QorBorder::DefinitionDocument& document) const = 0;
    virtual void deleteLayout(QorBorder::DefinitionDocument& document, const std::string& id) = 0;
    /// Runs after a layout was deleted and the list rebuilt.
    virtual void layoutDeleted() {}

    DialogState onListActivated(StylerEvent* event);
    DialogState onDeleteActivated(StylerEvent* event);
    void updateListSensitivity(StylerItem* item);
    void updateDeleteSensitivity(StylerItem* item);

    ControlNames m_names;
    Rows m_rows;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_list;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_newButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_editButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_copyFromButton;
    boost::shared_ptr<NXOpen::UIStyler::PushButton> m_deleteButton;
};

} // namespace QorBorderConf
