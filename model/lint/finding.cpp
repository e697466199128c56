#include "model/lint/finding.h"

#include <tuple>

namespace QorLint {

bool operator<(const Finding& a, const Finding& b) {
    return std::tie(a.file, a.line, a.rule, a.message) <
           std::tie(b.file, b.line, b.rule, b.message);
}

bool operator==(const Finding& a, const Finding& b) {
    return a.file == b.file && a.line == b.line && a.severity == b.severity &&
           a.message == b.message && a.rule == b.rule;
}

const char* severityName(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

std::string formatText(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& f : findings) {
        text += f.file + ":" + std::to_string(f.line) + ": " + severityName(f.severity) + ": " +
                f.message + " [" + f.rule + "]\n";
    }
    return text;
}

} // namespace QorLint
