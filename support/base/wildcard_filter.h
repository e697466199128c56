#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/regex.hpp>

#include <string>

namespace Base {

/// A file-name pattern where `*` stands for any run of characters and `?` for one character;
/// every other character stands for itself. It is case-sensitive and matches the whole leaf
/// (file name) of a path, never the directories above it.
class WildcardFilter {
public:
    explicit WildcardFilter(const std::string& pattern);

    const std::string& pattern() const { return m_pattern; }

    bool matches(const std::string& leafName) const;
    bool matches(const boost::filesystem::path& path) const;

private:
    std::string m_pattern;
    boost::regex m_regex;
};

} // namespace Base
