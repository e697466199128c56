// scripts/new-dialog run into a scratch folder that holds the files it edits, copied from the
// checkout: what it writes for each folder, and that every refusal leaves the folder as it was.
#include "testutil/temp_dir.h"

#include <boost/filesystem/operations.hpp>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace fs = boost::filesystem;

namespace {

const fs::path kSource = QORFMT_SOURCE_DIR;

struct ScriptRun {
    int status;         ///< the exit status, -1 when the script did not exit
    std::string output; ///< standard output and error
};

std::string quoted(const std::string& text) {
    std::string out = "'";
    for (char c : text) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

ScriptRun newDialog(const fs::path& root, const std::vector<std::string>& args) {
    std::string command = quoted(NEW_DIALOG_SCRIPT) + " --root " + quoted(root.string());
    for (const std::string& arg : args) {
        command += " " + quoted(arg);
    }
    command += " 2>&1";
    ScriptRun run{-1, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    char buffer[4096];
    for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        run.output.append(buffer, n);
    }
    const int status = pclose(pipe);
    if (status != -1 && WIFEXITED(status)) {
        run.status = WEXITSTATUS(status);
    }
    return run;
}

/// Every file below `root` with its content.
std::map<std::string, std::string> snapshot(const fs::path& root) {
    std::map<std::string, std::string> files;
    for (fs::recursive_directory_iterator it(root), end; it != end; ++it) {
        const std::string relative = it->path().lexically_relative(root).generic_string();
        files[relative] = fs::is_regular_file(it->path()) ? TestUtil::readFile(it->path()) : "/";
    }
    return files;
}

/// The lines between `opening` and the next line holding only a closing parenthesis or a
/// LIBRARIES line: the sources of one CMake target, trimmed.
std::vector<std::string> sourcesOf(const std::string& cmake, const std::string& opening) {
    std::vector<std::string> sources;
    std::size_t at = cmake.find("\n" + opening);
    if (at == std::string::npos) {
        return sources;
    }
    at = cmake.find('\n', at + 1);
    while (at != std::string::npos && at + 1 < cmake.size()) {
        const std::size_t next = cmake.find('\n', at + 1);
        std::string line = cmake.substr(at + 1, next - at - 1);
        line.erase(0, line.find_first_not_of(' '));
        if (line == ")" || line.rfind("LIBRARIES", 0) == 0) {
            break;
        }
        if (line != "SOURCES") {
            sources.push_back(line);
        }
        at = next;
    }
    return sources;
}

bool contains(const std::vector<std::string>& lines, const std::string& line) {
    for (const std::string& candidate : lines) {
        if (candidate == line) {
            return true;
        }
    }
    return false;
}

class NewDialog : public ::testing::Test {
protected:
    NewDialog() {
        for (const char* file :
             {"block/CMakeLists.txt", "border/CMakeLists.txt", "workspace/CMakeLists.txt",
              "tests/block/CMakeLists.txt", "tests/border/CMakeLists.txt",
              "tests/workspace/CMakeLists.txt", "tests/workspace/resource_files_test.cpp",
              "resources/qorfmt_config_choice.dlg", ".clang-format"}) {
            root.write(file, TestUtil::readFile(kSource / file));
        }
    }

    std::string read(const std::string& relative) const {
        return TestUtil::readFile(root.path() / relative);
    }

    /// Runs the script with `args` and expects a refusal naming `reason` that writes nothing.
    void expectRefused(const std::vector<std::string>& args, const std::string& reason) {
        const std::map<std::string, std::string> before = snapshot(root.path());
        const ScriptRun run = newDialog(root.path(), args);
        EXPECT_EQ(run.status, 2) << run.output;
        EXPECT_NE(run.output.find(reason), std::string::npos)
            << "the refusal does not say \"" << reason << "\": " << run.output;
        EXPECT_TRUE(snapshot(root.path()) == before) << "a refused run changed the folder";
    }

    TestUtil::TempDir root;
};

TEST_F(NewDialog, LaysOutEveryFileAndPrintsWhatItCreatedAndTheNextSteps) {
    const ScriptRun run = newDialog(root.path(), {"RevisionNoteDialog", "block"});
    ASSERT_EQ(run.status, 0) << run.output;
    for (const char* file :
         {"block/revision_note_dialog_names.h", "block/revision_note_dialog.h",
          "block/revision_note_dialog.cpp", "resources/qorfmt_config_revision_note.dlg",
          "tests/block/revision_note_dialog_test.cpp"}) {
        EXPECT_TRUE(fs::is_regular_file(root.path() / file)) << file;
        EXPECT_NE(run.output.find(file), std::string::npos) << file << " not in: " << run.output;
    }
    EXPECT_NE(run.output.find("cmake --build --preset debug --target block_tests workspace_tests"),
              std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("--gtest_filter='RevisionNoteDialogTest.*'"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("docs/adding-a-dialog.md"), std::string::npos) << run.output;
}

TEST_F(NewDialog, NamesHeaderHoldsResourceFileDialogNameAndControlName) {
    ASSERT_EQ(newDialog(root.path(), {"RevisionNoteDialog", "block"}).status, 0);
    const std::string names = read("block/revision_note_dialog_names.h");
    EXPECT_NE(names.find("namespace RevisionNoteDialogNames {"), std::string::npos) << names;
    EXPECT_NE(names.find("kResourceFile[] = \"qorfmt_config_revision_note.dlg\";"),
              std::string::npos)
        << names;
    EXPECT_NE(names.find("kDialogName[] = \"qorborder_config_revision_note\";"), std::string::npos)
        << names;
    EXPECT_NE(names.find("TEXT[] = \"TEXT\";"), std::string::npos) << names;
}

TEST_F(NewDialog, TitleIsTheWordsOfTheClassNameUnlessGiven) {
    ASSERT_EQ(newDialog(root.path(), {"RevisionNoteDialog", "block"}).status, 0);
    EXPECT_NE(read("resources/qorfmt_config_revision_note.dlg").find("title=\"Revision Note\""),
              std::string::npos);
    ASSERT_EQ(newDialog(root.path(), {"A4SheetDialog", "border", "Sheet (A4)"}).status, 0);
    EXPECT_NE(read("resources/qorfmt_config_a4_sheet.dlg").find("title=\"Sheet (A4)\""),
              std::string::npos);
    EXPECT_NE(read("tests/border/a4_sheet_dialog_test.cpp").find("expect title \"Sheet (A4)\""),
              std::string::npos);
}

TEST_F(NewDialog, BlockDialogGoesIntoTheBlockLibraryAndBlockTestsAndTheTable) {
    ASSERT_EQ(newDialog(root.path(), {"RevisionNoteDialog", "block"}).status, 0);
    const std::string library = read("block/CMakeLists.txt");
    EXPECT_TRUE(
        contains(sourcesOf(library, "add_library(qorblockconf STATIC"), "revision_note_dialog.cpp"))
        << library;
    const std::string tests = read("tests/block/CMakeLists.txt");
    EXPECT_TRUE(
        contains(sourcesOf(tests, "qorfmt_add_test(block_tests"), "revision_note_dialog_test.cpp"))
        << tests;
    const std::string table = read("tests/workspace/resource_files_test.cpp");
    EXPECT_NE(table.find("#include \"block/revision_note_dialog.h\"\n"
                         "#include \"block/revision_note_dialog_names.h\"\n"),
              std::string::npos);
    EXPECT_NE(table.find("namespace RevisionNoteNames = QorBorderConf::RevisionNoteDialogNames;"),
              std::string::npos);
    EXPECT_NE(table.find("{\"RevisionNoteDialog\",\n         RevisionNoteNames::kResourceFile,"),
              std::string::npos);
}

TEST_F(NewDialog, CommentListingTheTestProgramsDialogsNamesTheNewOneWithinTheLineLimit) {
    root.write(
        "tests/block/CMakeLists.txt",
        "# The block layout, field, text choice, block style, row type and symbol type dialogs "
        "shown on\n"
        "# their own, end to end.\n"
        "qorfmt_add_test(block_tests\n"
        "    SOURCES\n"
        "        field_dialog_test.cpp\n"
        "    LIBRARIES qorblockconf)\n");
    ASSERT_EQ(newDialog(root.path(), {"RevisionNoteDialog", "block"}).status, 0);
    EXPECT_EQ(read("tests/block/CMakeLists.txt"),
              "# The block layout, field, text choice, block style, row type, symbol type and "
              "revision note dialogs\n"
              "# shown on their own, end to end.\n"
              "qorfmt_add_test(block_tests\n"
              "    SOURCES\n"
              "        field_dialog_test.cpp\n"
              "        revision_note_dialog_test.cpp\n"
              "    LIBRARIES qorblockconf)\n");
}

TEST_F(NewDialog, CommentOfAnotherShapeIsLeftAsItIs) {
    root.write("tests/border/CMakeLists.txt", "# The border dialogs, end to end.\n"
                                              "qorfmt_add_test(border_tests\n"
                                              "    SOURCES\n"
                                              "        border_site.cpp\n"
                                              "    LIBRARIES qorborderconf)\n");
    ASSERT_EQ(newDialog(root.path(), {"SheetNoteDialog", "border"}).status, 0);
    EXPECT_EQ(read("tests/border/CMakeLists.txt"), "# The border dialogs, end to end.\n"
                                                   "qorfmt_add_test(border_tests\n"
                                                   "    SOURCES\n"
                                                   "        border_site.cpp\n"
                                                   "        sheet_note_dialog_test.cpp\n"
                                                   "    LIBRARIES qorborderconf)\n");
}

TEST_F(NewDialog, BorderDialogGoesIntoTheBorderLibraryAndBorderTests) {
    ASSERT_EQ(newDialog(root.path(), {"SheetNoteDialog", "border"}).status, 0);
    EXPECT_TRUE(
        contains(sourcesOf(read("border/CMakeLists.txt"), "add_library(qorborderconf STATIC"),
                 "sheet_note_dialog.cpp"));
    EXPECT_TRUE(
        contains(sourcesOf(read("tests/border/CMakeLists.txt"), "qorfmt_add_test(border_tests"),
                 "sheet_note_dialog_test.cpp"));
    EXPECT_TRUE(fs::is_regular_file(root.path() / "border/sheet_note_dialog.cpp"));
    EXPECT_NE(read("tests/workspace/resource_files_test.cpp")
                  .find("#include \"border/sheet_note_dialog.h\""),
              std::string::npos);
}

TEST_F(NewDialog, WorkspaceDialogGoesIntoTheWorkspaceLibraryAndWorkspaceTests) {
    const ScriptRun run = newDialog(root.path(), {"SiteNoteDialog", "workspace"});
    ASSERT_EQ(run.status, 0) << run.output;
    EXPECT_TRUE(
        contains(sourcesOf(read("workspace/CMakeLists.txt"), "add_library(qorworkspace STATIC"),
                 "site_note_dialog.cpp"));
    EXPECT_TRUE(contains(
        sourcesOf(read("tests/workspace/CMakeLists.txt"), "qorfmt_add_test(workspace_tests"),
        "site_note_dialog_test.cpp"));
    EXPECT_NE(run.output.find("--target workspace_tests\n"), std::string::npos) << run.output;
}

TEST_F(NewDialog, NameThatIsNotUpperCamelCaseEndingInDialogIsRefusedAndNothingIsWritten) {
    for (const char* name : {"revisionNoteDialog", "RevisionNote", "Dialog", "Revision_NoteDialog",
                             "RevisionNoteDialogs", "URLDialog", "Revision NoteDialog", ""}) {
        SCOPED_TRACE(name);
        expectRefused({name, "block"}, "is not UpperCamelCase ending in \"Dialog\"");
    }
}

TEST_F(NewDialog, NameWhoseVariableIsACppKeywordOrANameOfTheDialogsCodeIsRefused) {
    expectRefused({"NewDialog", "block"}, "gives the variable name 'new'");
    // The test's fixture has a show() and its parameter `lines`: a member of that name would not
    // compile.
    expectRefused({"ShowDialog", "block"}, "gives the variable name 'show'");
}

TEST_F(NewDialog, UnknownFolderIsRefusedAndNothingIsWritten) {
    for (const char* folder : {"model", "Block", "tests", ""}) {
        SCOPED_TRACE(folder);
        expectRefused({"RevisionNoteDialog", folder}, "unknown folder");
    }
}

TEST_F(NewDialog, EachFileThatAlreadyExistsIsRefusedAndNothingIsWritten) {
    for (const char* file :
         {"block/revision_note_dialog_names.h", "block/revision_note_dialog.h",
          "block/revision_note_dialog.cpp", "resources/qorfmt_config_revision_note.dlg",
          "tests/block/revision_note_dialog_test.cpp"}) {
        SCOPED_TRACE(file);
        const fs::path existing = root.write(file, "kept\n");
        expectRefused({"RevisionNoteDialog", "block"}, std::string(file) + " already exists");
        EXPECT_EQ(TestUtil::readFile(existing), "kept\n");
        fs::remove(existing);
    }
}

TEST_F(NewDialog, SecondRunForTheSameDialogIsRefusedAndChangesNothing) {
    ASSERT_EQ(newDialog(root.path(), {"RevisionNoteDialog", "block"}).status, 0);
    expectRefused({"RevisionNoteDialog", "block"}, "already exists");
}

TEST_F(NewDialog, SourceTheLibraryAlreadyListsIsRefusedAndNothingIsWritten) {
    root.write("block/CMakeLists.txt", read("block/CMakeLists.txt") +
                                           "target_sources(qorblockconf PRIVATE\n"
                                           "    revision_note_dialog.cpp)\n");
    expectRefused({"RevisionNoteDialog", "block"},
                  "block/CMakeLists.txt already lists revision_note_dialog.cpp");
}

TEST_F(NewDialog, TestTheProgramAlreadyListsIsRefusedAndNothingIsWritten) {
    root.write("tests/block/CMakeLists.txt",
               read("tests/block/CMakeLists.txt") + "# revision_note_dialog_test.cpp\n");
    expectRefused({"RevisionNoteDialog", "block"},
                  "tests/block/CMakeLists.txt already lists revision_note_dialog_test.cpp");
}

TEST_F(NewDialog, RowTheResourceTableAlreadyHasIsRefusedAndNothingIsWritten) {
    root.write("tests/workspace/resource_files_test.cpp",
               "#include \"block/revision_note_dialog.h\"\n" +
                   read("tests/workspace/resource_files_test.cpp"));
    expectRefused({"RevisionNoteDialog", "block"},
                  "resource_files_test.cpp already has a row or an include for RevisionNoteDialog");
}

TEST_F(NewDialog, DialogOfTheSameClassInAnotherFolderIsRefused) {
    expectRefused({"TextChoiceDialog", "border"},
                  "already has a row or an include for TextChoiceDialog");
}

TEST_F(NewDialog, LibraryListOfAnotherShapeIsRefusedAndNothingIsWritten) {
    root.write("block/CMakeLists.txt", "add_library(qorblockconf STATIC text_choice_dialog.cpp)\n");
    expectRefused(
        {"RevisionNoteDialog", "block"},
        "block/CMakeLists.txt: no add_library(qorblockconf ...) with one source file a line");
}

TEST_F(NewDialog, AliasNameTheResourceTableAlreadyUsesIsRefused) {
    root.write("tests/workspace/resource_files_test.cpp",
               "namespace AuditNames = Elsewhere;\n" +
                   read("tests/workspace/resource_files_test.cpp"));
    expectRefused({"AuditDialog", "block"}, "already uses the name AuditNames");
}

TEST_F(NewDialog, DialogNameAnotherResourceFileUsesIsRefused) {
    root.write("resources/qorfmt_config_revision_notes.dlg",
               "<dialog format=\"1\" name=\"qorborder_config_revision_note\"/>\n");
    expectRefused({"RevisionNoteDialog", "block"},
                  "qorborder_config_revision_note is already used by "
                  "resources/qorfmt_config_revision_notes.dlg");
}

TEST_F(NewDialog, RootWithoutTheCheckoutLayoutIsRefusedAndNothingIsWritten) {
    fs::remove(root.path() / "tests/workspace/resource_files_test.cpp");
    expectRefused({"RevisionNoteDialog", "block"},
                  "has no tests/workspace/resource_files_test.cpp");
}

TEST_F(NewDialog, TitleTheResourceFileOrJournalWouldHaveToEscapeIsRefused) {
    for (const char* title : {"Say \"Hi\"", "A & B", "a\\b", "<b>", "  "}) {
        SCOPED_TRACE(title);
        expectRefused({"RevisionNoteDialog", "block", title}, "title");
    }
}

TEST_F(NewDialog, WrongNumberOfArgumentsIsRefusedWithTheUsage) {
    expectRefused({"RevisionNoteDialog"}, "Usage: scripts/new-dialog");
}

#ifdef QORFMT_CLANG_FORMAT
// check-format holds the generated files as it holds every other, so they come formatted even
// where a long name pushes a template line over the limit.
TEST_F(NewDialog, GeneratedCodeIsFormattedEvenForALongName) {
    const std::string name = "VeryLongExplanatoryRevisionNoteWithManyWordsForTheDrawingDialog";
    const ScriptRun run = newDialog(root.path(), {name, "block"});
    ASSERT_EQ(run.status, 0) << run.output;
    std::string files;
    for (const char* file :
         {"block/very_long_explanatory_revision_note_with_many_words_for_the_drawing_dialog.h",
          "block/very_long_explanatory_revision_note_with_many_words_for_the_drawing_dialog.cpp",
          "block/"
          "very_long_explanatory_revision_note_with_many_words_for_the_drawing_dialog_names.h",
          "tests/block/"
          "very_long_explanatory_revision_note_with_many_words_for_the_drawing_dialog_test.cpp",
          "tests/workspace/resource_files_test.cpp"}) {
        ASSERT_TRUE(fs::is_regular_file(root.path() / file)) << file;
        files += " " + quoted((root.path() / file).string());
    }
    const std::string command =
        quoted(QORFMT_CLANG_FORMAT) + " --dry-run --Werror" + files + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    char buffer[4096];
    for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        output.append(buffer, n);
    }
    EXPECT_EQ(pclose(pipe), 0) << output;
}
#endif

} // namespace
