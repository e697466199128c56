#include "base/log.h"

#include "testutil/temp_dir.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <boost/regex.hpp>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Base::log::Logger;
using Base::log::LoggerStream;

/// Restores "nowhere" after each test so that no test leaks a destination into another.
class Log : public ::testing::Test {
protected:
    void TearDown() override { Base::log::setDestination(""); }

    TestUtil::TempDir dir;
};

TEST_F(Log, SendsLinesNowhereAndIsDisabledWithoutDestination) {
    Base::log::setDestination("");
    Logger logger("quiet");
    EXPECT_FALSE(logger.enabled());
    Base::log::setDestination("none");
    EXPECT_FALSE(logger.enabled());
}

TEST_F(Log, LineCarriesTimeLoggerNameAndText) {
    const auto file = dir.path() / "log.txt";
    Base::log::setDestination(file.string());
    Logger logger("qorborder.info");
    ASSERT_TRUE(logger.enabled());
    logger.write("Setting file cache to /site");
    const boost::regex line(
        "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z \\[qorborder\\.info\\] "
        "Setting file cache to /site\n");
    EXPECT_TRUE(boost::regex_match(TestUtil::readFile(file), line)) << TestUtil::readFile(file);
}

TEST_F(Log, StreamWritesOneLinePerEndOfLine) {
    const auto file = dir.path() / "log.txt";
    Base::log::setDestination(file.string());
    Logger logger("x");
    {
        LoggerStream stream(logger);
        stream << "first " << 1 << std::endl;
        stream << "second\nthird" << '\n';
        EXPECT_NE(TestUtil::readFile(file), "") << "complete lines are written at once";
    }
    const std::string text = TestUtil::readFile(file);
    const boost::regex lines("[^\n]*\\[x\\] first 1\n[^\n]*\\[x\\] second\n[^\n]*\\[x\\] third\n");
    EXPECT_TRUE(boost::regex_match(text, lines)) << text;
}

TEST_F(Log, StreamWritesPartialLastLineWhenDestroyed) {
    const auto file = dir.path() / "log.txt";
    Base::log::setDestination(file.string());
    Logger logger("x");
    {
        LoggerStream stream(logger);
        stream << "no end of line";
        EXPECT_EQ(TestUtil::readFile(file), "");
    }
    EXPECT_NE(TestUtil::readFile(file).find("[x] no end of line\n"), std::string::npos);
}

TEST_F(Log, SwitchedOffLoggerWritesNothing) {
    const auto file = dir.path() / "log.txt";
    Base::log::setDestination(file.string());
    Logger logger("x");
    logger.setEnabled(false);
    EXPECT_FALSE(logger.enabled());
    LoggerStream(logger) << "hidden\n";
    EXPECT_EQ(TestUtil::readFile(file), "");
}

TEST_F(Log, AppendsToExistingFile) {
    const auto file = dir.write("log.txt", "earlier\n");
    Base::log::setDestination(file.string());
    Logger("x").write("later");
    const std::string text = TestUtil::readFile(file);
    EXPECT_EQ(text.rfind("earlier\n", 0), 0u);
    EXPECT_NE(text.find("[x] later\n"), std::string::npos);
}

TEST_F(Log, StandardErrorDestination) {
    Base::log::setDestination("stderr");
    Logger logger("err");
    EXPECT_TRUE(logger.enabled());
    ::testing::internal::CaptureStderr();
    logger.write("to standard error");
    const std::string text = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(text.find("[err] to standard error\n"), std::string::npos);
}

TEST_F(Log, UnopenableFileTurnsLoggingOffWithOneWarning) {
    ::testing::internal::CaptureStderr();
    Base::log::setDestination((dir.path() / "missing" / "log.txt").string());
    const std::string warning = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(warning.find("cannot open log file"), std::string::npos);
    EXPECT_FALSE(Logger("x").enabled());
}

// A log file at the file size limit must not end the program with SIGXFSZ (in NX: the CAD
// session); the lines beyond the limit are lost, nothing else.
TEST_F(Log, ALogFileAtTheSizeLimitDoesNotEndTheProgram) {
    const auto file = dir.path() / "log.txt";
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_DFL);
        struct rlimit limit {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = 1000;
        ::setrlimit(RLIMIT_FSIZE, &limit);
        Base::log::setDestination(file.string());
        Logger logger("x");
        for (int i = 0; i < 100; ++i) {
            logger.write("a line of the log that fills the file up to its limit");
        }
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "ended by signal " << (WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    EXPECT_LE(boost::filesystem::file_size(file), 1000u);
}

} // namespace
