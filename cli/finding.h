#pragma once

#include <string>
#include <vector>

namespace QorfmtCli {

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
/// A JSON array of objects with the members file, line, severity, message and rule.
std::string formatJson(const std::vector<Finding>& findings);

/// `text` as a JSON string literal, quotes included.
std::string jsonString(const std::string& text);

} // namespace QorfmtCli
