#include "base/wildcard_filter.h"

namespace Base {

namespace {

boost::regex compile(const std::string& pattern) {
    std::string expression;
    expression.reserve(pattern.size() * 2);
    for (char c : pattern) {
        switch (c) {
        case '*':
            expression += "[\\s\\S]*";
            break;
        case '?':
            expression += "[\\s\\S]";
            break;
        default:
            // Escaping every other byte keeps regex metacharacters literal and passes
            // non-ASCII bytes through unchanged.
            if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                  static_cast<unsigned char>(c) >= 0x80)) {
                expression += '\\';
            }
            expression += c;
        }
    }
    return boost::regex(expression, boost::regex::perl);
}

} // namespace

WildcardFilter::WildcardFilter(const std::string& pattern)
    : m_pattern(pattern), m_regex(compile(pattern)) {}

bool WildcardFilter::matches(const std::string& leafName) const {
    return boost::regex_match(leafName, m_regex, boost::match_default);
}

bool WildcardFilter::matches(const boost::filesystem::path& path) const {
    return matches(path.filename().string());
}

} // namespace Base
