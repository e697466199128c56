// qorfmt: checks, draws, translates and formats the format definitions of a site, without the CAD
// system.

#include "fmt.h"
#include "lint.h"
#include "render.h"
#include "translations.h"

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
    for (const QorLint::LintRule& rule : QorLint::lintRules()) {
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

    RenderOptions render;
    CLI::App* renderCommand = app.add_subcommand(
        "render", "Draw a border at true scale for each of its drawing sizes: sheet, frame, "
                  "zones and their numbering, the size's name and description. A PDF gets one "
                  "page per size; an SVG or PNG one file per size (OUT-SIZE) when there are "
                  "several.");
    renderCommand->add_option("FILE", render.file, "the document")->required()->type_name("FILE");
    renderCommand->add_option("--border", render.border, "the border's ID")
        ->required()
        ->type_name("ID");
    renderCommand->add_option("--size", render.size, "only this drawing size")->type_name("NAME");
    renderCommand
        ->add_option("-o,--output", render.output,
                     "the file to write: .svg, .pdf or .png (default: BORDER.pdf)")
        ->type_name("OUT");
    renderCommand->add_option("--dpi", render.dpi, "the resolution of a PNG (default: 96)")
        ->check(CLI::Range(10, 1200))
        ->type_name("N");
    renderCommand->callback([&] { exitCode = runRender(render, std::cout, std::cerr); });

    CLI::App* translations = app.add_subcommand(
        "translations", "Hand a document's texts to translators as gettext PO catalogs and take "
                        "their translations back.");
    translations->require_subcommand(1);

    ExportOptions exportOptions;
    CLI::App* exportCommand = translations->add_subcommand(
        "export", "Write a PO catalog of the document's texts (text choices and field titles of "
                  "its blocks) with their translations into LANG.");
    exportCommand->add_option("FILE", exportOptions.file, "the document")
        ->required()
        ->type_name("FILE");
    exportCommand
        ->add_option("--language", exportOptions.language,
                     "the language, as the "
                     "translation keys name it")
        ->required()
        ->type_name("LANG");
    exportCommand
        ->add_option("-o,--output", exportOptions.output,
                     "the catalog to write (default: standard output)")
        ->type_name("LANG.po");
    exportCommand->callback([&] { exitCode = runExport(exportOptions, std::cout, std::cerr); });

    ImportOptions importOptions;
    CLI::App* importCommand = translations->add_subcommand(
        "import", "Take the translations of a PO catalog into the document (writes FILE when "
                  "any changed; the language is the catalog's).");
    importCommand->add_option("FILE", importOptions.file, "the document")
        ->required()
        ->type_name("FILE");
    importCommand->add_option("CATALOG", importOptions.catalog, "the PO catalog")
        ->required()
        ->type_name("LANG.po");
    importCommand->callback([&] { exitCode = runImport(importOptions, std::cout, std::cerr); });

    CoverageOptions coverageOptions;
    CLI::App* coverageCommand = translations->add_subcommand(
        "coverage", "Show, for each block and language, how many of the texts that can be "
                    "translated are. Writes nothing.");
    coverageCommand->add_option("FILE", coverageOptions.file, "the document")
        ->required()
        ->type_name("FILE");
    coverageCommand
        ->add_option("--languages", coverageOptions.languages,
                     "the languages (default: the document's second languages and those of its "
                     "translations)")
        ->delimiter(',')
        ->type_name("A,B");
    coverageCommand
        ->add_option("--min", coverageOptions.minimum,
                     "exit 1 when a language covers less than PERCENT of the document's texts")
        ->check(CLI::Range(0.0, 100.0))
        ->type_name("PERCENT");
    coverageCommand->callback(
        [&] { exitCode = runCoverage(coverageOptions, std::cout, std::cerr); });

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
