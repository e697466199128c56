#include "model/document_error.h"

namespace QorBorder {

namespace {

std::string describe(const std::string& file, int line, const std::string& reason) {
    return line > 0 ? file + ":" + std::to_string(line) + ": " + reason : file + ": " + reason;
}

} // namespace

DocumentError::DocumentError(const std::string& file, int line, const std::string& reason)
    : std::runtime_error(describe(file, line, reason)), m_file(file), m_line(line),
      m_reason(reason) {}

} // namespace QorBorder
