// The journal language: reading (tokens, the table of line kinds, the parser), writing (the
// formatter and the writer) and the C++ builder. It is one file because reading and writing
// follow the one table of line kinds and share its slot types; splitting it would spread a line
// kind over several files again.
#include <nxsim/journal.h>

#include "regular_file.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace nxsim {

namespace {

struct Token {
    enum Type { Word, Text, Open, Close, Comma };
    Type type;
    std::string text;
};

const char* typeName(Token::Type type) {
    switch (type) {
    case Token::Word:
        return "a word";
    case Token::Text:
        return "a quoted text";
    case Token::Open:
        return "[";
    case Token::Close:
        return "]";
    case Token::Comma:
        return ",";
    }
    return "?";
}

// What follows a line kind's keyword, one slot at a time; each slot says how it is read from the
// line, which fields of the step it fills, and how it is written back.
enum class Arg {
    DialogName,       // NAME                    item
    Item,             // ITEM                    item
    ItemWithEntry,    // ITEM or ITEM[N]         item, entry
    ItemWithoutEntry, // ITEM, refusing ITEM[N]  item
    Path,             // PATH                    item
    Row,              // N                       number
    Number,           // N                       number
    EntryOrText,      // N or "TEXT"             number or text (byText)
    Value,            // WORD or "TEXT"          text, quoted
    OnOff,            // on|off                  flag
    YesNo,            // yes|no                  flag
    ExistsMissing,    // exists|missing          flag
    MessageKind,      // error|information       word
    Title,            // "TEXT"                  title
    Text,             // "TEXT"                  text
    Label,            // "TEXT"                  text
    Toggles,          // "1 0 ..."               text
    RowOrCancel,      // N or cancel             number, cancel
    PointOrCancel,    // X Y or cancel           x, y, cancel
    TagOrCancel,      // TAG or cancel           number, cancel
    List,             // ["A", "B"]              list
};

// One line kind of the language: its keyword ("press", or "expect value" for an expectation) and
// its slots. The table drives the parser, its messages and the formatter; it is in the order of
// StepKind, which is the order the messages list the kinds in. The builder writes lines the
// parser reads back, so it follows the table too.
struct LineKind {
    StepKind kind;
    const char* keyword;
    std::vector<Arg> args;
};

const std::vector<LineKind>& lineKinds() {
    static const std::vector<LineKind> kinds = {
        {StepKind::Run, "run", {}},
        {StepKind::Dialog, "dialog", {Arg::DialogName}},
        {StepKind::Press, "press", {Arg::Item}},
        {StepKind::Select, "select", {Arg::Item, Arg::Row}},
        {StepKind::Deselect, "deselect", {Arg::Item}},
        {StepKind::DoubleClick, "double-click", {Arg::Item, Arg::Row}},
        {StepKind::Choose, "choose", {Arg::Item, Arg::EntryOrText}},
        {StepKind::Set, "set", {Arg::Item, Arg::Value}},
        {StepKind::Enter, "enter", {Arg::Item}},
        {StepKind::Toggle, "toggle", {Arg::Item, Arg::OnOff}},
        {StepKind::Ok, "ok", {}},
        {StepKind::Cancel, "cancel", {}},
        {StepKind::Close, "close", {}},
        {StepKind::Message, "message", {Arg::MessageKind, Arg::Title, Arg::Text}},
        {StepKind::Pick, "pick", {Arg::Title, Arg::RowOrCancel}},
        {StepKind::Point, "point", {Arg::PointOrCancel}},
        {StepKind::Object, "object", {Arg::TagOrCancel}},
        {StepKind::ExpectValue, "expect value", {Arg::Item, Arg::Value}},
        {StepKind::ExpectIndex, "expect index", {Arg::Item, Arg::Number}},
        {StepKind::ExpectLabel, "expect label", {Arg::Item, Arg::Label}},
        {StepKind::ExpectItems, "expect items", {Arg::Item, Arg::List}},
        {StepKind::ExpectSelected, "expect selected", {Arg::Item, Arg::Number}},
        {StepKind::ExpectSensitive, "expect sensitive", {Arg::ItemWithEntry, Arg::YesNo}},
        {StepKind::ExpectVisible, "expect visible", {Arg::ItemWithoutEntry, Arg::YesNo}},
        {StepKind::ExpectFocus, "expect focus", {Arg::Item}},
        {StepKind::ExpectTitle, "expect title", {Arg::Text}},
        {StepKind::ExpectCue, "expect cue", {Arg::Text}},
        {StepKind::ExpectListing, "expect listing", {Arg::Text}},
        {StepKind::ExpectFile, "expect file", {Arg::Path, Arg::ExistsMissing}},
        {StepKind::ExpectStoplight, "expect stoplight", {Arg::Toggles}},
    };
    return kinds;
}

const char* const kExpect = "expect";
const char* const kCancelWord = "cancel";

// The two words of a yes-or-no slot, as the parser reads them and the formatter writes them.
struct FlagWords {
    const char* yes;
    const char* no;
};

FlagWords flagWords(Arg arg) {
    switch (arg) {
    case Arg::OnOff:
        return {"on", "off"};
    case Arg::YesNo:
        return {"yes", "no"};
    case Arg::ExistsMissing:
        return {"exists", "missing"};
    default:
        throw std::logic_error("a journal slot without yes-or-no words");
    }
}

std::string flagWord(Arg arg, bool flag) {
    const FlagWords words = flagWords(arg);
    return flag ? words.yes : words.no;
}

// The keywords of the table that begin with `prefix ` (an expectation's second word), or the
// first words of all of them, each once: "run, dialog, ..." for an error message.
std::string keywordList(const std::string& prefix) {
    std::vector<std::string> words;
    for (const LineKind& kind : lineKinds()) {
        std::string keyword = kind.keyword;
        const auto blank = keyword.find(' ');
        if (prefix.empty()) {
            keyword = keyword.substr(0, blank);
        } else if (keyword.compare(0, blank, prefix) != 0 || blank == std::string::npos) {
            continue;
        } else {
            keyword = keyword.substr(blank + 1);
        }
        if (std::find(words.begin(), words.end(), keyword) == words.end()) {
            words.push_back(keyword);
        }
    }
    std::string list;
    for (const std::string& word : words) {
        list += (list.empty() ? "" : ", ") + word;
    }
    return list;
}

const LineKind* lineKind(const std::string& keyword) {
    for (const LineKind& kind : lineKinds()) {
        if (keyword == kind.keyword) {
            return &kind;
        }
    }
    return nullptr;
}

const LineKind& lineKind(StepKind stepKind) {
    for (const LineKind& kind : lineKinds()) {
        if (kind.kind == stepKind) {
            return kind;
        }
    }
    throw std::logic_error("a journal step kind without its line in the table");
}

class LineParser {
public:
    LineParser(const std::string& file, int line) : m_file(file), m_line(line) {}

