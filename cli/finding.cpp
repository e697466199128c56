#include "finding.h"

#include <cstdio>

namespace QorfmtCli {

using QorLint::Finding;
using QorLint::severityName;

namespace {

// The length of the valid UTF-8 sequence at `i`, or 0 when the bytes there are not one.
std::size_t utf8Length(const std::string& text, std::size_t i) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    std::size_t length = 0;
    unsigned int code = 0;
    if (lead < 0x80) {
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        code = lead & 0x1Fu;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        code = lead & 0x0Fu;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        code = lead & 0x07u;
    } else {
        return 0;
    }
    if (i + length > text.size()) {
        return 0;
    }
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) {
            return 0;
        }
        code = (code << 6) | (byte(i + k) & 0x3Fu);
    }
    static const unsigned int smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        return 0;
    }
    return length;
}

} // namespace

std::string jsonString(const std::string& text) {
    std::string out = "\"";
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char>(c);
        const std::size_t length = utf8Length(text, i);
        if (length == 0) {
            out += "\\ufffd"; // JSON is UTF-8: a byte that is not stands as the replacement
            ++i;
            continue;
        }
        if (length > 1) {
            out.append(text, i, length);
            i += length;
            continue;
        }
        ++i;
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
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (byte < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

std::string formatJson(const std::vector<Finding>& findings) {
    if (findings.empty()) {
        return "[]\n";
    }
    std::string json = "[\n";
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const Finding& f = findings[i];
        json += "  {\"file\": " + jsonString(f.file) + ", \"line\": " + std::to_string(f.line) +
                ", \"severity\": " + jsonString(severityName(f.severity)) +
                ", \"message\": " + jsonString(f.message) + ", \"rule\": " + jsonString(f.rule) +
                "}" + (i + 1 < findings.size() ? ",\n" : "\n");
    }
    return json + "]\n";
}

} // namespace QorfmtCli
