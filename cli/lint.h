#pragma once

#include "finding.h"
#include "site.h"

#include "lint/lint.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

struct LintOptions {
    SiteOptions site;
    std::string format = "text"; ///< "text" or "json"
    std::vector<std::string> files;
};

/// The lint command: 0 without findings, 1 with findings, 2 when a document or the site cannot
/// be read (reported on `err`). Findings go to `out`.
int runLint(const LintOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
