#pragma once

#include <stdexcept>
#include <string>

namespace QorBorder {

/// A document that cannot be read or written. what() reads "FILE:LINE: REASON", or
/// "FILE: REASON" when no line applies (line() is then 0).
class DocumentError : public std::runtime_error {
public:
    DocumentError(const std::string& file, int line, const std::string& reason);

    const std::string& file() const { return m_file; }
    int line() const { return m_line; }
    const std::string& reason() const { return m_reason; }

private:
    std::string m_file;
    int m_line;
    std::string m_reason;
};

} // namespace QorBorder
