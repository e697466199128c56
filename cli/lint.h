#pragma once

#include "finding.h"
#include "site.h"

#include "model/definition_document.h"
#include "model/source_lines.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

/// A rule of the checker: its name, as findings show it, and what it finds.
struct LintRule {
    const char* name;
    const char* summary;
};

/// Every rule, in the order of the documentation.
const std::vector<LintRule>& lintRules();

/// A document read for checking, with the lines of its elements.
struct LintDocument {
    std::string file; ///< as findings name it
    boost::shared_ptr<const QorBorder::DefinitionDocument> document;
    QorBorder::SourceLines lines;
    bool checked = true; ///< false: only context for the others (what it defines)
};

/// Whether a template file of that name is found in the folder ("format_defs/frame_templates" or
/// "format_defs/block_templates") along the search path.
using TemplateLookup = std::function<bool(const std::string& name, const std::string& folder)>;

/// The findings in the checked documents, sorted. References are resolved across all documents
/// (checked or not), as the configurator resolves them across all open documents.
std::vector<Finding> lint(const std::vector<LintDocument>& documents,
                          const TemplateLookup& templateFound);

/// Reads a document with its lines; throws InputError when it cannot be read.
LintDocument readLintDocument(const boost::filesystem::path& file, bool checked);

struct LintOptions {
    SiteOptions site;
    std::string format = "text"; ///< "text" or "json"
    std::vector<std::string> files;
};

/// The lint command: 0 without findings, 1 with findings, 2 when a document or the site cannot
/// be read (reported on `err`). Findings go to `out`.
int runLint(const LintOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
