#include "lint.h"

#include "base/regular_file.h"

#include "model/document_error.h"
#include "model/file_replace.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ostream>

#include <sys/stat.h>

namespace fs = boost::filesystem;
using namespace QorLint;

namespace QorfmtCli {

namespace {

// "" for a regular file (or a link to one), else why it is not read.
std::string notRegular(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return std::string("cannot open the file: ") + std::strerror(errno);
    }
    if (S_ISREG(status.st_mode)) {
        return "";
    }
    return "it is " + Base::fileKind(status.st_mode) + ", not a regular file";
}

std::string report(const std::vector<Finding>& findings, const LintOptions& options) {
    if (options.format == "json") {
        return formatJson(findings);
    }
    if (options.format == "sarif") {
        return formatSarif(findings, commandLintRules(), options.version);
    }
    if (options.format == "github") {
        return formatGithub(findings);
    }
    return formatText(findings);
}

std::string folderList(const std::vector<fs::path>& folders) {
    std::string text;
    for (const fs::path& folder : folders) {
        text += (text.empty() ? "" : ", ") + displayPath(folder);
    }
    return text;
}

} // namespace

std::vector<LintRule> commandLintRules() {
    std::vector<LintRule> rules = lintRules();
    rules.push_back({kUnreadableRule, "a document cannot be read: a file that is not a valid "
                                      "document, cannot be opened, or is no regular file"});
    return rules;
}

int runLint(const LintOptions& options, std::ostream& out, std::ostream& err) {
    std::vector<LintSource> sources;
    std::vector<Finding> unreadable;
    try {
        applySiteOptions(options.site);
        std::vector<fs::path> given(options.files.begin(), options.files.end());
        // A FIFO or a device given by name is refused before anything is read (reading it could
        // block or never end); so is a name that is not there.
        for (const fs::path& file : given) {
            const std::string refusal = notRegular(file);
            if (!refusal.empty()) {
                throw InputError(file.string() + ": " + refusal);
            }
        }
        std::vector<fs::path> site;
        if (siteKnown()) {
            site = siteDocuments();
        } else if (given.empty()) {
            err << "qorfmt lint: name a site (--site DIR or QORFMT_SITE) or the documents to "
                   "check\n";
            return 2;
        }
        if (given.empty() && site.empty()) {
            const std::vector<fs::path> folders = documentFolders();
            std::string hint;
            if (!folders.empty() && folders.front().parent_path().filename() == "format_defs") {
                hint = "; the site is the folder that holds format_defs/, not format_defs/ itself";
            }
            throw InputError("no documents (*.fordef) to check in " + folderList(folders) + hint);
        }
        for (const fs::path& file : given) {
            sources.push_back({file, displayPath(file), true});
        }
        boost::system::error_code ec;
        const fs::path here = fs::current_path(ec);
        for (const fs::path& file : site) {
            const bool alsoGiven = std::any_of(
                given.begin(), given.end(), [&](const fs::path& g) { return sameFile(g, file); });
            if (!alsoGiven) {
                sources.push_back({file, displayPath(file, ec ? fs::path() : here), given.empty()});
            }
        }
    } catch (const InputError& e) {
        err << "qorfmt lint: " << e.what() << '\n';
        return 2;
    }
    // On every core; the context documents resolve first, in search order, so that lookups find
    // what the configurator finds. One that cannot be read, or is no regular file, becomes a
    // finding, so that the others are still checked and a CI run reports all of them.
    LintedFiles linted = lintFiles(sources, [](const std::string& name, const std::string& folder) {
        return !findAlongSearchPath(name, folder).empty();
    });
    for (const UnreadableSource& failed : linted.unreadable) {
        unreadable.push_back({sources[failed.source].shownAs, failed.line, Severity::Error,
                              failed.reason, kUnreadableRule});
    }
    std::vector<Finding> findings = std::move(linted.findings);
    findings.insert(findings.end(), unreadable.begin(), unreadable.end());
    std::sort(findings.begin(), findings.end());

    const std::string text = report(findings, options);
    if (options.output.empty() || options.output == "-") {
        out << text;
    } else {
        try {
            QorBorder::replaceFileAtomically(options.output, text);
        } catch (const QorBorder::DocumentError& e) {
            err << "qorfmt lint: " << e.what() << '\n';
            return 2;
        }
    }
    const auto errors = std::count_if(findings.begin(), findings.end(), [](const Finding& f) {
        return f.severity == Severity::Error;
    });
    const auto warnings = static_cast<long>(findings.size()) - errors;
    if (errors > 0) {
        return 1;
    }
    if (options.maxWarnings >= 0 && warnings > options.maxWarnings) {
        err << "qorfmt lint: " << warnings << (warnings == 1 ? " warning" : " warnings")
            << ", more than --max-warnings " << options.maxWarnings << '\n';
        return 1;
    }
    return 0;
}

} // namespace QorfmtCli
