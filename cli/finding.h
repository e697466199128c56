#pragma once

#include "model/lint/finding.h"
#include "model/lint/lint.h"

#include <string>
#include <vector>

namespace QorfmtCli {

/// A JSON array of objects with the members file, line, severity, message and rule, one object
/// per line. Bytes that are not UTF-8 stand as U+FFFD.
std::string formatJson(const std::vector<QorLint::Finding>& findings);

/// A SARIF 2.1.0 log (for code scanning) of one run of qorfmt `version` with `rules`; a finding
/// whose rule is not among them is still given, without a rule index.
std::string formatSarif(const std::vector<QorLint::Finding>& findings,
                        const std::vector<QorLint::LintRule>& rules, const std::string& version);

/// One GitHub Actions workflow command per finding (::error or ::warning with file, line and
/// title), which a workflow shows as annotations.
std::string formatGithub(const std::vector<QorLint::Finding>& findings);

/// The URI of a file in a SARIF log: a relative path as it stands (relative to where lint ran),
/// an absolute one as a file: URI; characters that a URI cannot carry percent-encoded.
std::string sarifUri(const std::string& file);

} // namespace QorfmtCli