    [[noreturn]] void fail(const std::string& reason) const {
        throw JournalSyntaxError(m_file + ":" + std::to_string(m_line) + ": " +
                                 detail::visibleText(reason));
    }

    void tokenize(const std::string& text) {
        std::size_t i = 0;
        while (i < text.size()) {
            char c = text[i];
            if (c == ' ' || c == '\t' || c == '\r') {
                ++i;
            } else if (c == '"') {
                std::string value;
                ++i;
                bool closed = false;
                while (i < text.size()) {
                    char d = text[i++];
                    if (d == '"') {
                        closed = true;
                        break;
                    }
                    if (d == '\\') {
                        if (i >= text.size()) {
                            break;
                        }
                        char e = text[i++];
                        switch (e) {
                        case '"':
                            value += '"';
                            break;
                        case '\\':
                            value += '\\';
                            break;
                        case 'n':
                            value += '\n';
                            break;
                        case 't':
                            value += '\t';
                            break;
                        default:
                            fail(std::string("unknown escape \\") + e +
                                 " in a quoted text (\\\" \\\\ \\n \\t)");
                        }
                    } else {
                        value += d;
                    }
                }
                if (!closed) {
                    fail("a quoted text is not closed");
                }
                m_tokens.push_back({Token::Text, value});
            } else if (c == '[') {
                m_tokens.push_back({Token::Open, "["});
                ++i;
            } else if (c == ']') {
                m_tokens.push_back({Token::Close, "]"});
                ++i;
            } else if (c == ',') {
                m_tokens.push_back({Token::Comma, ","});
                ++i;
            } else {
                std::string word;
                bool bracket = false;
                while (i < text.size()) {
                    char d = text[i];
                    if (d == ' ' || d == '\t' || d == '\r' || d == '"' || d == ',') {
                        break;
                    }
                    if (d == '[') {
                        bracket = true; // ITEM[N]
                    } else if (d == ']' && !bracket) {
                        break;
                    }
                    word += d;
                    ++i;
                }
                m_tokens.push_back({Token::Word, word});
            }
        }
    }

