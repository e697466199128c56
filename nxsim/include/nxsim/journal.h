#pragma once

#include <boost/filesystem/path.hpp>

#include <initializer_list>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace nxsim {

/// The line kinds of version 1 of the journal language.
enum class StepKind {
    Run,
    Dialog,
    Press,
    Select,
    Deselect,
    DoubleClick,
    Choose,
    Set,
    Enter,
    Toggle,
    Ok,
    Cancel,
    Close,
    Message,
    Pick,
    Point,
    Object,
    ExpectValue,
    ExpectIndex,
    ExpectLabel,
    ExpectItems,
    ExpectSelected,
    ExpectSensitive,
    ExpectVisible,
    ExpectFocus,
    ExpectTitle,
    ExpectCue,
    ExpectListing,
    ExpectFile,
    ExpectStoplight
};

/// One line of a journal. Which fields matter depends on the kind:
///   dialog NAME                  item = NAME
///   press/deselect/enter ITEM    item
///   select/double-click ITEM N   item, number
///   choose ITEM N|"TEXT"         item, number or text (byText)
///   set ITEM VALUE               item, text (quoted: whether it was written in quotes)
///   toggle ITEM on|off           item, flag
///   message KIND "T" "X"         word = error|information, title, text
///   pick "T" N|cancel            title, number or cancel
///   point X Y|cancel             x, y or cancel
///   object TAG|cancel            number or cancel
///   expect value ITEM VALUE      item, text (quoted)
///   expect index/selected ITEM N item, number
///   expect label ITEM "T"        item, text
///   expect items ITEM [..]       item, list
///   expect sensitive/visible ITEM[N] yes|no   item, entry (-1 without [N]), flag
///   expect focus ITEM            item
///   expect title/cue/listing "T" text
///   expect file PATH exists|missing   item = PATH, flag = exists
///   expect stoplight "1 0"       text
struct JournalStep {
    StepKind kind = StepKind::Run;
    int line = 0;
    std::string item;
    int entry = -1;
    long number = 0;
    bool byText = false;
    bool cancel = false;
    bool flag = false;
    bool quoted = false;
    double x = 0.0;
    double y = 0.0;
    std::string word;
    std::string title;
    std::string text;
    std::vector<std::string> list;
};

/// A parsed journal.
struct Journal {
    std::string file; ///< the name used in FILE:LINE: messages
    int lineCount = 0;
    std::vector<JournalStep> steps;
};

/// A journal that cannot be parsed; what() reads "FILE:LINE: reason".
class JournalSyntaxError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Parses journal text; `file` names it in errors. Throws JournalSyntaxError on the first bad line.
Journal parseJournal(const std::string& text, const std::string& file);
/// Reads and parses a journal file; an unreadable file throws std::runtime_error naming it.
Journal readJournal(const boost::filesystem::path& file);

/// The journal line for a step, without indentation or line break.
std::string formatStep(const JournalStep& step);
/// TEXT as a double-quoted journal string with \" \\ \n \t escapes.
std::string quoteJournalText(const std::string& text);

/// Writes steps as journal lines, indenting the lines of nested dialogs by two blanks per level;
/// for recording a session.
class JournalWriter {
public:
    explicit JournalWriter(std::ostream& out) : m_out(out) {}
    /// Writes one step at nesting `depth` (0: top level, 1: inside the first dialog, ...).
    void write(const JournalStep& step, int depth);
    void comment(const std::string& text, int depth);

private:
    std::ostream& m_out;
};

/// Builds journal steps in C++, as a journal file would give them; lines are numbered from 1.
class JournalBuilder {
public:
    explicit JournalBuilder(std::string name = "journal") { m_journal.file = std::move(name); }

    JournalBuilder& run();
    JournalBuilder& dialog(const std::string& name);
    JournalBuilder& press(const std::string& item);
    JournalBuilder& select(const std::string& item, int row);
    JournalBuilder& deselect(const std::string& item);
    JournalBuilder& doubleClick(const std::string& item, int row);
    JournalBuilder& choose(const std::string& item, int index);
    JournalBuilder& choose(const std::string& item, const std::string& entryText);
    JournalBuilder& set(const std::string& item, const std::string& value);
    JournalBuilder& enter(const std::string& item);
    JournalBuilder& toggle(const std::string& item, bool on);
    JournalBuilder& ok();
    JournalBuilder& cancel();
    JournalBuilder& close();
    JournalBuilder& message(const std::string& kind, const std::string& title,
                            const std::string& text);
    JournalBuilder& pick(const std::string& title, int row);
    JournalBuilder& pickCancel(const std::string& title);
    JournalBuilder& point(double x, double y);
    JournalBuilder& pointCancel();
    JournalBuilder& object(unsigned int tag);
    JournalBuilder& objectCancel();
    JournalBuilder& expectValue(const std::string& item, const std::string& value);
    JournalBuilder& expectIndex(const std::string& item, int index);
    JournalBuilder& expectLabel(const std::string& item, const std::string& text);
    JournalBuilder& expectItems(const std::string& item, const std::vector<std::string>& items);
    JournalBuilder& expectSelected(const std::string& item, int row);
    /// `entry` -1 for the item, else the option-menu entry.
    JournalBuilder& expectSensitive(const std::string& item, bool yes, int entry = -1);
    JournalBuilder& expectVisible(const std::string& item, bool yes);
    JournalBuilder& expectFocus(const std::string& item);
    JournalBuilder& expectTitle(const std::string& text);
    JournalBuilder& expectCue(const std::string& text);
    JournalBuilder& expectListing(const std::string& text);
    JournalBuilder& expectFile(const std::string& path, bool exists);
    JournalBuilder& expectStoplight(const std::string& toggles);

    const Journal& journal() const { return m_journal; }
    /// The journal as text, one line per step.
    std::string text() const;

private:
    // Appends the step of the line KIND WORDS..., read by the journal's own parser.
    JournalBuilder& line(StepKind kind, std::initializer_list<std::string> words);
    Journal m_journal;
};

} // namespace nxsim
