#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace QorBorder {

/// Where the elements of a document read from a file start (lines from 1), so that a checker can
/// point into the file. Objects held by pointer (borders, blocks, fields, styles, row types,
/// symbol types, locations) are found by their address. Entries without an object of their own
/// are found by their owner's address, their element name and a key: the index in their list
/// (drawing sizes, required blocks, second languages, choices, dialog fields, symbol line fields,
/// type manager choices), a placement's field ID, a table column's row type and field ID joined
/// by a line feed, or a translation's key (its owner is the document).
///
/// The lines are kept in flat lists, sorted when first looked up: a site's checker reads
/// thousands of documents with their lines, and a tree node per element would cost more than the
/// document. Recording after a lookup is allowed; the next lookup sorts again. The same
/// object or entry recorded twice keeps its last line. A lookup may sort, so lookups from several
/// threads at once need finish() first.
class SourceLines {
public:
    /// 0 when nothing was recorded for it.
    int of(const void* object) const {
        sortObjects();
        const auto found = std::upper_bound(m_objects.begin(), m_objects.end(), object,
                                            [](const void* wanted, const ObjectLine& line) {
                                                return std::less<const void*>()(wanted, line.first);
                                            });
        return found == m_objects.begin() || std::prev(found)->first != object
                   ? 0
                   : std::prev(found)->second;
    }
    int of(const void* owner, const std::string& element, const std::string& key) const {
        sortEntries();
        const Key wanted(owner, element, key);
        const auto found =
            std::upper_bound(m_entries.begin(), m_entries.end(), wanted,
                             [](const Key& a, const EntryLine& line) { return a < line.first; });
        return found == m_entries.begin() || std::prev(found)->first != wanted
                   ? 0
                   : std::prev(found)->second;
    }

    /// Whether any entry was recorded: without, of(owner, element, key) is 0 for every key.
    bool hasEntries() const { return !m_entries.empty(); }

    /// Sorts the lines for lookups and gives back the room kept for more: call it once the
    /// document is read.
    void finish() {
        sortObjects();
        sortEntries();
        m_objects.shrink_to_fit();
        m_entries.shrink_to_fit();
    }

    void record(const void* object, int line) {
        m_objects.emplace_back(object, line);
        m_objectsSorted = false;
    }
    void record(const void* owner, const std::string& element, const std::string& key, int line) {
        m_entries.emplace_back(Key(owner, element, key), line);
        m_entriesSorted = false;
    }

private:
    using Key = std::tuple<const void*, std::string, std::string>;
    using ObjectLine = std::pair<const void*, int>;
    using EntryLine = std::pair<Key, int>;

    // Stable, so that of equal keys the one recorded last is last.
    void sortObjects() const {
        if (!m_objectsSorted) {
            std::stable_sort(m_objects.begin(), m_objects.end(),
                             [](const ObjectLine& a, const ObjectLine& b) {
                                 return std::less<const void*>()(a.first, b.first);
                             });
            m_objectsSorted = true;
        }
    }
    void sortEntries() const {
        if (!m_entriesSorted) {
            std::stable_sort(
                m_entries.begin(), m_entries.end(),
                [](const EntryLine& a, const EntryLine& b) { return a.first < b.first; });
            m_entriesSorted = true;
        }
    }

    mutable std::vector<ObjectLine> m_objects;
    mutable std::vector<EntryLine> m_entries;
    mutable bool m_objectsSorted = true;
    mutable bool m_entriesSorted = true;
};

} // namespace QorBorder
