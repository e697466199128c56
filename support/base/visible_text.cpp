#include "base/visible_text.h"

#include <cstdio>

namespace Base {

namespace {

// The length of the UTF-8 sequence at `at` and its code point; 0 when the bytes there are not
// one well-formed sequence.
std::size_t utf8Sequence(const std::string& text, std::size_t at, unsigned long& code) {
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    std::size_t length = 0;
    unsigned long minimum = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1F;
        minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0F;
        minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07;
        minimum = 0x10000;
    } else {
        return 0;
    }
    if (at + length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            return 0;
        }
        code = (code << 6) | (byte(at + i) & 0x3F);
    }
    if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        return 0;
    }
    return length;
}

bool invisible(unsigned long code) {
    return code == 0xFEFF || code == 0x00A0 || code == 0x00AD ||
           (code >= 0x0080 && code < 0x00A0) || (code >= 0x2000 && code <= 0x200F) ||
           code == 0x2028 || code == 0x2029 || code == 0x202F || code == 0x2060 || code == 0x3000;
}

} // namespace

std::string visibleText(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    char escaped[16];
    for (std::size_t i = 0; i < text.size();) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == '\\') {
            out += "\\\\";
            ++i;
        } else if (c == '\t') {
            out += "\\t";
            ++i;
        } else if (c == '\n') {
            out += "\\n";
            ++i;
        } else if (c == '\r') {
            out += "\\r";
            ++i;
        } else if (c < 0x20 || c == 0x7F) {
            std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
            out += escaped;
            ++i;
        } else if (c < 0x80) {
            out += static_cast<char>(c);
            ++i;
        } else {
            unsigned long code = 0;
            const std::size_t length = utf8Sequence(text, i, code);
            if (length == 0) {
                std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
                out += escaped;
                ++i;
            } else if (invisible(code)) {
                std::snprintf(escaped, sizeof escaped, "\\u%04lX", code);
                out += escaped;
                i += length;
            } else {
                out.append(text, i, length);
                i += length;
            }
        }
    }
    return out;
}

} // namespace Base
