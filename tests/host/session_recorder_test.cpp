#include "session_recorder.h"

#include <testutil/temp_dir.h>

#include <gtest/gtest.h>

using QorfmtHost::SessionRecorder;

namespace {

nxsim::JournalStep step(nxsim::StepKind kind, const std::string& item = {}) {
    nxsim::JournalStep s;
    s.kind = kind;
    s.item = item;
    return s;
}

} // namespace

TEST(SessionRecorderTest, StepsAreIndentedByDepthAndTheFileIsCompleteAfterEachLine) {
    TestUtil::TempDir temp;
    SessionRecorder recorder(temp.path() / "s.journal");
    recorder.step(step(nxsim::StepKind::Run), 0);
    recorder.step(step(nxsim::StepKind::Dialog, "qorborder_config_main"), 0);
    EXPECT_EQ(TestUtil::readFile(temp.path() / "s.journal"),
              "# recorded by qorfmt-host\nrun\ndialog qorborder_config_main\n");
    recorder.step(step(nxsim::StepKind::Press, "OPEN_FILE"), 1);
    recorder.step(step(nxsim::StepKind::Close), 2);
    EXPECT_EQ(TestUtil::readFile(temp.path() / "s.journal"),
              "# recorded by qorfmt-host\nrun\ndialog qorborder_config_main\n  press OPEN_FILE\n"
              "    close\n");
}

TEST(SessionRecorderTest, TypedValuesBecomeOneSetLineBeforeTheNextStep) {
    TestUtil::TempDir temp;
    SessionRecorder recorder(temp.path() / "s.journal");
    int owner = 0;
    recorder.pendingSet(&owner, "NAME", "A", 1);
    recorder.pendingSet(&owner, "NAME", "An", 1);
    recorder.pendingSet(&owner, "NOTES", "x\ny", 1);
    recorder.pendingSet(&owner, "NAME", "Ann", 1);
    EXPECT_EQ(recorder.lineCount(), 1u);
    recorder.step(step(nxsim::StepKind::Ok), 1);
    EXPECT_EQ(recorder.text(), "# recorded by qorfmt-host\n  set NAME \"Ann\"\n"
                               "  set NOTES \"x\\ny\"\n  ok\n");
}

TEST(SessionRecorderTest, RetractRemovesARefusedActionFromTheFile) {
    TestUtil::TempDir temp;
    SessionRecorder recorder(temp.path() / "s.journal");
    const std::size_t mark = recorder.lineCount();
    recorder.step(step(nxsim::StepKind::Press, "SAVE_FILE"), 1);
    recorder.retract(mark);
    EXPECT_EQ(TestUtil::readFile(temp.path() / "s.journal"), "# recorded by qorfmt-host\n");
}

TEST(SessionRecorderTest, AJournalThatCannotBeWrittenIsReportedWithItsName) {
    TestUtil::TempDir temp;
    const auto missing = temp.path() / "no" / "such" / "dir" / "s.journal";
    try {
        SessionRecorder recorder(missing);
        FAIL();
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string(e.what()).find("s.journal"), std::string::npos);
    }
}