    bool atEnd() const { return m_next >= m_tokens.size(); }

    const Token& take(const char* what) {
        if (atEnd()) {
            fail(m_keyword + " needs " + what);
        }
        return m_tokens[m_next++];
    }

    std::string word(const char* what) {
        const Token& t = take(what);
        if (t.type != Token::Word) {
            fail(m_keyword + " needs " + what + ", found " + typeName(t.type));
        }
        return t.text;
    }

    std::string text(const char* what) {
        const Token& t = take(what);
        if (t.type != Token::Text) {
            fail(m_keyword + " needs " + what + " in double quotes, found " +
                 (t.type == Token::Word ? "the word " + t.text : typeName(t.type)));
        }
        return t.text;
    }

    // A WORD or a "TEXT"; `quoted` tells which.
    std::string value(const char* what, bool& quoted) {
        const Token& t = take(what);
        if (t.type != Token::Word && t.type != Token::Text) {
            fail(m_keyword + " needs " + what + ", found " + typeName(t.type));
        }
        quoted = t.type == Token::Text;
        return t.text;
    }

    std::string name(const char* what) {
        bool quoted = false;
        std::string n = value(what, quoted);
        if (n.empty()) {
            fail(m_keyword + " needs " + what + ", found an empty text");
        }
        return n;
    }

    long integer(const std::string& text, const char* what) const {
        char* end = nullptr;
        errno = 0;
        long n = std::strtol(text.c_str(), &end, 10);
        if (text.empty() || *end != '\0' || errno != 0 || n < -2147483647L || n > 2147483647L) {
            fail(m_keyword + " needs " + what + ", found \"" + text + "\"");
        }
        return n;
    }

    double real(const std::string& text, const char* what) const {
        char* end = nullptr;
        errno = 0;
        double d = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0' || errno != 0 || !std::isfinite(d)) {
            fail(m_keyword + " needs " + what + ", found \"" + text + "\"");
        }
        return d;
    }

    bool choice(FlagWords words) {
        std::string what = std::string(words.yes) + " or " + words.no;
        std::string w = word(what.c_str());
        if (w == words.yes) {
            return true;
        }
        if (w != words.no) {
            fail(m_keyword + " needs " + what + ", found \"" + w + "\"");
        }
        return false;
    }

    void done() const {
        if (!atEnd()) {
            const Token& t = m_tokens[m_next];
            fail("unexpected " +
                 (t.type == Token::Word   ? "\"" + t.text + "\""
                  : t.type == Token::Text ? "\"" + t.text + "\" (text)"
                                          : std::string(typeName(t.type))) +
                 " after " + m_keyword);
        }
    }

    // ITEM or ITEM[N]
    void itemWithEntry(JournalStep& step, bool entryAllowed) {
        std::string n = name("an item name");
        std::size_t open = n.find('[');
        if (open != std::string::npos) {
            if (!entryAllowed) {
                fail(m_keyword + " takes no entry index: " + n);
            }
            if (n.back() != ']' || open == 0) {
                fail("malformed item entry \"" + n + "\" (ITEM[N])");
            }
            step.entry =
                static_cast<int>(integer(n.substr(open + 1, n.size() - open - 2), "an index"));
            if (step.entry < 0) {
                fail("entry index must not be negative in \"" + n + "\"");
            }
            n = n.substr(0, open);
        }
        step.item = n;
    }

