// qorfmt: checks, draws, translates and formats the format definitions of a site, without the CAD
// system.

#include "fmt.h"
#include "lint.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>

using namespace QorfmtCli;

namespace {

void addSiteOptions(CLI::App& command, SiteOptions& site) {
    command.add_option("--site", site.site, "the site directory (default: QORFMT_SITE)")
        ->type_name("DIR");
    command
        .add_option("--configuration", site.configuration,
                    "the configuration of the site (default: QORFMT_CONFIGURATION, else the "
                    "site's default)")
        ->type_name("NAME");
    command
        .add_option("--search-path", site.searchPath,
                    "further root directories, separated by ':', searched for format_defs/")
        ->type_name("DIRS");
}

std::string lintRulesText() {
    std::string text = "Rules:\n";
    for (const LintRule& rule : lintRules()) {
        text += "  " + std::string(rule.name) + "\n      " + rule.summary + "\n";
    }
    return text;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Checks, draws, translates and formats format definition documents (.fordef).",
                 "qorfmt");
    app.set_version_flag("--version", std::string("qorfmt ") + QORFMT_VERSION);
    app.require_subcommand(1);
    app.footer("Exit status: 0 success, 1 findings or failed checks, 2 usage error or "
               "unreadable input.");
    int exitCode = 0;

    LintOptions lint;
    CLI::App* lintCommand = app.add_subcommand(
        "lint", "Check documents: without FILEs, every document the configurator lists for the "
                "site. Writes nothing.");
    addSiteOptions(*lintCommand, lint.site);
    lintCommand->add_option("--format", lint.format, "text (default) or json")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    lintCommand->add_option("FILE", lint.files, "documents to check, in the site's context")
        ->type_name("FILE");
    lintCommand->footer(lintRulesText());
    lintCommand->callback([&] { exitCode = runLint(lint, std::cout, std::cerr); });

    FmtOptions fmt;
    CLI::App* fmtCommand = app.add_subcommand(
        "fmt", "Rewrite documents in canonical form, as the configurator saves them.");
    fmtCommand->add_flag(
        "--check", fmt.check,
        "only name the documents that would change (exit 1 if any); write nothing");
    fmtCommand->add_option("FILE", fmt.files, "documents to format")->required()->type_name("FILE");
    fmtCommand->callback([&] { exitCode = runFmt(fmt, std::cout, std::cerr); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForVersion& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        app.exit(e);
        return 2;
    }
    return exitCode;
}
