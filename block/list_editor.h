#pragma once

#include <NXOpen/UIStyler_Dialog.hxx>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <functional>
#include <utility>

namespace QorBorderConf {

/// New, Copy, Edit and Delete of one list of the block layout dialog, written once for its
/// styles, fields, row types and symbol types: a new item or a copy goes through the item's own
/// dialog and joins the list only on OK; an edited item is changed in place by its dialog; a
/// deleted item goes at once, without a question; the list is shown again after each change.
template <class Item>
class ListEditor {
public:
    using ItemPtr = boost::shared_ptr<Item>;

    /// What differs from list to list.
    struct Steps {
        std::function<ItemPtr(int row)> get; ///< the item of a row; null for no item there
        std::function<NXOpen::UIStyler::DialogResponse(const ItemPtr&)> show; ///< its dialog
        std::function<void(const ItemPtr&)> add;
        std::function<void(int row)> remove;
        std::function<void()> refresh; ///< shows the list again
    };

    explicit ListEditor(Steps steps) : m_steps(std::move(steps)) {}

    /// A default item through its dialog.
    void addNew() const { addThroughDialog(boost::make_shared<Item>()); }
    /// A copy of the item of `row` through its dialog; it keeps every value, its ID too.
    void copy(int row) const {
        if (const ItemPtr source = m_steps.get(row)) {
            addThroughDialog(boost::make_shared<Item>(*source));
        }
    }
    /// The item of `row` in its dialog, shown again in the list on OK.
    void edit(int row) const {
        const ItemPtr item = m_steps.get(row);
        if (item && m_steps.show(item) == NXOpen::UIStyler::DialogResponseOk) {
            m_steps.refresh();
        }
    }
    void remove(int row) const {
        if (row >= 0) {
            m_steps.remove(row);
            m_steps.refresh();
        }
    }

private:
    void addThroughDialog(const ItemPtr& item) const {
        if (m_steps.show(item) == NXOpen::UIStyler::DialogResponseOk) {
            m_steps.add(item);
            m_steps.refresh();
        }
    }

    Steps m_steps;
};

} // namespace QorBorderConf
