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

TEST_F(NewDialog, WithoutControlsTheDialogHasOneStringTextLabelledTextThatOkRefusesEmpty) {
    ASSERT_EQ(newDialog(root.path(), {"RevisionNoteDialog", "block"}).status, 0);
    EXPECT_NE(read("resources/qorfmt_config_revision_note.dlg")
                  .find("  <string name=\"TEXT\" label=\"Text\" width=\"30\"/>\n"),
              std::string::npos);
    EXPECT_NE(read("block/revision_note_dialog.h").find("    std::string text;\n"),
              std::string::npos);
    EXPECT_NE(read("block/revision_note_dialog.cpp").find("\"Text must not be empty.\""),
              std::string::npos);
    EXPECT_NE(read("tests/block/revision_note_dialog_test.cpp")
                  .find("OkWithEmptyTextShowsTheErrorAndLeavesTheValueUnchanged"),
              std::string::npos);
}

/// The lines of `text` that hold `marker`, in order.
std::vector<std::string> linesWith(const std::string& text, const std::string& marker) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            end = text.size();
        }
        const std::string line = text.substr(start, end - start);
        if (line.find(marker) != std::string::npos) {
            lines.push_back(line);
        }
        start = end + 1;
    }
    return lines;
}

TEST_F(NewDialog, ControlsAreWrittenInTheOrderGivenIntoEveryFile) {
    const ScriptRun run =
        newDialog(root.path(), {"StampDialog", "border", "--control", "TEXT:string:Stamp Text",
                                "--control", "COPIES:integer", "--control", "HINT:label:Fixed",
                                "--control", "CONFIDENTIAL:toggle", "--control", "SCALE:real"});
    ASSERT_EQ(run.status, 0) << run.output;
    EXPECT_NE(run.output.find("a string TEXT, an integer COPIES, a label HINT, a toggle "
                              "CONFIDENTIAL, a real SCALE, OK, Cancel"),
              std::string::npos)
        << run.output;
    EXPECT_EQ(linesWith(read("border/stamp_dialog_names.h"), "[] = \""),
              (std::vector<std::string>{
                  "inline constexpr char kResourceFile[] = \"qorfmt_config_stamp.dlg\";",
                  "inline constexpr char kDialogName[] = \"qorborder_config_stamp\";",
                  "inline constexpr char TEXT[] = \"TEXT\";",
                  "inline constexpr char COPIES[] = \"COPIES\";",
                  "inline constexpr char HINT[] = \"HINT\";",
                  "inline constexpr char CONFIDENTIAL[] = \"CONFIDENTIAL\";",
                  "inline constexpr char SCALE[] = \"SCALE\";"}));
    EXPECT_EQ(linesWith(read("resources/qorfmt_config_stamp.dlg"), " name=\""),
              (std::vector<std::string>{
                  "<dialog format=\"1\" name=\"qorborder_config_stamp\" title=\"Stamp\"",
                  "  <string name=\"TEXT\" label=\"Stamp Text\" width=\"30\"/>",
                  "  <integer name=\"COPIES\" label=\"Copies\" width=\"6\"/>",
                  "  <label name=\"HINT\" label=\"Fixed\"/>",
                  "  <toggle name=\"CONFIDENTIAL\" label=\"Confidential\"/>",
                  "  <real name=\"SCALE\" label=\"Scale\" width=\"8\"/>"}));
    const std::string header = read("border/stamp_dialog.h");
    EXPECT_NE(header.find("struct Stamp {\n"
                          "    std::string text;\n"
                          "    int copies = 0;\n"
                          "    bool confidential = false;\n"
                          "    double scale = 0.0;\n"
                          "};\n"),
              std::string::npos)
        << header;
    EXPECT_NE(header.find("    boost::shared_ptr<KivNX::UI::StringItem> m_text;\n"
                          "    boost::shared_ptr<NXOpen::UIStyler::IntegerItem> m_copies;\n"
                          "    boost::shared_ptr<NXOpen::UIStyler::Toggle> m_confidential;\n"
                          "    boost::shared_ptr<NXOpen::UIStyler::RealItem> m_scale;\n"),
              std::string::npos)
        << header;
    const std::string source = read("border/stamp_dialog.cpp");
    EXPECT_NE(source.find("    m_text = bind.control<KivNX::UI::StringItem>(Names::TEXT);\n"
                          "    m_copies = bind.control<IntegerItem>(Names::COPIES);\n"
                          "    m_confidential = bind.control<Toggle>(Names::CONFIDENTIAL);\n"
                          "    m_scale = bind.control<RealItem>(Names::SCALE);\n"),
              std::string::npos)
        << source;
    EXPECT_NE(source.find("    m_text->SetItemValue(m_stamp->text);\n"
                          "    m_copies->SetItemValue(m_stamp->copies);\n"
                          "    m_confidential->SetItemValue(m_stamp->confidential);\n"
                          "    m_scale->SetItemValue(m_stamp->scale);\n"),
              std::string::npos)
        << source;
    EXPECT_NE(source.find("    m_stamp->text = text;\n"
                          "    m_stamp->copies = m_copies->ItemValue();\n"
                          "    m_stamp->confidential = m_confidential->ItemValue();\n"
                          "    m_stamp->scale = m_scale->ItemValue();\n"),
              std::string::npos)
        << source;
    EXPECT_EQ(source.find("HINT"), std::string::npos) << "a label is not bound: " << source;
    const std::string table = read("tests/workspace/resource_files_test.cpp");
    EXPECT_NE(
        table.find("             {StampNames::TEXT, ItemKind::StringItem},\n"
                   "             {StampNames::COPIES, ItemKind::IntegerItem},\n"
                   "             {StampNames::HINT, ItemKind::LabelItem, Binding::HeldOnly},\n"
                   "             {StampNames::CONFIDENTIAL, ItemKind::Toggle},\n"
                   "             {StampNames::SCALE, ItemKind::RealItem},\n"),
        std::string::npos);
}

