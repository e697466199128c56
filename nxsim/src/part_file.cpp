#include <nxsim/part_file.h>

#include "regular_file.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <tuple>

namespace fs = boost::filesystem;

namespace nxsim {

namespace {

const char* const kHeader = "qorfmt-part 1";

const std::pair<double, double> kMetric[] = {
    {841, 1189}, {594, 841}, {420, 594}, {297, 420}, {210, 297}};
const char* const kMetricNames[] = {"A0", "A1", "A2", "A3", "A4"};

const std::pair<double, double> kEnglish[] = {{8.5, 11}, {11, 17}, {17, 22}, {22, 34},
                                              {34, 44},  {28, 40}, {28, 44}, {34, 55}};
const char* const kEnglishNames[] = {"A", "B", "C", "D", "E", "F", "H", "J"};

class Parser {
public:
    explicit Parser(const fs::path& file) : m_file(file) {}

    [[noreturn]] void fail(const std::string& reason) const {
        throw PartFileError(m_file.string() + ":" + std::to_string(m_line) + ": " +
                            detail::visibleText(reason));
    }

    double number(const std::string& word) const {
        char* end = nullptr;
        errno = 0;
        double d = std::strtod(word.c_str(), &end);
        if (word.empty() || *end != '\0' || errno != 0 || !std::isfinite(d)) {
            fail("\"" + word + "\" is not a number");
        }
        return d;
    }

    unsigned int tag(const std::string& word) const {
        char* end = nullptr;
        errno = 0;
        long n = std::strtol(word.c_str(), &end, 10);
        if (word.empty() || *end != '\0' || errno != 0 || n < 1 || n > 0xFFFF) {
            fail("\"" + word + "\" is not a tag (1 to 65535)");
        }
        return static_cast<unsigned int>(n);
    }

    int units(const std::string& word) const {
        if (word == "mm") {
            return 1;
        }
        if (word == "inch") {
            return 2;
        }
        fail("units must be mm or inch, not \"" + word + "\"");
    }

    // One look-up per object, so that a part of 65,535 objects reads in linear time.
    void checkTag(unsigned int t) {
        if (m_tagLines.empty()) {
            m_tagLines.assign(0x10000, 0);
        }
        if (m_tagLines[t] != 0) {
            fail("tag " + std::to_string(t) + " is used twice (first on line " +
                 std::to_string(m_tagLines[t]) + ")");
        }
        m_tagLines[t] = m_line;
    }

    SimPart parse(const std::string& text) {
        SimPart part;
        part.file = m_file;
        if (text.find('\0') != std::string::npos) {
            throw PartFileError(m_file.string() +
                                ": not a part file of the simulated format (binary data; "
                                "vendor part files cannot be opened)");
        }
        std::istringstream in(text);
        std::string line;
        std::string current;
        bool currentGiven = false;
        int currentLine = 0;
        bool headerSeen = false;
        bool unitsSeen = false;
        while (std::getline(in, line)) {
            ++m_line;
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            std::istringstream words(line);
            std::vector<std::string> w;
            for (std::string word; words >> word;) {
                w.push_back(word);
            }
            if (!headerSeen) {
                if (line != kHeader) {
                    throw PartFileError(m_file.string() +
                                        ": not a part file of the simulated format (the first "
                                        "line must be \"" +
                                        kHeader + "\")");
                }
                headerSeen = true;
                continue;
            }
            if (w.empty() || w[0][0] == '#') {
                continue;
            }
            const std::string& key = w[0];
            if (key == "units") {
                if (w.size() != 2) {
                    fail("expected: units mm|inch");
                }
                if (unitsSeen) {
                    fail("units given twice");
                }
                if (!part.drawings.empty() || !part.objects.empty()) {
                    fail("units must come before drawings and objects");
                }
                unitsSeen = true;
                part.units = units(w[1]);
            } else if (key == "drawing") {
                part.drawings.push_back(drawing(w, part));
            } else if (key == "current") {
                if (w.size() != 2) {
                    fail("expected: current NAME|none");
                }
                if (currentGiven) {
                    fail("current given twice");
                }
                currentGiven = true;
                current = w[1];
                currentLine = m_line;
            } else if (key == "point") {
                if (w.size() != 5) {
                    fail("expected: point TAG X Y Z");
                }
                SimObject o;
                o.type = SimObject::Point;
                o.tag = tag(w[1]);
                checkTag(o.tag);
                for (int i = 0; i < 3; ++i) {
                    o.start[i] = o.end[i] = number(w[static_cast<std::size_t>(2 + i)]);
                }
                o.line = m_line;
                part.objects.push_back(o);
            } else if (key == "line") {
                if (w.size() != 8) {
                    fail("expected: line TAG X1 Y1 Z1 X2 Y2 Z2");
                }
                SimObject o;
                o.type = SimObject::Line;
                o.tag = tag(w[1]);
                checkTag(o.tag);
                for (int i = 0; i < 3; ++i) {
                    o.start[i] = number(w[static_cast<std::size_t>(2 + i)]);
                    o.end[i] = number(w[static_cast<std::size_t>(5 + i)]);
                }
                o.line = m_line;
                part.objects.push_back(o);
            } else {
                fail("unknown line \"" + key + "\" (units, drawing, current, point, line)");
            }
        }
        if (!headerSeen) {
            throw PartFileError(m_file.string() +
                                ": not a part file of the simulated format (the file is empty)");
        }
        part.currentDrawing = part.drawings.empty() ? -1 : 0;
        if (currentGiven) {
            part.currentDrawing = -1;
            if (current != "none") {
                for (std::size_t i = 0; i < part.drawings.size(); ++i) {
                    if (part.drawings[i].name == current) {
                        part.currentDrawing = static_cast<int>(i);
                    }
                }
                if (part.currentDrawing < 0) {
                    m_line = currentLine;
                    fail("current names no drawing: \"" + current + "\"");
                }
            }
        }
        return part;
    }

