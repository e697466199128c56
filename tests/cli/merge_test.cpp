// qorfmt merge: three-way merges by the elements' identities and attributes, the conflicts it
// lists, and the driver at work in a real git repository.
#include "merge.h"

#include "document_edits.h"
#include "testutil/temp_dir.h"

#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/wait.h>

using namespace QorfmtCli;
using namespace TestEdits;
namespace fs = boost::filesystem;

namespace {

const fs::path kSite = fs::path(QORFMT_EXAMPLES_DIR) / "site";
const fs::path kBlocks = kSite / "format_defs/iso7200_blocks.fordef";

const std::string kNewField =
    "    <field id=\"NEWFIELD\" type=\"0\" isTableField=\"false\" secondLanguageFieldId=\"\" "
    "collapseNoValue=\"false\" prefix=\"\" suffix=\"\" broadcastType=\"0\" "
    "broadcastValueType=\"0\" broadcastTitle=\"\" syncField=\"false\" controlType=\"1\" "
    "defaultString=\"\" defaultToCurrentDate=\"false\" defaultChoice=\"-1\" attrTitle=\"\"/>";
std::string otherField(const std::string& id, const std::string& prefix = "") {
    std::string line = kNewField;
    line.replace(line.find("NEWFIELD"), 8, id);
    line.replace(line.find("prefix=\"\""), 9, "prefix=\"" + prefix + "\"");
    return line;
}

struct MergeCase {
    const char* name;
    std::vector<Edit> ours;
    std::vector<Edit> theirs;
    std::vector<Edit> result;           ///< applied to BASE
    std::vector<std::string> conflicts; ///< OURS stands for the file
};

std::string canonical(const std::string& text) {
    return QorBorder::FordefWriter::toXml(
        *QorBorder::FordefReader::parse(text.data(), text.size(), "expected"));
}

std::string conflictLines(const std::vector<std::string>& conflicts, const std::string& ours) {
    std::string text;
    for (const std::string& conflict : conflicts) {
        text += ours + conflict.substr(4) + "\n";
    }
    return text;
}

class Merge : public ::testing::Test {
protected:
    int run(const MergeOptions& options) {
        m_out.str("");
        m_err.str("");
        return runMerge(options, m_out, m_err);
    }