    JournalStep parse(const std::string& source) {
        tokenize(source);
        JournalStep step;
        step.line = m_line;
        std::string keyword = word("a line kind");
        m_keyword = "`" + keyword + "`";
        const bool expectation = keyword == kExpect;
        if (expectation) {
            keyword += " " + word("what to expect");
            m_keyword = "`" + keyword + "`";
        }
        const LineKind* kind = lineKind(keyword);
        if (!kind && expectation) {
            fail("unknown expectation \"" + keyword.substr(keyword.find(' ') + 1) + "\" (" +
                 keywordList(kExpect) + ")");
        }
        if (!kind) {
            fail("unknown line kind \"" + keyword + "\" (" + keywordList("") + ")");
        }
        step.kind = kind->kind;
        for (const Arg arg : kind->args) {
            read(arg, step);
        }
        done();
        return step;
    }

    void read(Arg arg, JournalStep& step) {
        switch (arg) {
        case Arg::DialogName:
            step.item = name("a dialog name");
            break;
        case Arg::Item:
            step.item = name("an item name");
            break;
        case Arg::ItemWithEntry:
            itemWithEntry(step, true);
            break;
        case Arg::ItemWithoutEntry:
            itemWithEntry(step, false);
            break;
        case Arg::Path:
            step.item = name("a path");
            break;
        case Arg::Row:
            step.number = integer(word("a row number"), "a row number");
            break;
        case Arg::Number:
            step.number = integer(word("a number"), "a number");
            break;
        case Arg::EntryOrText: {
            const Token& t = take("an entry number or \"TEXT\"");
            if (t.type == Token::Text) {
                step.byText = true;
                step.text = t.text;
            } else if (t.type == Token::Word) {
                step.number = integer(t.text, "an entry number or \"TEXT\"");
            } else {
                fail(m_keyword + " needs an entry number or \"TEXT\"");
            }
            break;
        }
        case Arg::Value:
            step.text = value("a value", step.quoted);
            break;
        case Arg::OnOff:
        case Arg::YesNo:
        case Arg::ExistsMissing:
            step.flag = choice(flagWords(arg));
            break;
        case Arg::MessageKind:
            step.word = word("error or information");
            if (step.word != "error" && step.word != "information") {
                fail(m_keyword + " needs error or information, found \"" + step.word + "\"");
            }
            break;
        case Arg::Title:
            step.title = text("a title");
            break;
        case Arg::Text:
            step.text = text("a text");
            break;
        case Arg::Label:
            step.text = text("a label");
            break;
        case Arg::Toggles: {
            step.text = text("the toggles, e.g. \"1 0\"");
            std::istringstream words(step.text);
            for (std::string w; words >> w;) {
                if (w != "0" && w != "1") {
                    fail(m_keyword + " takes 1 and 0 only, found \"" + w + "\"");
                }
            }
            break;
        }
        case Arg::RowOrCancel: {
            const std::string w = word("a row number or cancel");
            step.cancel = w == kCancelWord;
            if (!step.cancel) {
                step.number = integer(w, "a row number or cancel");
            }
            break;
        }
        case Arg::PointOrCancel: {
            const std::string w = word("X Y or cancel");
            step.cancel = w == kCancelWord;
            if (!step.cancel) {
                step.x = real(w, "X Y or cancel");
                step.y = real(word("Y"), "a number Y");
            }
            break;
        }
        case Arg::TagOrCancel: {
            const std::string w = word("a tag or cancel");
            step.cancel = w == kCancelWord;
            if (!step.cancel) {
                step.number = integer(w, "a tag or cancel");
                if (step.number <= 0) {
                    fail(m_keyword + " needs a positive tag, found \"" + w + "\"");
                }
            }
            break;
        }
        case Arg::List:
            list(step);
            break;
        }
    }

