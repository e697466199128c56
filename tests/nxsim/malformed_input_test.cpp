// Readers given damaged input report one error and never crash or hang. The inputs are valid
// files with bytes replaced, inserted and cut at pseudo-random places (a fixed seed, so a failure
// can be reproduced).

#include <nxsim/dlg.h>
#include <nxsim/journal.h>
#include <nxsim/part_file.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string read(const std::string& relative) {
    std::ifstream in(std::string(NXSIM_TEST_DATA) + "/" + relative, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Damaged copies of `text`, deterministic for a seed.
class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : m_state(seed) {}
    std::string damage(std::string text) {
        const char noise[] = "<>\"/=[]\\ \n\t#,x0-9.eE&;\x01\xff";
        int edits = 1 + static_cast<int>(next() % 4);
        for (int i = 0; i < edits && !text.empty(); ++i) {
            std::size_t at = next() % text.size();
            char c = noise[next() % (sizeof(noise) - 1)];
            switch (next() % 3) {
            case 0:
                text[at] = c;
                break;
            case 1:
                text.insert(at, 1, c);
                break;
            default:
                text.resize(at);
                break;
            }
        }
        return text;
    }

private:
    std::uint32_t next() {
        m_state = m_state * 1664525u + 1013904223u;
        return m_state >> 8;
    }
    std::uint32_t m_state;
};

TEST(MalformedInput, DamagedDialogFilesGiveOneErrorWithFileAndLine) {
    const std::string valid = read("dlg/nxsim_test_all.dlg");
    Mutator m(1);
    for (int i = 0; i < 2000; ++i) {
        try {
            nxsim::parseDialogLayout(m.damage(valid), "d.dlg");
        } catch (const nxsim::DlgError& e) {
            EXPECT_EQ(std::string(e.what()).rfind("d.dlg:", 0), 0u) << e.what();
        }
    }
}

TEST(MalformedInput, DamagedJournalsGiveOneErrorWithFileAndLine) {
    const std::string valid = read("journals/passes.journal");
    Mutator m(2);
    for (int i = 0; i < 2000; ++i) {
        try {
            nxsim::parseJournal(m.damage(valid), "j.journal");
        } catch (const nxsim::JournalSyntaxError& e) {
            EXPECT_EQ(std::string(e.what()).rfind("j.journal:", 0), 0u) << e.what();
        }
    }
}

TEST(MalformedInput, DamagedPartFilesGiveOneErrorNamingTheFile) {
    const std::string valid = read("parts/a3_metric.prt") + "drawing B english D scale 2\n";
    Mutator m(3);
    for (int i = 0; i < 2000; ++i) {
        try {
            nxsim::parsePartFile(m.damage(valid), "p.prt");
        } catch (const nxsim::PartFileError& e) {
            EXPECT_EQ(std::string(e.what()).rfind("p.prt", 0), 0u) << e.what();
        }
    }
}

} // namespace
