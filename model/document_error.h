#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace QorBorder {

/// A document that cannot be read or written. what() reads "FILE:LINE: REASON", or
/// "FILE: REASON" when no line applies (line() is then 0), or REASON alone without a file.
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

/// A save refused because the file was changed on disk since the document read or last saved it:
/// saving would replace someone else's work. Nothing was written.
class FileChangedError : public DocumentError {
public:
    explicit FileChangedError(const std::string& file);
};

/// Every document that saveAll could not save, in one message: a first line, then each failure's
/// own text on a line of its own. file() is empty.
class DocumentsNotSavedError : public DocumentError {
public:
    explicit DocumentsNotSavedError(const std::vector<DocumentError>& failures);

    const std::vector<DocumentError>& failures() const { return m_failures; }

private:
    std::vector<DocumentError> m_failures;
};

} // namespace QorBorder
