#pragma once

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace QorBorder {

/// A key with its hash, computed once when one key is looked up in many indexes.
struct HashedKey {
    explicit HashedKey(std::string_view keyText)
        : text(keyText), hash(std::hash<std::string_view>()(keyText)) {}

    std::string_view text;
    std::size_t hash;

    bool operator==(const HashedKey& other) const { return text == other.text; }
};

struct HashedKeyHash {
    std::size_t operator()(const HashedKey& key) const { return key.hash; }
};

/// One bit per hash value modulo its size, about 8 bits per key: a clear bit proves a key absent
/// with one memory access, so the many documents that lack a key are passed over quickly.
class HashFilter {
public:
    void reset(std::size_t keys) {
        std::size_t words = 1;
        while (words * 64 < keys * 8) {
            words *= 2;
        }
        m_words.assign(words, 0);
    }
    void add(std::size_t hash) {
        if (m_words.empty()) {
            reset(1);
        }
        const std::size_t bit = (hash >> 17) & (m_words.size() * 64 - 1);
        m_words[bit / 64] |= std::uint64_t(1) << (bit % 64);
    }
    bool mayContain(std::size_t hash) const {
        if (m_words.empty()) {
            return false;
        }
        const std::size_t bit = (hash >> 17) & (m_words.size() * 64 - 1);
        return (m_words[bit / 64] >> (bit % 64)) & 1;
    }

private:
    std::vector<std::uint64_t> m_words;
};

/// A hash index from a key (an object's ID) to the position of the first object with that key
/// in an owner's list. The objects are edited in place through the shared pointers the owner hands
/// out (and through the one it was given), so a key can change behind the index's back. The index
/// therefore watches every object handed out: at each lookup it compares the watched objects' keys
/// with the keys it indexed them under and rebuilds itself when one differs. An object stays
/// watched as long as any shared pointer to it exists besides the owner's own, since only through
/// one can it still change; the comparison made after the last one is gone sees every change made
/// through it. Watched objects are known by their position in the list, never by their address.
/// So every answer equals a scan of the list, at the cost of one hash probe plus one key
/// comparison per watched object.
template <class T, class KeyOf>
class LookupIndex {
public:
    using List = std::vector<boost::shared_ptr<T>>;

    /// The position of the first object whose key is `key`, or -1.
    long find(const HashedKey& key, const List& list) {
        refresh(list);
        if (!m_filter.mayContain(key.hash)) {
            return -1;
        }
        const auto it = m_positions.find(key);
        return it == m_positions.end() ? -1 : static_cast<long>(it->second);
    }

    /// Positions of all objects whose group key is `key`, in list order, or nullptr.
    const std::vector<std::size_t>* group(const std::string& key, const List& list) {
        refresh(list);
        if (!m_groupsValid) {
            m_groups.clear();
            for (std::size_t i = 0; i < list.size(); ++i) {
                m_groups[KeyOf::groupKey(*list[i])].push_back(i);
            }
            m_groupsValid = true;
        }
        const auto it = m_groups.find(key);
        return it == m_groups.end() ? nullptr : &it->second;
    }

    /// The object at `position` is being handed out: someone besides the owner may change it.
    /// Call right after find() or group(), which brought the index up to date.
    void lend(std::size_t position, const List& list) {
        for (const Watched& watched : m_watched) {
            if (watched.position == position) {
                return;
            }
        }
        const T& object = *list[position];
        m_watched.push_back({position, KeyOf::key(object), KeyOf::groupKey(object)});
    }

    /// An object was appended to the list; its giver still holds it.
    void appended(const List& list) {
        if (m_valid) {
            insert(KeyOf::key(*list.back()), list.size() - 1);
        }
        // Without a valid index the next lookup rebuilds it, and with it this snapshot.
        lend(list.size() - 1, list);
        m_groupsValid = false;
    }

    /// The object at `position` was erased from the list.
    void erased(std::size_t position) {
        for (std::size_t i = 0; i < m_watched.size();) {
            if (m_watched[i].position == position) {
                m_watched.erase(m_watched.begin() + static_cast<long>(i));
                continue;
            }
            if (m_watched[i].position > position) {
                --m_watched[i].position;
            }
            ++i;
        }
        m_valid = false;
        m_groupsValid = false;
    }

private:
    struct Watched {
        std::size_t position;
        std::string key;      ///< the key the index holds for the object
        std::string groupKey; ///< the group key the groups were built with
    };

    void refresh(const List& list) {
        if (m_valid) {
            for (const Watched& watched : m_watched) {
                const T& object = *list[watched.position];
                if (KeyOf::key(object) != watched.key ||
                    KeyOf::groupKey(object) != watched.groupKey) {
                    m_valid = false;
                    break;
                }
            }
        }
        if (!m_valid) {
            rebuild(list);
        }
        // Every watched key is current now; an object only the owner holds cannot change.
        for (std::size_t i = 0; i < m_watched.size();) {
            if (list[m_watched[i].position].use_count() == 1) {
                m_watched.erase(m_watched.begin() + static_cast<long>(i));
            } else {
                ++i;
            }
        }
    }

    void rebuild(const List& list) {
        m_positions.clear();
        m_keys.clear();
        m_filter.reset(list.size() + list.size() / 2);
        m_positions.reserve(list.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            insert(KeyOf::key(*list[i]), i);
        }
        for (Watched& watched : m_watched) {
            const T& object = *list[watched.position];
            watched.key = KeyOf::key(object);
            watched.groupKey = KeyOf::groupKey(object);
        }
        m_valid = true;
        m_groupsValid = false;
    }

    // The first position wins; the key text lives in m_keys, whose elements never move.
    void insert(std::string key, std::size_t position) {
        const HashedKey probe(key);
        if (m_positions.count(probe) == 0) {
            m_keys.push_back(std::move(key));
            m_positions.emplace(HashedKey(m_keys.back()), position);
            m_filter.add(probe.hash);
        }
    }

    std::unordered_map<HashedKey, std::size_t, HashedKeyHash> m_positions;
    std::deque<std::string> m_keys;
    HashFilter m_filter;
    std::unordered_map<std::string, std::vector<std::size_t>> m_groups;
    std::vector<Watched> m_watched;
    bool m_valid = false;
    bool m_groupsValid = false;
};

} // namespace QorBorder
