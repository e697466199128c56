// libFuzzer target: the journal parser must refuse any input with a JournalSyntaxError that names
// the file and the line, or read it; and every step it reads must be written by formatStep as a
// line that reads back as the same step (the recorder writes journals that way).
#include <nxsim/journal.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

bool sameStep(const nxsim::JournalStep& a, const nxsim::JournalStep& b) {
    // A value written in quotes stays quoted; an unquoted one may gain quotes it needs.
    return a.kind == b.kind && a.item == b.item && a.entry == b.entry && a.number == b.number &&
           a.byText == b.byText && a.cancel == b.cancel && a.flag == b.flag &&
           (!a.quoted || b.quoted) && a.x == b.x && a.y == b.y && a.word == b.word &&
           a.title == b.title && a.text == b.text && a.list == b.list;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    nxsim::Journal journal;
    try {
        journal = nxsim::parseJournal(text, "fuzz.jnl");
    } catch (const nxsim::JournalSyntaxError& error) {
        if (std::string(error.what()).rfind("fuzz.jnl:", 0) != 0) {
            std::abort();
        }
        return 0;
    }
    for (const nxsim::JournalStep& step : journal.steps) {
        const std::string line = nxsim::formatStep(step);
        nxsim::Journal again;
        try {
            again = nxsim::parseJournal(line, "again.jnl");
        } catch (const nxsim::JournalSyntaxError&) {
            std::abort();
        }
        if (again.steps.size() != 1 || !sameStep(step, again.steps[0])) {
            std::abort();
        }
    }
    return 0;
}
