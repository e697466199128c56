#pragma once

#include "lint/finding.h"

#include <string>
#include <vector>

namespace QorfmtCli {

/// A JSON array of objects with the members file, line, severity, message and rule.
std::string formatJson(const std::vector<QorLint::Finding>& findings);

/// `text` as a JSON string literal, quotes included.
std::string jsonString(const std::string& text);

} // namespace QorfmtCli