TEST_F(NewDialog, TestJournalsFillEveryValueWriteEveryValueOnOkAndNothingOnCancel) {
    ASSERT_EQ(
        newDialog(root.path(), {"StampDialog", "border", "--control", "TEXT:string:Stamp Text",
                                "--control", "COPIES:integer", "--control", "HINT:label:Fixed",
                                "--control", "CONFIDENTIAL:toggle", "--control", "SCALE:real"})
            .status,
        0);
    const std::string test = read("tests/border/stamp_dialog_test.cpp");
    EXPECT_NE(test.find("        stamp.text = \"First Stamp Text\";\n"
                        "        stamp.copies = 2;\n"
                        "        stamp.confidential = true;\n"
                        "        stamp.scale = 5.5;\n"),
              std::string::npos)
        << test;
    EXPECT_NE(test.find("  expect value TEXT \"First Stamp Text\"\n"
                        "  expect value COPIES 2\n"
                        "  expect label HINT \"Fixed\"\n"
                        "  expect value CONFIDENTIAL on\n"
                        "  expect value SCALE 5.5\n"
                        "  cancel\n"),
              std::string::npos)
        << test;
    EXPECT_NE(test.find("  set TEXT \"Second Stamp Text\"\n"
                        "  set COPIES 102\n"
                        "  set CONFIDENTIAL off\n"
                        "  set SCALE 105.25\n"
                        "  ok\n"),
              std::string::npos)
        << test;
    EXPECT_NE(test.find("    EXPECT_EQ(stamp.text, \"Second Stamp Text\");\n"
                        "    EXPECT_EQ(stamp.copies, 102);\n"
                        "    EXPECT_FALSE(stamp.confidential);\n"
                        "    EXPECT_DOUBLE_EQ(stamp.scale, 105.25);\n"),
              std::string::npos)
        << test;
    EXPECT_NE(test.find("  set SCALE 205.75\n"
                        "  cancel\n"
                        ")J\"));\n"
                        "    EXPECT_NE(response, NXOpen::UIStyler::DialogResponseOk);\n"
                        "    EXPECT_EQ(stamp.text, \"First Stamp Text\");\n"
                        "    EXPECT_EQ(stamp.copies, 2);\n"
                        "    EXPECT_TRUE(stamp.confidential);\n"
                        "    EXPECT_DOUBLE_EQ(stamp.scale, 5.5);\n"),
              std::string::npos)
        << test;
}

