#pragma once

#include <string>
#include <vector>

namespace QorLint {

enum class Severity { Error, Warning };

/// One fault found in a document, at the line of the element that has it.
struct Finding {
    std::string file;
    int line = 0;
    Severity severity = Severity::Error;
    std::string message;
    std::string rule;
};

/// Order of the report: by file, line, rule and message.
bool operator<(const Finding& a, const Finding& b);
bool operator==(const Finding& a, const Finding& b);

const char* severityName(Severity severity);

/// One line per finding: "FILE:LINE: error|warning: MESSAGE [RULE]".
std::string formatText(const std::vector<Finding>& findings);

} // namespace QorLint
