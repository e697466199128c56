#pragma once

#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <boost/shared_ptr.hpp>

#include <functional>

namespace QorBorder {
class DefinitionDocument;
}
namespace KivNX {
namespace UI {
class SingleSelectList;
}
} // namespace KivNX

namespace QorBorderConf {

/// What a page of the main dialog may ask of the dialog that serves it; the pages see nothing
/// else of it.
class PageHost {
public:
    /// The active document; null when none.
    virtual const boost::shared_ptr<QorBorder::DefinitionDocument>& activeDocument() const = 0;
    /// Sets the active document's `modified` flag: a dialog has changed one of its objects in
    /// place. Does nothing without an active document.
    virtual void markActiveDocumentModified() = 0;
    /// Clears the selection of every page list but `keep`, so that one list at most has one.
    virtual void deselectListsOtherThan(const KivNX::UI::SingleSelectList* keep) = 0;
    /// The active document's block layouts were added, changed or deleted: the locations page
    /// refills its block filter.
    virtual void blockLayoutsChanged() = 0;
    /// Runs an action that reads or writes documents. When a document cannot be read or written
    /// (the model's or the file system's error), the "Error" box shows why and the main dialog
    /// stays open, with what the action had not yet changed as it was; NX's own errors still end
    /// the run. Returns the action's state, or "continue" after an error.
    virtual NXOpen::UIStyler::DialogState
    runFileAction(const std::function<NXOpen::UIStyler::DialogState()>& action) = 0;

protected:
    ~PageHost() = default;
};

} // namespace QorBorderConf