    void list(JournalStep& step) {
        const Token& open = take("a list [\"A\", \"B\"]");
        if (open.type != Token::Open) {
            fail(m_keyword + " needs a list [\"A\", \"B\"]");
        }
        bool expectEntry = true;
        while (true) {
            const Token& t = take("the rest of the list and ]");
            if (t.type == Token::Close) {
                if (expectEntry && !step.list.empty()) {
                    fail("a list entry is missing before ]");
                }
                return;
            }
            if (expectEntry && t.type == Token::Text) {
                step.list.push_back(t.text);
                expectEntry = false;
            } else if (!expectEntry && t.type == Token::Comma) {
                expectEntry = true;
            } else {
                fail(std::string("malformed list: unexpected ") +
                     (t.type == Token::Word ? "word \"" + t.text + "\" (quote entries)"
                                            : typeName(t.type)));
            }
        }
    }

private:
    std::string m_file;
    int m_line;
    std::vector<Token> m_tokens;
    std::size_t m_next = 0;
    std::string m_keyword;
};

bool needsQuotes(const std::string& text) {
    if (text.empty()) {
        return true;
    }
    for (char c : text) {
        if (c == ' ' || c == '\t' || c == '"' || c == ',' || c == '[' || c == ']' || c == '\n' ||
            c == '\r' || c == '\\' || c == '#') {
            return true;
        }
    }
    return false;
}

std::string formatNumber(double value) {
    for (int precision = 1; precision <= 17; ++precision) {
        std::ostringstream out;
        out.precision(precision);
        out << value;
        if (std::strtod(out.str().c_str(), nullptr) == value) {
            return out.str();
        }
    }
    std::ostringstream out;
    out.precision(17);
    out << value;
    return out.str();
}

std::string valueWord(const std::string& text, bool quoted) {
    return quoted || needsQuotes(text) ? quoteJournalText(text) : text;
}

} // namespace

Journal parseJournal(const std::string& text, const std::string& file) {
    Journal journal;
    journal.file = file;
    std::size_t start = 0;
    int line = 0;
    while (start < text.size()) {
        std::size_t nl = text.find('\n', start);
        std::string content =
            text.substr(start, nl == std::string::npos ? std::string::npos : nl - start);
        start = nl == std::string::npos ? text.size() : nl + 1;
        ++line;
        std::size_t first = content.find_first_not_of(" \t\r");
        if (first == std::string::npos || content[first] == '#') {
            continue;
        }
        journal.steps.push_back(LineParser(file, line).parse(content));
    }
    journal.lineCount = line;
    return journal;
}

Journal readJournal(const boost::filesystem::path& file) {
    std::string text;
    try {
        text = detail::readRegularFile(file, detail::kMaxJournalBytes, "a journal");
    } catch (const detail::UnreadableFile& error) {
        throw std::runtime_error(file.string() + ": " + error.what());
    }
    return parseJournal(text, file.string());
}

// The journal's own quoting, written here rather than taken from a JSON library: its escapes are
// only \" \\ \n \t, and every other byte, UTF-8 or not, stands as it is, so that a journal shows
// the texts of a dialog as the user reads them.
std::string quoteJournalText(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            out += c;
        }
    }
    return out + "\"";
}

