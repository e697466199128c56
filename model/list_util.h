#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

// Helpers for the model's ordered lists of shared items.
namespace QorBorder {
namespace ListUtil {

/// The index as a position, or throws std::out_of_range naming the operation.
inline std::size_t checkedIndex(int index, std::size_t size, const char* operation) {
    if (index < 0 || static_cast<std::size_t>(index) >= size) {
        throw std::out_of_range(std::string(operation) + ": index " + std::to_string(index) +
                                " outside a list of " + std::to_string(size));
    }
    return static_cast<std::size_t>(index);
}

template <class T>
boost::shared_ptr<T> at(const std::vector<boost::shared_ptr<T>>& list, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= list.size()) {
        return boost::shared_ptr<T>();
    }
    return list[static_cast<std::size_t>(index)];
}

template <class T>
void erase(std::vector<boost::shared_ptr<T>>& list, int index, const char* operation) {
    list.erase(list.begin() + static_cast<long>(checkedIndex(index, list.size(), operation)));
}

template <class T>
std::vector<boost::shared_ptr<const T>> constView(const std::vector<boost::shared_ptr<T>>& list) {
    return std::vector<boost::shared_ptr<const T>>(list.begin(), list.end());
}

template <class T>
std::vector<boost::shared_ptr<T>> deepCopy(const std::vector<boost::shared_ptr<T>>& list) {
    std::vector<boost::shared_ptr<T>> copy;
    copy.reserve(list.size());
    for (const boost::shared_ptr<T>& item : list) {
        copy.push_back(boost::make_shared<T>(*item));
    }
    return copy;
}

template <class T>
bool deepEqual(const std::vector<boost::shared_ptr<T>>& a,
               const std::vector<boost::shared_ptr<T>>& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!(*a[i] == *b[i])) {
            return false;
        }
    }
    return true;
}

} // namespace ListUtil
} // namespace QorBorder
