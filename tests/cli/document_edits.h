#pragma once

// Edits of a document's text, as an administrator makes them, for the diff and merge tables.

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TestEdits {

using Edit = std::function<std::string(const std::string&)>;

inline std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    while (start < text.size()) {
        const std::string::size_type end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

inline std::string joinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

inline std::size_t lineWith(const std::vector<std::string>& lines, const std::string& part) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].find(part) != std::string::npos) {
            return i;
        }
    }
    throw std::invalid_argument("no line holds " + part);
}

/// The first `from` replaced by `to`.
inline Edit replace(const std::string& from, const std::string& to) {
    return [=](const std::string& text) {
        const std::string::size_type at = text.find(from);
        if (at == std::string::npos) {
            throw std::invalid_argument("not in the document: " + from);
        }
        return text.substr(0, at) + to + text.substr(at + from.size());
    };
}

/// The line holding `part` taken out (an element written on one line).
inline Edit removeLine(const std::string& part) {
    return [=](const std::string& text) {
        std::vector<std::string> lines = splitLines(text);
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(lineWith(lines, part)));
        return joinLines(lines);
    };
}

/// The line holding `part` moved to just before the line holding `before`.
inline Edit moveLineBefore(const std::string& part, const std::string& before) {
    return [=](const std::string& text) {
        std::vector<std::string> lines = splitLines(text);
        const std::size_t from = lineWith(lines, part);
        const std::string line = lines[from];
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(from));
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(lineWith(lines, before)), line);
        return joinLines(lines);
    };
}

/// `line` put in before the line holding `before`.
inline Edit insertLineBefore(const std::string& line, const std::string& before) {
    return [=](const std::string& text) {
        std::vector<std::string> lines = splitLines(text);
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(lineWith(lines, before)), line);
        return joinLines(lines);
    };
}

inline std::string apply(std::string text, const std::vector<Edit>& edits) {
    for (const Edit& edit : edits) {
        text = edit(text);
    }
    return text;
}

} // namespace TestEdits
