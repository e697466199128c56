#include "lint.h"

#include <algorithm>
#include <ostream>

namespace fs = boost::filesystem;
using namespace QorLint;

namespace QorfmtCli {

int runLint(const LintOptions& options, std::ostream& out, std::ostream& err) {
    std::vector<LintDocument> documents;
    try {
        applySiteOptions(options.site);
        std::vector<fs::path> given(options.files.begin(), options.files.end());
        std::vector<fs::path> site;
        if (siteKnown()) {
            site = siteDocuments();
        } else if (given.empty()) {
            err << "qorfmt lint: name a site (--site DIR or QORFMT_SITE) or the documents to "
                   "check\n";
            return 2;
        }
        std::vector<LintSource> sources;
        for (const fs::path& file : given) {
            sources.push_back({file, displayPath(file), true});
        }
        for (const fs::path& file : site) {
            const bool alsoGiven = std::any_of(
                given.begin(), given.end(), [&](const fs::path& g) { return sameFile(g, file); });
            if (!alsoGiven) {
                sources.push_back({file, displayPath(file), given.empty()});
            }
        }
        for (LintReading& reading : readLintDocuments(sources)) {
            if (!reading.error.empty()) {
                throw InputError(reading.error);
            }
            documents.push_back(std::move(reading.document));
        }
    } catch (const InputError& e) {
        err << "qorfmt lint: " << e.what() << '\n';
        return 2;
    }
    // Context documents first, in search order, so that lookups find what the configurator finds.
    std::stable_partition(documents.begin(), documents.end(),
                          [](const LintDocument& doc) { return !doc.checked; });
    const std::vector<Finding> findings =
        lint(documents, [](const std::string& name, const std::string& folder) {
            return !findAlongSearchPath(name, folder).empty();
        });
    out << (options.format == "json" ? formatJson(findings) : formatText(findings));
    return findings.empty() ? 0 : 1;
}

} // namespace QorfmtCli