    SimDrawing drawing(const std::vector<std::string>& w, const SimPart& part) {
        // drawing NAME metric A0..A4 | english A..J | custom HEIGHT LENGTH, then options
        if (w.size() < 4) {
            fail("expected: drawing NAME metric CODE | english CODE | custom HEIGHT LENGTH");
        }
        SimDrawing d;
        d.line = m_line;
        d.name = w[1];
        for (const SimDrawing& other : part.drawings) {
            if (other.name == d.name) {
                fail("drawing " + d.name + " is given twice");
            }
        }
        std::size_t next = 4;
        if (w[2] == "metric") {
            d.sizeState = 0;
            d.units = 1;
            d.sizeCode = code(w[3], kMetricNames, 5, "A0 to A4");
            std::tie(d.height, d.length) = kMetric[d.sizeCode - 1];
        } else if (w[2] == "english") {
            d.sizeState = 1;
            d.units = 2;
            d.sizeCode = code(w[3], kEnglishNames, 8, "A, B, C, D, E, F, H or J");
            std::tie(d.height, d.length) = kEnglish[d.sizeCode - 1];
        } else if (w[2] == "custom") {
            if (w.size() < 5) {
                fail("expected: drawing NAME custom HEIGHT LENGTH");
            }
            d.sizeState = 2;
            d.units = part.units;
            d.height = number(w[3]);
            d.length = number(w[4]);
            if (d.height <= 0 || d.length <= 0) {
                fail("a custom size must be positive");
            }
            next = 5;
        } else {
            fail("size must be metric, english or custom, not \"" + w[2] + "\"");
        }
        for (; next < w.size(); next += 2) {
            if (next + 1 >= w.size()) {
                fail("option \"" + w[next] + "\" needs a value");
            }
            const std::string& option = w[next];
            const std::string& value = w[next + 1];
            if (option == "units") {
                d.units = units(value);
            } else if (option == "scale") {
                d.scale = number(value);
                if (d.scale <= 0) {
                    fail("scale must be positive");
                }
            } else if (option == "projection") {
                if (value == "third") {
                    d.projection = 1;
                } else if (value == "first") {
                    d.projection = 2;
                } else {
                    fail("projection must be first or third, not \"" + value + "\"");
                }
            } else {
                fail("unknown drawing option \"" + option + "\" (units, scale, projection)");
            }
        }
        return d;
    }

    int code(const std::string& word, const char* const* names, int count,
             const char* allowed) const {
        for (int i = 0; i < count; ++i) {
            if (word == names[i]) {
                return i + 1;
            }
        }
        fail("unknown size \"" + word + "\" (" + allowed + ")");
    }

private:
    fs::path m_file;
    int m_line = 0;
    std::vector<int> m_tagLines; ///< by tag: the line that gave it, 0 while unused
};

} // namespace

const SimObject* SimPart::object(unsigned int objectTag) const {
    for (const SimObject& o : objects) {
        if (o.tag == objectTag) {
            return &o;
        }
    }
    return nullptr;
}

std::pair<double, double> metricSheetSize(int code) {
    if (code < 1 || code > 5) {
        throw std::out_of_range("metric sheet size code " + std::to_string(code));
    }
    return kMetric[code - 1];
}

std::pair<double, double> englishSheetSize(int code) {
    if (code < 1 || code > 8) {
        throw std::out_of_range("English sheet size code " + std::to_string(code));
    }
    return kEnglish[code - 1];
}

SimPart parsePartFile(const std::string& text, const fs::path& file) {
    return Parser(file).parse(text);
}

SimPart readPartFile(const fs::path& file) {
    std::string text;
    try {
        text = detail::readRegularFile(file, detail::kMaxPartBytes, "a part");
    } catch (const detail::UnreadableFile& error) {
        throw PartFileError(file.string() + ": " + error.what());
    }
    return parsePartFile(text, file);
}

} // namespace nxsim
