#include "model/document_error.h"

namespace QorBorder {

namespace {

std::string describe(const std::string& file, int line, const std::string& reason) {
    if (file.empty()) {
        return reason;
    }
    return line > 0 ? file + ":" + std::to_string(line) + ": " + reason : file + ": " + reason;
}

std::string listed(const std::vector<DocumentError>& failures) {
    std::string text = failures.size() == 1 ? "This document was not saved:"
                                            : "These " + std::to_string(failures.size()) +
                                                  " documents were not saved:";
    for (const DocumentError& failure : failures) {
        text += "\n";
        text += failure.what();
    }
    return text;
}

} // namespace

DocumentError::DocumentError(const std::string& file, int line, const std::string& reason)
    : std::runtime_error(describe(file, line, reason)), m_file(file), m_line(line),
      m_reason(reason) {}

FileChangedError::FileChangedError(const std::string& file)
    : DocumentError(file, 0,
                    "the file was changed by someone else since it was opened or last saved "
                    "here; nothing was saved. Save the document under another name to keep "
                    "your changes, and compare the two files.") {}

DocumentsNotSavedError::DocumentsNotSavedError(const std::vector<DocumentError>& failures)
    : DocumentError("", 0, listed(failures)), m_failures(failures) {}

} // namespace QorBorder
