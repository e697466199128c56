#pragma once

#include <map>
#include <string>
#include <tuple>

namespace QorBorder {

/// Where the elements of a document read from a file start (lines from 1), so that a checker can
/// point into the file. Objects held by pointer (borders, blocks, fields, styles, row types,
/// symbol types, locations) are found by their address. Entries without an object of their own
/// are found by their owner's address, their element name and a key: the index in their list
/// (drawing sizes, required blocks, second languages, choices, dialog fields, symbol line fields,
/// type manager choices), a placement's field ID, a table column's row type and field ID joined
/// by a line feed, or a translation's key (its owner is the document).
class SourceLines {
public:
    /// 0 when nothing was recorded for it.
    int of(const void* object) const {
        const auto found = m_objects.find(object);
        return found == m_objects.end() ? 0 : found->second;
    }
    int of(const void* owner, const std::string& element, const std::string& key) const {
        const auto found = m_entries.find(std::make_tuple(owner, element, key));
        return found == m_entries.end() ? 0 : found->second;
    }

    void record(const void* object, int line) { m_objects[object] = line; }
    void record(const void* owner, const std::string& element, const std::string& key, int line) {
        m_entries[std::make_tuple(owner, element, key)] = line;
    }

private:
    std::map<const void*, int> m_objects;
    std::map<std::tuple<const void*, std::string, std::string>, int> m_entries;
};

} // namespace QorBorder
