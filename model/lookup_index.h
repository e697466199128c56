#pragma once

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

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
/// in an owner's list. The objects are edited in place through the pointers the owner hands out,
/// so a key can change behind the index's back: every object handed out for editing is "lent"
/// and, while someone besides the owner still holds it, its key is compared at each lookup; a
/// changed key rebuilds the index. So lookups stay exact and cost O(1) plus O(lent objects).
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

    /// Positions of all objects, grouped by key, in list order (built on demand).
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

    /// `object` (in the list) may now be changed by a holder other than the owner.
    void lend(const boost::shared_ptr<T>& object) {
        for (const Lent& lent : m_lent) {
            if (lent.raw == object.get()) {
                return;
            }
        }
        m_lent.push_back({object.get(), object, KeyOf::key(*object), KeyOf::groupKey(*object)});
    }

    /// An object was appended to the list.
    void appended(const List& list) {
        if (m_valid) {
            insert(KeyOf::key(*list.back()), list.size() - 1);
        }
        m_groupsValid = false;
    }

    /// The list changed in any other way.
    void invalidate() {
        m_valid = false;
        m_groupsValid = false;
    }

private:
    struct Lent {
        const T* raw;
        boost::weak_ptr<T> object;
        std::string key;
        std::string groupKey;
    };

    void refresh(const List& list) {
        if (m_valid) {
            for (std::size_t i = 0; i < m_lent.size();) {
                const boost::shared_ptr<T> object = m_lent[i].object.lock();
                if (!object) {
                    m_lent.erase(m_lent.begin() + static_cast<long>(i));
                    continue;
                }
                if (KeyOf::key(*object) != m_lent[i].key ||
                    KeyOf::groupKey(*object) != m_lent[i].groupKey) {
                    m_valid = false;
                    break;
                }
                // Held only by the owner and by `object` here: nobody else can change it now.
                if (object.use_count() <= 2) {
                    m_lent.erase(m_lent.begin() + static_cast<long>(i));
                    continue;
                }
                ++i;
            }
        }
        if (!m_valid) {
            rebuild(list);
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
        std::vector<Lent> still;
        for (const Lent& lent : m_lent) {
            if (const boost::shared_ptr<T> object = lent.object.lock()) {
                still.push_back(
                    {lent.raw, lent.object, KeyOf::key(*object), KeyOf::groupKey(*object)});
            }
        }
        m_lent.swap(still);
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
    std::vector<Lent> m_lent;
    bool m_valid = false;
    bool m_groupsValid = false;
};

} // namespace QorBorder
