#pragma once

#include "finding.h"
#include "site.h"

#include "model/lint/lint.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

struct LintOptions {
    SiteOptions site;
    std::string format = "text"; ///< text, json, sarif or github
    std::string output;          ///< the report's file; "" or "-" for standard output
    int maxWarnings = -1;        ///< more warnings than this fail the run; below 0: no limit
    std::string version;         ///< of qorfmt, for the SARIF log
    std::vector<std::string> files;
};

/// The rule under which a document that cannot be read is reported.
constexpr const char* kUnreadableRule = "unreadable";

/// The rules of lint as the command line reports them: the lint library's and `unreadable`.
std::vector<QorLint::LintRule> commandLintRules();

/// The lint command. A document that cannot be read is an `unreadable` error finding and the
/// others are still checked. Returns 1 when there is an error, or more warnings than
/// `maxWarnings`; 2 when a FILE is missing or not a regular file (refused before anything is
/// read), the site cannot be used, there is no document to check (the folders looked in are
/// named) or the report cannot be written; else 0. The report goes to `out` or to `output`.
int runLint(const LintOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