TEST_F(NewDialog, LabelDefaultsToTheWordsOfTheControlName) {
    ASSERT_EQ(newDialog(root.path(), {"StampDialog", "border", "--control=COPY_COUNT:integer",
                                      "--control", "A4_SHEET:toggle"})
                  .status,
              0);
    const std::string dlg = read("resources/qorfmt_config_stamp.dlg");
    EXPECT_NE(dlg.find("name=\"COPY_COUNT\" label=\"Copy Count\""), std::string::npos) << dlg;
    EXPECT_NE(dlg.find("name=\"A4_SHEET\" label=\"A4 Sheet\""), std::string::npos) << dlg;
    EXPECT_NE(
        read("border/stamp_dialog.h").find("    int copyCount = 0;\n    bool a4Sheet = false;"),
        std::string::npos);
}

TEST_F(NewDialog, OkRefusesAnEmptyTextOnlyOnTheFirstStringControl) {
    ASSERT_EQ(
        newDialog(root.path(), {"StampDialog", "border", "--control", "COPIES:integer", "--control",
                                "OWNER:string:Owner Name", "--control", "REMARK:string"})
            .status,
        0);
    const std::string source = read("border/stamp_dialog.cpp");
    EXPECT_EQ(linesWith(source, ".empty()"), (std::vector<std::string>{"    if (owner.empty()) {"}))
        << source;
    EXPECT_EQ(linesWith(source, "must not be empty.").size(), 1u) << source;
    EXPECT_NE(source.find("\"Owner Name must not be empty.\""), std::string::npos) << source;
    EXPECT_NE(source.find("    m_stamp->remark = m_remark->ItemValue();\n"), std::string::npos);
    const std::string test = read("tests/border/stamp_dialog_test.cpp");
    EXPECT_NE(test.find("TEST_F(StampDialogTest, OkWithEmptyOwnerShowsTheErrorAndLeavesTheValue"
                        "Unchanged) {\n"
                        "    EXPECT_JOURNAL_PASSES(show(R\"J(\n"
                        "  set OWNER \"\"\n"
                        "  ok\n"
                        "  message error \"Validation Error\" \"Owner Name must not be empty.\"\n"
                        "  expect focus OWNER\n"),
              std::string::npos)
        << test;
    EXPECT_EQ(linesWith(test, "OkWithEmpty").size(), 1u) << test;
}

TEST_F(NewDialog, WithoutAStringControlOkHasNoCheckAndNoStringIncludes) {
    ASSERT_EQ(newDialog(root.path(), {"StampDialog", "border", "--control", "COPIES:integer",
                                      "--control", "CONFIDENTIAL:toggle"})
                  .status,
              0);
    const std::string source = read("border/stamp_dialog.cpp");
    EXPECT_EQ(source.find("refuse"), std::string::npos) << source;
    EXPECT_EQ(source.find("message_dialogs.h"), std::string::npos) << source;
    EXPECT_EQ(source.find("string_item.h"), std::string::npos) << source;
    const std::string header = read("border/stamp_dialog.h");
    EXPECT_EQ(header.find("StringItem"), std::string::npos) << header;
    EXPECT_EQ(header.find("<string>"), std::string::npos) << header;
    EXPECT_EQ(read("tests/border/stamp_dialog_test.cpp").find("OkWithEmpty"), std::string::npos);
}

TEST_F(NewDialog, UnknownControlKindIsRefusedAndNothingIsWritten) {
    for (const char* control : {"COPIES:int", "COPIES:String", "COPIES:", "COPIES:button"}) {
        SCOPED_TRACE(control);
        expectRefused({"StampDialog", "border", "--control", control}, "unknown kind");
    }
}