namespace {

// ITEM, or ITEM[N] as one word: a name that needs quotes is quoted together with its entry.
std::string itemWithEntryWord(const std::string& item, int entry) {
    if (entry < 0) {
        return valueWord(item, false);
    }
    const std::string withEntry = item + "[" + std::to_string(entry) + "]";
    return needsQuotes(item) ? quoteJournalText(withEntry) : withEntry;
}

std::string listWords(const std::vector<std::string>& entries) {
    std::string list;
    for (const std::string& e : entries) {
        list += (list.empty() ? "" : ", ") + quoteJournalText(e);
    }
    return "[" + list + "]";
}

std::string written(Arg arg, const JournalStep& s) {
    switch (arg) {
    case Arg::DialogName:
    case Arg::Item:
    case Arg::ItemWithoutEntry:
    case Arg::Path:
        return valueWord(s.item, false);
    case Arg::ItemWithEntry:
        return itemWithEntryWord(s.item, s.entry);
    case Arg::Row:
    case Arg::Number:
        return std::to_string(s.number);
    case Arg::EntryOrText:
        return s.byText ? quoteJournalText(s.text) : std::to_string(s.number);
    case Arg::Value:
        return valueWord(s.text, s.quoted);
    case Arg::OnOff:
    case Arg::YesNo:
    case Arg::ExistsMissing:
        return flagWord(arg, s.flag);
    case Arg::MessageKind:
        return s.word;
    case Arg::Title:
        return quoteJournalText(s.title);
    case Arg::Text:
    case Arg::Label:
    case Arg::Toggles:
        return quoteJournalText(s.text);
    case Arg::RowOrCancel:
    case Arg::TagOrCancel:
        return s.cancel ? kCancelWord : std::to_string(s.number);
    case Arg::PointOrCancel:
        return s.cancel ? kCancelWord : formatNumber(s.x) + " " + formatNumber(s.y);
    case Arg::List:
        return listWords(s.list);
    }
    return "";
}

} // namespace

std::string formatStep(const JournalStep& s) {
    const LineKind& kind = lineKind(s.kind);
    std::string line = kind.keyword;
    for (const Arg arg : kind.args) {
        line += " " + written(arg, s);
    }
    return line;
}

void JournalWriter::write(const JournalStep& step, int depth) {
    m_out << std::string(static_cast<std::size_t>(depth > 0 ? depth * 2 : 0), ' ')
          << formatStep(step) << '\n';
}

void JournalWriter::comment(const std::string& text, int depth) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        m_out << std::string(static_cast<std::size_t>(depth > 0 ? depth * 2 : 0), ' ') << "# "
              << line << '\n';
    }
}

// ---- JournalBuilder ----

// A built step is the step its journal line gives: each function writes its words in the order
// of its line kind's slots and the parser reads the line back. So the table alone says what a word
// fills, and a builder call is checked as a line of a file is (a negative entry, an empty name).
JournalBuilder& JournalBuilder::line(StepKind kind, std::initializer_list<std::string> words) {
    std::string text = lineKind(kind).keyword;
    for (const std::string& word : words) {
        text += " " + word;
    }
    const int number = static_cast<int>(m_journal.steps.size()) + 1;
    m_journal.steps.push_back(LineParser(m_journal.file, number).parse(text));
    m_journal.lineCount = number;
    return *this;
}

namespace {

std::string bare(const std::string& name) {
    return valueWord(name, false);
}

std::string number(long n) {
    return std::to_string(n);
}

} // namespace

JournalBuilder& JournalBuilder::run() {
    return line(StepKind::Run, {});
}

JournalBuilder& JournalBuilder::dialog(const std::string& name) {
    return line(StepKind::Dialog, {bare(name)});
}

JournalBuilder& JournalBuilder::press(const std::string& item) {
    return line(StepKind::Press, {bare(item)});
}

JournalBuilder& JournalBuilder::select(const std::string& item, int row) {
    return line(StepKind::Select, {bare(item), number(row)});
}

JournalBuilder& JournalBuilder::deselect(const std::string& item) {
    return line(StepKind::Deselect, {bare(item)});
}

JournalBuilder& JournalBuilder::doubleClick(const std::string& item, int row) {
    return line(StepKind::DoubleClick, {bare(item), number(row)});
}

JournalBuilder& JournalBuilder::choose(const std::string& item, int index) {
    return line(StepKind::Choose, {bare(item), number(index)});
}

JournalBuilder& JournalBuilder::choose(const std::string& item, const std::string& entryText) {
    return line(StepKind::Choose, {bare(item), quoteJournalText(entryText)});
}

JournalBuilder& JournalBuilder::set(const std::string& item, const std::string& value) {
    return line(StepKind::Set, {bare(item), quoteJournalText(value)});
}

JournalBuilder& JournalBuilder::enter(const std::string& item) {
    return line(StepKind::Enter, {bare(item)});
}

