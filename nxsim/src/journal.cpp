#include <nxsim/journal.h>

#include "regular_file.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <sstream>

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

    bool choice(const char* yes, const char* no) {
        std::string what = std::string(yes) + " or " + no;
        std::string w = word(what.c_str());
        if (w == yes) {
            return true;
        }
        if (w != no) {
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
        if (keyword == "run") {
            step.kind = StepKind::Run;
        } else if (keyword == "dialog") {
            step.kind = StepKind::Dialog;
            step.item = name("a dialog name");
        } else if (keyword == "press" || keyword == "deselect" || keyword == "enter") {
            step.kind = keyword == "press"      ? StepKind::Press
                        : keyword == "deselect" ? StepKind::Deselect
                                                : StepKind::Enter;
            step.item = name("an item name");
        } else if (keyword == "select" || keyword == "double-click") {
            step.kind = keyword == "select" ? StepKind::Select : StepKind::DoubleClick;
            step.item = name("an item name");
            step.number = integer(word("a row number"), "a row number");
        } else if (keyword == "choose") {
            step.kind = StepKind::Choose;
            step.item = name("an item name");
            const Token& t = take("an entry number or \"TEXT\"");
            if (t.type == Token::Text) {
                step.byText = true;
                step.text = t.text;
            } else if (t.type == Token::Word) {
                step.number = integer(t.text, "an entry number or \"TEXT\"");
            } else {
                fail("`choose` needs an entry number or \"TEXT\"");
            }
        } else if (keyword == "set") {
            step.kind = StepKind::Set;
            step.item = name("an item name");
            step.text = value("a value", step.quoted);
        } else if (keyword == "toggle") {
            step.kind = StepKind::Toggle;
            step.item = name("an item name");
            step.flag = choice("on", "off");
        } else if (keyword == "ok" || keyword == "cancel" || keyword == "close") {
            step.kind = keyword == "ok"       ? StepKind::Ok
                        : keyword == "cancel" ? StepKind::Cancel
                                              : StepKind::Close;
        } else if (keyword == "message") {
            step.kind = StepKind::Message;
            step.word = word("error or information");
            if (step.word != "error" && step.word != "information") {
                fail("`message` needs error or information, found \"" + step.word + "\"");
            }
            step.title = text("a title");
            step.text = text("a text");
        } else if (keyword == "pick") {
            step.kind = StepKind::Pick;
            step.title = text("a title");
            std::string w = word("a row number or cancel");
            if (w == "cancel") {
                step.cancel = true;
            } else {
                step.number = integer(w, "a row number or cancel");
            }
        } else if (keyword == "point") {
            step.kind = StepKind::Point;
            std::string w = word("X Y or cancel");
            if (w == "cancel") {
                step.cancel = true;
            } else {
                step.x = real(w, "X Y or cancel");
                step.y = real(word("Y"), "a number Y");
            }
        } else if (keyword == "object") {
            step.kind = StepKind::Object;
            std::string w = word("a tag or cancel");
            if (w == "cancel") {
                step.cancel = true;
            } else {
                step.number = integer(w, "a tag or cancel");
                if (step.number <= 0) {
                    fail("`object` needs a positive tag, found \"" + w + "\"");
                }
            }
        } else if (keyword == "expect") {
            parseExpect(step);
        } else {
            fail("unknown line kind \"" + keyword +
                 "\" (run, dialog, press, select, deselect, double-click, choose, set, enter, "
                 "toggle, ok, cancel, close, message, pick, point, object, expect)");
        }
        done();
        return step;
    }

    void parseExpect(JournalStep& step) {
        std::string what = word("what to expect");
        m_keyword = "`expect " + what + "`";
        if (what == "value") {
            step.kind = StepKind::ExpectValue;
            step.item = name("an item name");
            step.text = value("a value", step.quoted);
        } else if (what == "index" || what == "selected") {
            step.kind = what == "index" ? StepKind::ExpectIndex : StepKind::ExpectSelected;
            step.item = name("an item name");
            step.number = integer(word("a number"), "a number");
        } else if (what == "label") {
            step.kind = StepKind::ExpectLabel;
            step.item = name("an item name");
            step.text = text("a label");
        } else if (what == "items") {
            step.kind = StepKind::ExpectItems;
            step.item = name("an item name");
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
                    break;
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
        } else if (what == "sensitive" || what == "visible") {
            step.kind = what == "sensitive" ? StepKind::ExpectSensitive : StepKind::ExpectVisible;
            itemWithEntry(step, what == "sensitive");
            step.flag = choice("yes", "no");
        } else if (what == "focus") {
            step.kind = StepKind::ExpectFocus;
            step.item = name("an item name");
        } else if (what == "title" || what == "cue" || what == "listing") {
            step.kind = what == "title" ? StepKind::ExpectTitle
                        : what == "cue" ? StepKind::ExpectCue
                                        : StepKind::ExpectListing;
            step.text = text("a text");
        } else if (what == "file") {
            step.kind = StepKind::ExpectFile;
            step.item = name("a path");
            step.flag = choice("exists", "missing");
        } else if (what == "stoplight") {
            step.kind = StepKind::ExpectStoplight;
            step.text = text("the toggles, e.g. \"1 0\"");
            std::istringstream words(step.text);
            for (std::string w; words >> w;) {
                if (w != "0" && w != "1") {
                    fail("`expect stoplight` takes 1 and 0 only, found \"" + w + "\"");
                }
            }
        } else {
            fail("unknown expectation \"" + what +
                 "\" (value, index, label, items, selected, sensitive, visible, focus, title, "
                 "cue, listing, file, stoplight)");
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

std::string formatStep(const JournalStep& s) {
    const std::string item = valueWord(s.item, false);
    switch (s.kind) {
    case StepKind::Run:
        return "run";
    case StepKind::Dialog:
        return "dialog " + item;
    case StepKind::Press:
        return "press " + item;
    case StepKind::Select:
        return "select " + item + " " + std::to_string(s.number);
    case StepKind::Deselect:
        return "deselect " + item;
    case StepKind::DoubleClick:
        return "double-click " + item + " " + std::to_string(s.number);
    case StepKind::Choose:
        return "choose " + item + " " +
               (s.byText ? quoteJournalText(s.text) : std::to_string(s.number));
    case StepKind::Set:
        return "set " + item + " " + valueWord(s.text, s.quoted);
    case StepKind::Enter:
        return "enter " + item;
    case StepKind::Toggle:
        return "toggle " + item + (s.flag ? " on" : " off");
    case StepKind::Ok:
        return "ok";
    case StepKind::Cancel:
        return "cancel";
    case StepKind::Close:
        return "close";
    case StepKind::Message:
        return "message " + s.word + " " + quoteJournalText(s.title) + " " +
               quoteJournalText(s.text);
    case StepKind::Pick:
        return "pick " + quoteJournalText(s.title) + " " +
               (s.cancel ? std::string("cancel") : std::to_string(s.number));
    case StepKind::Point:
        return s.cancel ? "point cancel" : "point " + formatNumber(s.x) + " " + formatNumber(s.y);
    case StepKind::Object:
        return s.cancel ? "object cancel" : "object " + std::to_string(s.number);
    case StepKind::ExpectValue:
        return "expect value " + item + " " + valueWord(s.text, s.quoted);
    case StepKind::ExpectIndex:
        return "expect index " + item + " " + std::to_string(s.number);
    case StepKind::ExpectLabel:
        return "expect label " + item + " " + quoteJournalText(s.text);
    case StepKind::ExpectItems: {
        std::string list;
        for (const std::string& e : s.list) {
            list += (list.empty() ? "" : ", ") + quoteJournalText(e);
        }
        return "expect items " + item + " [" + list + "]";
    }
    case StepKind::ExpectSelected:
        return "expect selected " + item + " " + std::to_string(s.number);
    case StepKind::ExpectSensitive: {
        // ITEM[N] is one word: a name that needs quotes is quoted together with its entry.
        std::string target = item;
        if (s.entry >= 0) {
            const std::string entry = "[" + std::to_string(s.entry) + "]";
            target = needsQuotes(s.item) ? quoteJournalText(s.item + entry) : s.item + entry;
        }
        return "expect sensitive " + target + (s.flag ? " yes" : " no");
    }
    case StepKind::ExpectVisible:
        return "expect visible " + item + (s.flag ? " yes" : " no");
    case StepKind::ExpectFocus:
        return "expect focus " + item;
    case StepKind::ExpectTitle:
        return "expect title " + quoteJournalText(s.text);
    case StepKind::ExpectCue:
        return "expect cue " + quoteJournalText(s.text);
    case StepKind::ExpectListing:
        return "expect listing " + quoteJournalText(s.text);
    case StepKind::ExpectFile:
        return "expect file " + item + (s.flag ? " exists" : " missing");
    case StepKind::ExpectStoplight:
        return "expect stoplight " + quoteJournalText(s.text);
    }
    return "";
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

JournalStep& JournalBuilder::add(StepKind kind) {
    JournalStep step;
    step.kind = kind;
    step.line = static_cast<int>(m_journal.steps.size()) + 1;
    m_journal.steps.push_back(step);
    m_journal.lineCount = step.line;
    return m_journal.steps.back();
}

JournalBuilder& JournalBuilder::run() {
    add(StepKind::Run);
    return *this;
}

JournalBuilder& JournalBuilder::dialog(const std::string& name) {
    add(StepKind::Dialog).item = name;
    return *this;
}

JournalBuilder& JournalBuilder::press(const std::string& item) {
    add(StepKind::Press).item = item;
    return *this;
}

JournalBuilder& JournalBuilder::select(const std::string& item, int row) {
    JournalStep& s = add(StepKind::Select);
    s.item = item;
    s.number = row;
    return *this;
}

JournalBuilder& JournalBuilder::deselect(const std::string& item) {
    add(StepKind::Deselect).item = item;
    return *this;
}

JournalBuilder& JournalBuilder::doubleClick(const std::string& item, int row) {
    JournalStep& s = add(StepKind::DoubleClick);
    s.item = item;
    s.number = row;
    return *this;
}

JournalBuilder& JournalBuilder::choose(const std::string& item, int index) {
    JournalStep& s = add(StepKind::Choose);
    s.item = item;
    s.number = index;
    return *this;
}

JournalBuilder& JournalBuilder::choose(const std::string& item, const std::string& entryText) {
    JournalStep& s = add(StepKind::Choose);
    s.item = item;
    s.byText = true;
    s.text = entryText;
    return *this;
}

JournalBuilder& JournalBuilder::set(const std::string& item, const std::string& value) {
    JournalStep& s = add(StepKind::Set);
    s.item = item;
    s.text = value;
    s.quoted = true;
    return *this;
}

JournalBuilder& JournalBuilder::enter(const std::string& item) {
    add(StepKind::Enter).item = item;
    return *this;
}

JournalBuilder& JournalBuilder::toggle(const std::string& item, bool on) {
    JournalStep& s = add(StepKind::Toggle);
    s.item = item;
    s.flag = on;
    return *this;
}

JournalBuilder& JournalBuilder::ok() {
    add(StepKind::Ok);
    return *this;
}

JournalBuilder& JournalBuilder::cancel() {
    add(StepKind::Cancel);
    return *this;
}

JournalBuilder& JournalBuilder::close() {
    add(StepKind::Close);
    return *this;
}

JournalBuilder& JournalBuilder::message(const std::string& kind, const std::string& title,
                                        const std::string& text) {
    JournalStep& s = add(StepKind::Message);
    s.word = kind;
    s.title = title;
    s.text = text;
    return *this;
}

JournalBuilder& JournalBuilder::pick(const std::string& title, int row) {
    JournalStep& s = add(StepKind::Pick);
    s.title = title;
    s.number = row;
    return *this;
}

JournalBuilder& JournalBuilder::pickCancel(const std::string& title) {
    JournalStep& s = add(StepKind::Pick);
    s.title = title;
    s.cancel = true;
    return *this;
}

JournalBuilder& JournalBuilder::point(double x, double y) {
    JournalStep& s = add(StepKind::Point);
    s.x = x;
    s.y = y;
    return *this;
}

JournalBuilder& JournalBuilder::pointCancel() {
    add(StepKind::Point).cancel = true;
    return *this;
}

JournalBuilder& JournalBuilder::object(unsigned int tag) {
    add(StepKind::Object).number = static_cast<long>(tag);
    return *this;
}

JournalBuilder& JournalBuilder::objectCancel() {
    add(StepKind::Object).cancel = true;
    return *this;
}

JournalBuilder& JournalBuilder::expectValue(const std::string& item, const std::string& value) {
    JournalStep& s = add(StepKind::ExpectValue);
    s.item = item;
    s.text = value;
    s.quoted = true;
    return *this;
}

JournalBuilder& JournalBuilder::expectIndex(const std::string& item, int index) {
    JournalStep& s = add(StepKind::ExpectIndex);
    s.item = item;
    s.number = index;
    return *this;
}

JournalBuilder& JournalBuilder::expectLabel(const std::string& item, const std::string& text) {
    JournalStep& s = add(StepKind::ExpectLabel);
    s.item = item;
    s.text = text;
    return *this;
}

JournalBuilder& JournalBuilder::expectItems(const std::string& item,
                                            const std::vector<std::string>& items) {
    JournalStep& s = add(StepKind::ExpectItems);
    s.item = item;
    s.list = items;
    return *this;
}

JournalBuilder& JournalBuilder::expectSelected(const std::string& item, int row) {
    JournalStep& s = add(StepKind::ExpectSelected);
    s.item = item;
    s.number = row;
    return *this;
}

JournalBuilder& JournalBuilder::expectSensitive(const std::string& item, bool yes, int entry) {
    JournalStep& s = add(StepKind::ExpectSensitive);
    s.item = item;
    s.flag = yes;
    s.entry = entry;
    return *this;
}

JournalBuilder& JournalBuilder::expectVisible(const std::string& item, bool yes) {
    JournalStep& s = add(StepKind::ExpectVisible);
    s.item = item;
    s.flag = yes;
    return *this;
}

JournalBuilder& JournalBuilder::expectFocus(const std::string& item) {
    add(StepKind::ExpectFocus).item = item;
    return *this;
}

JournalBuilder& JournalBuilder::expectTitle(const std::string& text) {
    add(StepKind::ExpectTitle).text = text;
    return *this;
}

JournalBuilder& JournalBuilder::expectCue(const std::string& text) {
    add(StepKind::ExpectCue).text = text;
    return *this;
}

JournalBuilder& JournalBuilder::expectListing(const std::string& text) {
    add(StepKind::ExpectListing).text = text;
    return *this;
}

JournalBuilder& JournalBuilder::expectFile(const std::string& path, bool exists) {
    JournalStep& s = add(StepKind::ExpectFile);
    s.item = path;
    s.flag = exists;
    return *this;
}

JournalBuilder& JournalBuilder::expectStoplight(const std::string& toggles) {
    add(StepKind::ExpectStoplight).text = toggles;
    return *this;
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
