// qorfmt: checks, draws, translates and formats the format definitions of a site, without the CAD
// system.

#include "diff.h"
#include "fmt.h"
#include "lint.h"
#include "merge.h"
#include "render.h"
#include "translations.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <iostream>
#include <new>
#include <string>
#include <vector>

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
    for (const QorLint::LintRule& rule : commandLintRules()) {
        text += "  " + std::string(rule.name) + "\n      " + rule.summary + "\n";
    }
    return text;
}

// Runs a command; whatever escapes it ends the command with exit status 2 and a message that
// names it, never with an abort.
int guarded(const std::string& command, const std::function<int()>& run) {
    try {
        return run();
    } catch (const std::bad_alloc&) {
        std::cerr << "qorfmt " << command << ": out of memory\n";
    } catch (const std::exception& e) {
        std::cerr << "qorfmt " << command << ": " << e.what() << '\n';
    } catch (...) {
        std::cerr << "qorfmt " << command << ": failed for an unknown reason\n";
    }
    return 2;
}

std::size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])});
            diagonal = above;
        }
    }
    return row[b.size()];
}

// Follows the command words of the arguments; a word that names no command is refused with the
// nearest command's name. Returns false (after the message) for such a word.
bool commandWordsKnown(const CLI::App& app, int argc, char** argv) {
    const CLI::App* current = &app;
    std::string path = "qorfmt";
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const std::vector<const CLI::App*> commands =
            current->get_subcommands([](const CLI::App*) { return true; });
        if (word.empty() || word[0] == '-' || commands.empty()) {
            return true;
        }
        const CLI::App* found = nullptr;
        const CLI::App* nearest = nullptr;
        std::size_t best = 0;
        std::string names;
        for (const CLI::App* command : commands) {
            names += (names.empty() ? "" : ", ") + command->get_name();
            if (command->get_name() == word) {
                found = command;
            }
            const std::size_t distance = editDistance(word, command->get_name());
            if (!nearest || distance < best) {
                nearest = command;
                best = distance;
            }
        }
        if (!found) {
            std::cerr << path << ": '" << word << "' is not a command";
            if (best <= std::max<std::size_t>(2, word.size() / 3)) {
                std::cerr << "; did you mean '" << nearest->get_name() << "'?\n";
            } else {
                std::cerr << " (the commands are " << names << ")\n";
            }
            return false;
        }
        current = found;
        path += " " + word;
    }
    return true;
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
                "site. A document that cannot be read is an 'unreadable' error and the others are "
                "still checked. Exit 1 when there is an error (or more warnings than "
                "--max-warnings), 2 when there is nothing to check.");
    addSiteOptions(*lintCommand, lint.site);
    lintCommand
        ->add_option("--format", lint.format,
                     "text (default), json, sarif (SARIF 2.1.0 for code scanning) or github "
                     "(GitHub Actions annotations)")
        ->check(CLI::IsMember({"text", "json", "sarif", "github"}))
        ->type_name("FORMAT");
    lintCommand
        ->add_option("-o,--output", lint.output,
                     "write the report to FILE (default: standard "
                     "output)")
        ->type_name("FILE");
    lintCommand
        ->add_option("--max-warnings", lint.maxWarnings,
                     "exit 1 when there are more than N warnings (default: warnings alone "
                     "exit 0)")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    lintCommand
        ->add_option("FILE", lint.files,
                     "documents to check, in the site's context (regular files only)")
        ->type_name("FILE");
    lint.version = QORFMT_VERSION;
    lintCommand->footer(lintRulesText());
    lintCommand->callback(
        [&] { exitCode = guarded("lint", [&] { return runLint(lint, std::cout, std::cerr); }); });

    FmtOptions fmt;
    CLI::App* fmtCommand = app.add_subcommand(
        "fmt", "Rewrite documents in canonical form, as the configurator saves them.");
    fmtCommand->add_flag(
        "--check", fmt.check,
        "only name the documents that would change (exit 1 if any); write nothing");
    fmtCommand->add_flag("--diff", fmt.diff,
                         "only show what would change, as a unified diff (exit 1 if anything "
                         "would); write nothing");
    fmtCommand->add_flag("--drop-comments", fmt.dropComments,
                         "rewrite documents that hold XML comments, which are lost (without it "
                         "such a document is refused, naming the line of its first comment)");
    fmtCommand
        ->add_option("FILE", fmt.files,
                     "documents to format (- reads standard input and "
                     "writes the result to standard output)")
        ->required()
        ->type_name("FILE");
    fmtCommand->callback(
        [&] { exitCode = guarded("fmt", [&] { return runFmt(fmt, std::cout, std::cerr); }); });

    DiffOptions diff;
    CLI::App* diffCommand = app.add_subcommand(
        "diff", "Show what changed from document A to document B: borders, blocks and their "
                "parts matched by their IDs, not by line; elements added, removed or moved in "
                "their list, and attributes with the old and the new value, each with its line "
                "in both files. Exit 0 when they are equal, 1 when they differ.");
    diffCommand->add_option("--format", diff.format, "text (default) or json")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    std::vector<std::string> gitArguments;
    std::string diffA;
    std::string diffB;
    diffCommand
        ->add_option("--git", gitArguments,
                     "as git's diff driver: take the seven arguments git hands it instead of A "
                     "B (/dev/null for a side that is missing), and exit 0 when the documents "
                     "differ")
        ->expected(7)
        ->type_name("PATH OLD-FILE OLD-HEX OLD-MODE NEW-FILE NEW-HEX NEW-MODE");
    diffCommand->add_option("A", diffA, "the old document (- for standard input)")->type_name("");
    diffCommand->add_option("B", diffB, "the new document (- for standard input)")->type_name("");
    diffCommand->callback([&] {
        diff.git = !gitArguments.empty();
        diff.files = diff.git ? gitArguments : std::vector<std::string>{diffA, diffB};
        if (!diff.git && (diffA.empty() || diffB.empty())) {
            std::cerr << "qorfmt diff: give two documents, A and B\n";
            exitCode = 2;
            return;
        }
        exitCode = guarded("diff", [&] { return runDiff(diff, std::cout, std::cerr); });
    });

    MergeOptions merge;
    CLI::App* mergeCommand = app.add_subcommand(
        "merge", "Merge the changes of two documents made from BASE, element by element and "
                 "attribute by attribute, as git's merge driver (%O %A %B). Where both changed "
                 "the same thing in two ways the result keeps OURS and the conflict is listed on "
                 "standard error as OURS:LINE: conflict: ... The result is a valid document in "
                 "canonical form. Exit 0 when clean, 1 on conflicts.");
    mergeCommand->add_option("BASE", merge.base, "the common ancestor")
        ->required()
        ->type_name("BASE");
    mergeCommand->add_option("OURS", merge.ours, "our version")->required()->type_name("OURS");
    mergeCommand->add_option("THEIRS", merge.theirs, "their version")
        ->required()
        ->type_name("THEIRS");
    mergeCommand
        ->add_option("-o,--output", merge.output,
                     "where to write the result, - for standard output (default: over OURS)")
        ->type_name("OUT");
    mergeCommand
        ->add_option("--name", merge.name,
                     "OURS' name in the conflict messages (git's %P; default: OURS)")
        ->type_name("PATH");
    mergeCommand->add_flag("--drop-comments", merge.dropComments,
                           "merge even though OURS or THEIRS holds XML comments, which are lost "
                           "(without it such a merge is refused, naming the line of the first "
                           "comment, and nothing is written)");
    mergeCommand->callback([&] {
        exitCode = guarded("merge", [&] { return runMerge(merge, std::cout, std::cerr); });
    });

    RenderOptions render;
    CLI::App* renderCommand = app.add_subcommand(
        "render", "Draw a border at true scale for each of its drawing sizes: sheet, frame, "
                  "zones and their numbering, the size's name and description. A PDF gets one "
                  "page per size; an SVG or PNG one file per size (OUT-SIZE) when there are "
                  "several.");
    renderCommand->add_option("FILE", render.file, "the document (- for standard input)")
        ->required()
        ->type_name("FILE");
    CLI::Option* borderOption =
        renderCommand->add_option("--border", render.border, "the border's ID")->type_name("ID");
    CLI::Option* allOption = renderCommand->add_flag(
        "--all", render.all, "every border of the document, each in its own file (OUT-BORDER)");
    renderCommand->add_flag("--list", render.list, "only name the borders and their sizes");
    borderOption->excludes(allOption);
    renderCommand->add_option("--size", render.size, "only this drawing size")->type_name("NAME");
    renderCommand
        ->add_option("-o,--output", render.output,
                     "the file to write: .svg, .pdf or .png (default: BORDER.pdf); - for "
                     "standard output, in --format")
        ->type_name("OUT");
    renderCommand
        ->add_option("--format", render.format,
                     "what -o - writes: pdf (default), svg or png (one drawing size)")
        ->check(CLI::IsMember({"pdf", "svg", "png"}))
        ->type_name("FORMAT");
    renderCommand->add_option("--dpi", render.dpi, "the resolution of a PNG (default: 96)")
        ->check(CLI::Range(10, 1200))
        ->type_name("N");
    renderCommand->callback([&] {
        exitCode = guarded("render", [&] { return runRender(render, std::cout, std::cerr); });
    });

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
    exportCommand->callback([&] {
        exitCode = guarded("translations export",
                           [&] { return runExport(exportOptions, std::cout, std::cerr); });
    });

    TemplateOptions templateOptions;
    CLI::App* templateCommand = translations->add_subcommand(
        "template", "Write a PO template (.pot) of the document's texts: every translation "
                    "empty and no language, for msginit, Poedit or Weblate to start a new "
                    "language from.");
    templateCommand->add_option("FILE", templateOptions.file, "the document (- for standard input)")
        ->required()
        ->type_name("FILE");
    templateCommand
        ->add_option("-o,--output", templateOptions.output,
                     "the template to write (default: standard output)")
        ->type_name("FILE.pot");
    templateCommand->callback([&] {
        exitCode = guarded("translations template",
                           [&] { return runTemplate(templateOptions, std::cout, std::cerr); });
    });

    ImportOptions importOptions;
    CLI::App* importCommand = translations->add_subcommand(
        "import", "Take the translations of a PO catalog into the document (writes FILE when "
                  "any changed). The language is the catalog's, matched to the document's "
                  "languages without regard to case and region (de, de_DE and DE are one). "
                  "Entries translated from a text the document no longer has are left out as "
                  "stale.");
    importCommand->add_option("FILE", importOptions.file, "the document")
        ->required()
        ->type_name("FILE");
    importCommand->add_flag("--drop-comments", importOptions.dropComments,
                            "save the document even though it holds XML comments, which are "
                            "lost");
    importCommand
        ->add_option("CATALOG", importOptions.catalog, "the PO catalog (- for standard input)")
        ->required()
        ->type_name("LANG.po");
    importCommand->callback([&] {
        exitCode = guarded("translations import",
                           [&] { return runImport(importOptions, std::cout, std::cerr); });
    });

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
    coverageCommand->callback([&] {
        exitCode = guarded("translations coverage",
                           [&] { return runCoverage(coverageOptions, std::cout, std::cerr); });
    });

    if (!commandWordsKnown(app, argc, argv)) {
        return 2;
    }
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
    } catch (const std::exception& e) {
        std::cerr << "qorfmt: " << e.what() << '\n';
        return 2;
    }
    return exitCode;
}