TEST_F(NewDialog, ControlWithoutKindIsRefused) {
    expectRefused({"StampDialog", "border", "--control", "COPIES"}, "control 'COPIES' has no kind");
    expectRefused({"StampDialog", "border", "--control"}, "--control needs NAME:KIND[:LABEL]");
}

TEST_F(NewDialog, ControlNameThatIsNotUpperCaseWordsJoinedByUnderscoresIsRefused) {
    for (const char* control : {"copies:integer", "Copies:integer", "COPY__COUNT:integer",
                                "_COPIES:integer", "COPIES_:integer", "2COPIES:integer",
                                "COPY-COUNT:integer", "COPY COUNT:integer", ":integer"}) {
        SCOPED_TRACE(control);
        expectRefused({"StampDialog", "border", "--control", control},
                      "is not upper-case words joined by _");
    }
}

TEST_F(NewDialog, RepeatedControlNameIsRefused) {
    expectRefused(
        {"StampDialog", "border", "--control", "COPIES:integer", "--control", "COPIES:string"},
        "control name COPIES is given twice");
}

TEST_F(NewDialog, ControlNamesThatGiveTheSameMemberAreRefused) {
    expectRefused(
        {"StampDialog", "border", "--control", "NOTE_2:string", "--control", "NOTE2:string"},
        "control names NOTE_2 and NOTE2 both give the member name 'note2'");
}

TEST_F(NewDialog, ControlNameWhoseMemberIsTakenInCppIsRefused) {
    expectRefused({"StampDialog", "border", "--control", "DEFAULT:string"},
                  "gives the member name 'default', which is taken in C++");
    // A field named std would hide the namespace from the struct's later fields.
    expectRefused({"StampDialog", "border", "--control", "STD:string"},
                  "gives the member name 'std'");
}

TEST_F(NewDialog, ControlNameOfAMacroOfTheIncludedHeadersIsRefused) {
    for (const char* control : {"TRUE:toggle", "NULL:string", "UF_UI_OK:integer"}) {
        SCOPED_TRACE(control);
        expectRefused({"StampDialog", "border", "--control", control}, "is a macro");
    }
}

TEST_F(NewDialog, ControlNameWhoseMemberHoldsTheEditedValueIsRefused) {
    expectRefused({"RevisionNoteDialog", "block", "--control", "REVISION_NOTE:string"},
                  "gives the member name 'm_revisionNote', which holds the edited revision note");
}

TEST_F(NewDialog, ControlLabelTheResourceFileOrJournalWouldHaveToEscapeIsRefused) {
    for (const char* control : {"NOTE:string:Say \"Hi\"", "NOTE:string:A & B", "NOTE:toggle:a\\b",
                                "NOTE:label:<b>", "NOTE:integer:tab\there"}) {
        SCOPED_TRACE(control);
        expectRefused({"StampDialog", "border", "--control", control},
                      "of control NOTE holds a character that the .dlg and the test's journal");
    }
}

TEST_F(NewDialog, EmptyControlLabelIsRefused) {
    expectRefused({"StampDialog", "border", "--control", "NOTE:string:"},
                  "the label of control NOTE is empty");
    expectRefused({"StampDialog", "border", "--control", "NOTE:string: "},
                  "the label of control NOTE is empty");
}

TEST_F(NewDialog, ControlsWithoutAValueAreRefused) {
    expectRefused({"StampDialog", "border", "--control", "HINT:label:Fixed"},
                  "no control holds a value");
}

TEST_F(NewDialog, LabelMayHoldAColonAndParentheses) {
    ASSERT_EQ(
        newDialog(root.path(), {"StampDialog", "border", "--control", "SCALE:real:Scale (1:1)"})
            .status,
        0);
    EXPECT_NE(read("resources/qorfmt_config_stamp.dlg").find("label=\"Scale (1:1)\""),
              std::string::npos);
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