JournalBuilder& JournalBuilder::toggle(const std::string& item, bool on) {
    return line(StepKind::Toggle, {bare(item), flagWord(Arg::OnOff, on)});
}

JournalBuilder& JournalBuilder::ok() {
    return line(StepKind::Ok, {});
}

JournalBuilder& JournalBuilder::cancel() {
    return line(StepKind::Cancel, {});
}

JournalBuilder& JournalBuilder::close() {
    return line(StepKind::Close, {});
}

JournalBuilder& JournalBuilder::message(const std::string& kind, const std::string& title,
                                        const std::string& text) {
    return line(StepKind::Message, {bare(kind), quoteJournalText(title), quoteJournalText(text)});
}

JournalBuilder& JournalBuilder::pick(const std::string& title, int row) {
    return line(StepKind::Pick, {quoteJournalText(title), number(row)});
}

JournalBuilder& JournalBuilder::pickCancel(const std::string& title) {
    return line(StepKind::Pick, {quoteJournalText(title), kCancelWord});
}

JournalBuilder& JournalBuilder::point(double x, double y) {
    return line(StepKind::Point, {formatNumber(x), formatNumber(y)});
}

JournalBuilder& JournalBuilder::pointCancel() {
    return line(StepKind::Point, {kCancelWord});
}

JournalBuilder& JournalBuilder::object(unsigned int tag) {
    return line(StepKind::Object, {number(static_cast<long>(tag))});
}

JournalBuilder& JournalBuilder::objectCancel() {
    return line(StepKind::Object, {kCancelWord});
}

JournalBuilder& JournalBuilder::expectValue(const std::string& item, const std::string& value) {
    return line(StepKind::ExpectValue, {bare(item), quoteJournalText(value)});
}

JournalBuilder& JournalBuilder::expectIndex(const std::string& item, int index) {
    return line(StepKind::ExpectIndex, {bare(item), number(index)});
}

JournalBuilder& JournalBuilder::expectLabel(const std::string& item, const std::string& text) {
    return line(StepKind::ExpectLabel, {bare(item), quoteJournalText(text)});
}

JournalBuilder& JournalBuilder::expectItems(const std::string& item,
                                            const std::vector<std::string>& items) {
    return line(StepKind::ExpectItems, {bare(item), listWords(items)});
}

JournalBuilder& JournalBuilder::expectSelected(const std::string& item, int row) {
    return line(StepKind::ExpectSelected, {bare(item), number(row)});
}

JournalBuilder& JournalBuilder::expectSensitive(const std::string& item, bool yes, int entry) {
    return line(StepKind::ExpectSensitive,
                {itemWithEntryWord(item, entry), flagWord(Arg::YesNo, yes)});
}

JournalBuilder& JournalBuilder::expectVisible(const std::string& item, bool yes) {
    return line(StepKind::ExpectVisible, {bare(item), flagWord(Arg::YesNo, yes)});
}

JournalBuilder& JournalBuilder::expectFocus(const std::string& item) {
    return line(StepKind::ExpectFocus, {bare(item)});
}

JournalBuilder& JournalBuilder::expectTitle(const std::string& text) {
    return line(StepKind::ExpectTitle, {quoteJournalText(text)});
}

JournalBuilder& JournalBuilder::expectCue(const std::string& text) {
    return line(StepKind::ExpectCue, {quoteJournalText(text)});
}

JournalBuilder& JournalBuilder::expectListing(const std::string& text) {
    return line(StepKind::ExpectListing, {quoteJournalText(text)});
}

JournalBuilder& JournalBuilder::expectFile(const std::string& path, bool exists) {
    return line(StepKind::ExpectFile, {bare(path), flagWord(Arg::ExistsMissing, exists)});
}

JournalBuilder& JournalBuilder::expectStoplight(const std::string& toggles) {
    return line(StepKind::ExpectStoplight, {quoteJournalText(toggles)});
}

std::string JournalBuilder::text() const {
    std::ostringstream out;
    JournalWriter writer(out);
    for (const JournalStep& step : m_journal.steps) {
        writer.write(step, 0);
    }
    return out.str();
}

} // namespace nxsim
