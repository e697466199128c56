#pragma once

#include "model/frame_units_type.h"
#include "model/list_util.h"
#include "model/lookup_index.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace QorBorder {

/// The key of a border or block layout in its document's index: its ID.
struct LayoutById {
    template <class T>
    static const std::string& key(const T& layout) {
        return layout.id;
    }
    template <class T>
    static const std::string& groupKey(const T& layout) {
        return layout.id;
    }
};

/// A document's border layouts or block layouts: their order, the index that finds one by its ID
/// (the first of an ID held twice), and a version that changes whenever one is added or removed,
/// so that a list of them kept elsewhere knows when to build it again.
template <class Layout>
class LayoutList {
public:
    using List = std::vector<boost::shared_ptr<Layout>>;

    LayoutList() = default;
    /// A deep copy: the copy holds new layouts equal to these.
    LayoutList(const LayoutList& other) : m_layouts(ListUtil::deepCopy(other.m_layouts)) {}
    LayoutList& operator=(const LayoutList&) = delete;

    /// Adds the layout itself (not a copy) at the end.
    void add(const boost::shared_ptr<Layout>& layout) {
        m_layouts.push_back(layout);
        m_index.appended(m_layouts);
        ++m_version;
    }

    /// The layout itself, or an empty pointer.
    boost::shared_ptr<Layout> find(const HashedKey& id) {
        const long position = m_index.find(id, m_layouts);
        if (position < 0) {
            return boost::shared_ptr<Layout>();
        }
        m_index.lend(static_cast<std::size_t>(position), m_layouts);
        return m_layouts[static_cast<std::size_t>(position)];
    }

    /// Removes the first layout with that ID; false when there is none.
    bool remove(const HashedKey& id) {
        const long position = m_index.find(id, m_layouts);
        if (position < 0) {
            return false;
        }
        m_layouts.erase(m_layouts.begin() + position);
        m_index.erased(static_cast<std::size_t>(position));
        ++m_version;
        return true;
    }

    /// The layouts of those units, in order; AllUnits gives every layout.
    std::vector<boost::shared_ptr<const Layout>> withUnits(FrameUnitsType units) const {
        std::vector<boost::shared_ptr<const Layout>> result;
        result.reserve(m_layouts.size());
        for (const boost::shared_ptr<Layout>& layout : m_layouts) {
            if (units == AllUnits || layout->units == units) {
                result.push_back(layout);
            }
        }
        return result;
    }

    const List& all() const { return m_layouts; }

    /// Replaces every layout at once, as a document read from its file holds them.
    void assign(List layouts) {
        m_layouts = std::move(layouts);
        m_index = LookupIndex<Layout, LayoutById>();
        ++m_version;
    }

    std::uint64_t version() const { return m_version; }

private:
    List m_layouts;
    LookupIndex<Layout, LayoutById> m_index;
    std::uint64_t m_version = 0;
};

} // namespace QorBorder