    TestUtil::TempDir m_dir;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace

TEST_F(Merge, TableOfTriplesGivesTheMergedDocumentAndTheConflicts) {
    const std::vector<MergeCase> cases = {
        {"nothing changed", {}, {}, {}, {}},
        {"different attributes of one element (one line of text) both merge",
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {replace("fullValue=\"Tooling\"", "fullValue=\"Tooling and fixtures\"")},
         {replace("shortValue=\"Tooling\" fullValue=\"Tooling\"",
                  "shortValue=\"Tool shop\" fullValue=\"Tooling and fixtures\"")},
         {}},
        {"different elements both merge",
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {replace("text=\"Schaltplan\"", "text=\"Stromlaufplan\"")},
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\""),
          replace("text=\"Schaltplan\"", "text=\"Stromlaufplan\"")},
         {}},
        {"the same change on both sides is taken once",
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {}},
        {"one attribute changed to two values keeps ours",
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {replace("shortValue=\"Tooling\"", "shortValue=\"Fixtures\"")},
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {"OURS:8: conflict: block \"ISO7200\" > field \"RESPDEPT\" > choice \"TOOL\": shortValue "
          "changed to \"Tool shop\" in ours and to \"Fixtures\" in theirs (was \"Tooling\")"}},
        {"fields added at different places both arrive where each side put them",
         {insertLineBefore(otherField("OURFIELD"), "field id=\"TECHREF\"")},
         {insertLineBefore(otherField("THEIRFIELD"), "field id=\"SCALE\"")},
         {insertLineBefore(otherField("OURFIELD"), "field id=\"TECHREF\""),
          insertLineBefore(otherField("THEIRFIELD"), "field id=\"SCALE\"")},
         {}},
        {"removed on one side and changed elsewhere on the other both merge",
         {removeLine("lookupKey=\"WDN\"")},
         {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {removeLine("lookupKey=\"WDN\""),
          replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
         {}},
        {"removed on one side and untouched on the other is removed",
         {},
         {removeLine("lookupKey=\"WDN\"")},
         {removeLine("lookupKey=\"WDN\"")},
         {}},
        {"removed on both sides is removed",
         {removeLine("lookupKey=\"WDN\"")},
         {removeLine("lookupKey=\"WDN\"")},
         {removeLine("lookupKey=\"WDN\"")},
         {}},
        {"changed in ours and removed in theirs is kept",
         {replace("shortValue=\"Withdrawn\"", "shortValue=\"Cancelled\"")},
         {removeLine("lookupKey=\"WDN\"")},
         {replace("shortValue=\"Withdrawn\"", "shortValue=\"Cancelled\"")},
         {"OURS:23: conflict: block \"ISO7200\" > field \"DOCSTATUS\" > choice \"WDN\": changed "
          "in ours, removed in theirs: kept"}},
        {"removed in ours and changed in theirs is left out",
         {removeLine("lookupKey=\"WDN\"")},
         {replace("shortValue=\"Withdrawn\"", "shortValue=\"Cancelled\"")},
         {removeLine("lookupKey=\"WDN\"")},
         {"OURS:19: conflict: block \"ISO7200\" > field \"DOCSTATUS\" > choice \"WDN\": removed "
          "in ours, changed in theirs: left out"}},
        {"different rows moved on each side both move",
         {moveLineBefore("field id=\"SCALE\"", "field id=\"LEGALOWNER\"")},
         {moveLineBefore("field id=\"SHEET\"", "field id=\"TITLE\"")},
         {moveLineBefore("field id=\"SCALE\"", "field id=\"LEGALOWNER\""),
          moveLineBefore("field id=\"SHEET\"", "field id=\"TITLE\"")},
         {}},
        {"a row moved on one side and changed on the other moves with its change",
         {moveLineBefore("lookupKey=\"QA\"", "lookupKey=\"ENG\"")},
         {replace("shortValue=\"Quality assurance\"", "shortValue=\"QA\"")},
         {moveLineBefore("lookupKey=\"QA\"", "lookupKey=\"ENG\""),
          replace("shortValue=\"Quality assurance\"", "shortValue=\"QA\"")},
         {}},
        {"one row moved to two places keeps ours",
         {moveLineBefore("lookupKey=\"QA\"", "lookupKey=\"ENG\"")},
         {moveLineBefore("lookupKey=\"QA\"", "lookupKey=\"MFG\"")},
         {moveLineBefore("lookupKey=\"QA\"", "lookupKey=\"ENG\"")},
         {"OURS:6: conflict: block \"ISO7200\" > field \"RESPDEPT\" > choice \"QA\": moved to "
          "different rows in ours and in theirs: kept where ours has it"}},
        {"a row added by theirs lands after its predecessor while ours moved another",
         {moveLineBefore("field id=\"SCALE\"", "field id=\"LEGALOWNER\"")},
         {insertLineBefore(otherField("THEIRFIELD"), "field id=\"TECHREF\"")},
         {moveLineBefore("field id=\"SCALE\"", "field id=\"LEGALOWNER\""),
          insertLineBefore(otherField("THEIRFIELD"), "field id=\"TECHREF\"")},
         {}},
        {"the same element added on both sides with different values keeps ours",
         {insertLineBefore(otherField("NEW", "a"), "field id=\"TECHREF\"")},
         {insertLineBefore(otherField("NEW", "b"), "field id=\"TECHREF\"")},
         {insertLineBefore(otherField("NEW", "a"), "field id=\"TECHREF\"")},
         {"OURS:11: conflict: block \"ISO7200\" > field \"NEW\": prefix is \"a\" in ours and "
          "\"b\" in theirs (added on both sides)"}},
        {"translations added and changed by key both merge",
         {insertLineBefore("  <translation key=\"DE_ISO7200_DOCSTATUS_AAA\" text=\"Neu\"/>",
                           "key=\"DE_ISO7200_DOCSTATUS_APPR\"")},
         {replace("text=\"Freigegeben\"", "text=\"Freigabe erteilt\"")},
         {insertLineBefore("  <translation key=\"DE_ISO7200_DOCSTATUS_AAA\" text=\"Neu\"/>",
                           "key=\"DE_ISO7200_DOCSTATUS_APPR\""),
          replace("text=\"Freigegeben\"", "text=\"Freigabe erteilt\"")},
         {}},
        {"locations of one block merge by their IDs",
         {replace("dialogText=\"Left of the title block\"", "dialogText=\"Left of it\"")},
         {moveLineBefore("location id=\"LEFTOFTB\"", "location id=\"ABOVETB\"")},
         {replace("dialogText=\"Left of the title block\"", "dialogText=\"Left of it\""),
          moveLineBefore("location id=\"LEFTOFTB\"", "location id=\"ABOVETB\"")},
         {}},
    };
    const std::string base = TestUtil::readFile(kBlocks);
    for (const MergeCase& c : cases) {
        SCOPED_TRACE(c.name);
        MergeOptions options;
        options.base = m_dir.write("base.fordef", base).string();
        options.ours = m_dir.write("ours.fordef", apply(base, c.ours)).string();
        options.theirs = m_dir.write("theirs.fordef", apply(base, c.theirs)).string();
        options.output = (m_dir.path() / "out.fordef").string();
        EXPECT_EQ(run(options), c.conflicts.empty() ? 0 : 1);
        EXPECT_EQ(TestUtil::readFile(options.output), canonical(apply(base, c.result)));
        EXPECT_EQ(m_err.str(), conflictLines(c.conflicts, options.ours));
        EXPECT_EQ(m_out.str(), "");
    }
}

TEST_F(Merge, ResultGoesOverOursWithoutOutputAndToStandardOutputWithDash) {
    const std::string base = TestUtil::readFile(kBlocks);
    MergeOptions options;
    options.base = m_dir.write("base.fordef", base).string();
    options.ours = m_dir.write("ours.fordef", base).string();
    options.theirs =
        m_dir.write("theirs.fordef", apply(base, {removeLine("lookupKey=\"WDN\"")})).string();
    options.output = "-";
    EXPECT_EQ(run(options), 0);
    const std::string expected = canonical(apply(base, {removeLine("lookupKey=\"WDN\"")}));
    EXPECT_EQ(m_out.str(), expected);
    EXPECT_EQ(TestUtil::readFile(options.ours), base);
    options.output = "";
    EXPECT_EQ(run(options), 0);
    EXPECT_EQ(TestUtil::readFile(options.ours), expected);
}

TEST_F(Merge, ConflictsNameOursAsGivenWithName) {
    const std::string base = TestUtil::readFile(kBlocks);
    MergeOptions options;
    options.base = m_dir.write("base.fordef", base).string();
    options.ours =
        m_dir.write(".merge_file_x", apply(base, {replace("\"Tooling\"", "\"A\"")})).string();
    options.theirs =
        m_dir.write("theirs.fordef", apply(base, {replace("\"Tooling\"", "\"B\"")})).string();
    options.name = "format_defs/iso7200_blocks.fordef";
    EXPECT_EQ(run(options), 1);
    EXPECT_EQ(m_err.str().rfind("format_defs/iso7200_blocks.fordef:8: conflict: ", 0), 0U)
        << m_err.str();
}

TEST_F(Merge, UnreadableInputIsExitTwoAndWritesNothing) {
    const std::string base = TestUtil::readFile(kBlocks);
    MergeOptions options;
    options.base = m_dir.write("base.fordef", base).string();
    options.ours = m_dir.write("ours.fordef", base).string();
    options.theirs = m_dir.write("theirs.fordef", "<fordef version=\"1\">\n  <block/>\n").string();
    EXPECT_EQ(run(options), 2);
    EXPECT_NE(m_err.str().find("qorfmt merge: " + options.theirs + ":2:"), std::string::npos)
        << m_err.str();
    EXPECT_EQ(TestUtil::readFile(options.ours), base);
}

TEST_F(Merge, ACommentOfEitherSideIsNotDroppedWithoutAWord) {
    const std::string base = TestUtil::readFile(kBlocks);
    const std::string commented =
        apply(base, {insertLineBefore("      <!-- tooling asked for this -->", "\"TOOL\"")});
    ASSERT_NE(commented.find("<!--"), std::string::npos);
    for (const bool oursHasIt : {true, false}) {
        SCOPED_TRACE(oursHasIt ? "ours" : "theirs");
        MergeOptions options;
        options.base = m_dir.write("base.fordef", base).string();
        const std::string ours = oursHasIt ? commented : base;
        options.ours = m_dir.write("ours.fordef", ours).string();
        options.theirs = m_dir.write("theirs.fordef", oursHasIt ? base : commented).string();
        options.name = "format_defs/iso7200_blocks.fordef";
        EXPECT_EQ(run(options), 2);
        const std::string side = oursHasIt
                                     ? options.name + ":8: our version"
                                     : options.theirs + ":8: their version of " + options.name;
        EXPECT_EQ(m_err.str(), "qorfmt merge: " + side +
                                   " holds an XML comment, which the merged document would "
                                   "not keep; nothing was written (--drop-comments merges "
                                   "without comments)\n");
        EXPECT_EQ(TestUtil::readFile(options.ours), ours);

        options.dropComments = true;
        EXPECT_EQ(run(options), 0) << m_err.str();
        EXPECT_EQ(TestUtil::readFile(options.ours), canonical(base));
    }
}

TEST(MergeOrder, RowsMovedOrAddedByTheirsFollowTheirPredecessor) {
    EXPECT_EQ(mergeOrder({"a", "b", "c"}, {"c", "a", "b"}, {"a", "c", "b"}, {"a", "b", "c"}),
              (std::vector<std::string>{"c", "a", "b"}));
    EXPECT_EQ(
        mergeOrder({"a", "b", "c"}, {"a", "b", "c"}, {"x", "a", "b", "c"}, {"a", "b", "c", "x"}),
        (std::vector<std::string>{"x", "a", "b", "c"}));
    EXPECT_EQ(mergeOrder({"a", "b", "c", "d"}, {"b", "a", "c", "d"}, {"a", "b", "d", "c"},
                         {"a", "b", "c", "d"}),
              (std::vector<std::string>{"b", "a", "d", "c"}));
    // Theirs moved c to the end, after e, which ours moved to the front.
    EXPECT_EQ(mergeOrder({"a", "b", "c", "d", "e"}, {"e", "a", "b", "c", "d"},
                         {"a", "b", "d", "e", "c"}, {"a", "b", "c", "d", "e"}),
              (std::vector<std::string>{"e", "a", "b", "d", "c"}));
}

namespace {

struct Shell {
    int exitCode = -1;
    std::string output;
};

// Runs `script` with bash in `dir`, git's settings confined to that folder.
Shell shell(const fs::path& dir, const std::string& script) {
    const fs::path log = dir / "shell.log";
    const fs::path file = dir / "script.sh";
    {
        std::ofstream out(file.string());
        out << "set -e\nexport HOME='" << dir.string()
            << "' GIT_CONFIG_NOSYSTEM=1 GIT_AUTHOR_NAME=Admin GIT_AUTHOR_EMAIL=admin@example.org "
               "GIT_COMMITTER_NAME=Admin GIT_COMMITTER_EMAIL=admin@example.org\n"
            << "cd '" << dir.string() << "'\n"
            << script;
    }
    const std::string command = "bash '" + file.string() + "' >'" + log.string() + "' 2>&1";
    const int status = std::system(command.c_str());
    Shell result;
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.output = TestUtil::readFile(log);
    return result;
}

// A repository of the example site with the driver set up as the README says, and two branches:
// `theirs` and `main` (checked out), each with its edits of the blocks document committed.
void makeRepository(const TestUtil::TempDir& dir, const std::vector<Edit>& ours,
                    const std::vector<Edit>& theirs) {
    fs::create_directories(dir.path() / "repo/format_defs");
    const std::string base = TestUtil::readFile(kBlocks);
    dir.write("repo/format_defs/iso7200_blocks.fordef", base);
    dir.write("ours", apply(base, ours));
    dir.write("theirs", apply(base, theirs));
    const Shell setup = shell(dir.path(), std::string(R"(
cd repo
git init -q -b main
echo '*.fordef merge=fordef diff=fordef' > .gitattributes
git config merge.fordef.name 'format definition documents'
git config merge.fordef.driver ')") + QORFMT_PROGRAM +
                                              R"( merge --name %P %O %A %B'
git config diff.fordef.command ')" + QORFMT_PROGRAM +
                                              R"( diff --git'
git add -A && git commit -qm base
git checkout -qb theirs
cp ../theirs format_defs/iso7200_blocks.fordef && git commit -q --allow-empty -am theirs
git checkout -q main
cp ../ours format_defs/iso7200_blocks.fordef && git commit -q --allow-empty -am ours
)");
    ASSERT_EQ(setup.exitCode, 0) << setup.output;
}

} // namespace

TEST(MergeDriverInGit, ChangesOnOneLineOfTextMergeCleanly) {
    TestUtil::TempDir dir;
    const std::vector<Edit> ours = {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")};
    const std::vector<Edit> theirs = {
        replace("fullValue=\"Tooling\"", "fullValue=\"Tooling and fixtures\"")};
    makeRepository(dir, ours, theirs);
    // Without the driver git's line merge stops on this line.
    const Shell lines = shell(dir.path(), "cd repo\ngit -c merge.fordef.driver= merge -q "
                                          "--no-edit theirs || { echo LINE-CONFLICT; exit 0; }\n"
                                          "git reset -q --hard HEAD~1\n");
    ASSERT_NE(lines.output.find("LINE-CONFLICT"), std::string::npos) << lines.output;
    shell(dir.path(), "cd repo\ngit merge --abort\n");

    const Shell merged = shell(dir.path(), "cd repo\ngit merge -q --no-edit theirs\n");
    EXPECT_EQ(merged.exitCode, 0) << merged.output;
    EXPECT_EQ(shell(dir.path(), "cd repo\ngit status --porcelain\n").output, "");
    EXPECT_EQ(TestUtil::readFile(dir.path() / "repo/format_defs/iso7200_blocks.fordef"),
              canonical(apply(TestUtil::readFile(kBlocks),
                              {replace("shortValue=\"Tooling\" fullValue=\"Tooling\"",
                                       "shortValue=\"Tool shop\" fullValue=\"Tooling and "
                                       "fixtures\"")})));
    const Shell log = shell(dir.path(), "cd repo\ngit log --format=%s\n");
    EXPECT_EQ(log.output, "Merge branch 'theirs'\nours\ntheirs\nbase\n");
}

TEST(MergeDriverInGit, ConflictKeepsOursWithoutMarkersAndIsListed) {
    TestUtil::TempDir dir;
    makeRepository(dir, {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")},
                   {replace("shortValue=\"Tooling\"", "shortValue=\"Fixtures\""),
                    removeLine("lookupKey=\"WDN\"")});
    const Shell merged = shell(dir.path(), "cd repo\ngit merge -q --no-edit theirs || echo "
                                           "EXIT=$?\ngit status --porcelain\n");
    EXPECT_NE(merged.output.find("format_defs/iso7200_blocks.fordef:8: conflict: block "
                                 "\"ISO7200\" > field \"RESPDEPT\" > choice \"TOOL\": shortValue "
                                 "changed to \"Tool shop\" in ours and to \"Fixtures\" in theirs"),
              std::string::npos)
        << merged.output;
    EXPECT_NE(merged.output.find("EXIT=1"), std::string::npos) << merged.output;
    EXPECT_NE(merged.output.find("UU format_defs/iso7200_blocks.fordef"), std::string::npos)
        << merged.output;
    const std::string result =
        TestUtil::readFile(dir.path() / "repo/format_defs/iso7200_blocks.fordef");
    EXPECT_EQ(result,
              canonical(apply(TestUtil::readFile(kBlocks),
                              {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\""),
                               removeLine("lookupKey=\"WDN\"")})));
    EXPECT_EQ(result.find("<<<<<<<"), std::string::npos);
}

TEST(MergeDriverInGit, GitDiffShowsChangesByElement) {
    TestUtil::TempDir dir;
    makeRepository(dir, {replace("shortValue=\"Tooling\"", "shortValue=\"Tool shop\"")}, {});
    const Shell diff = shell(dir.path(), "cd repo\ngit diff HEAD~1 HEAD\n");
    EXPECT_EQ(diff.exitCode, 0) << diff.output;
    EXPECT_EQ(diff.output,
              "qorfmt diff a/format_defs/iso7200_blocks.fordef "
              "b/format_defs/iso7200_blocks.fordef\n"
              "a/format_defs/iso7200_blocks.fordef:8 b/format_defs/iso7200_blocks.fordef:8: block "
              "\"ISO7200\" > field \"RESPDEPT\" > choice \"TOOL\": shortValue changed from "
              "\"Tooling\" to \"Tool shop\"\n");
}
