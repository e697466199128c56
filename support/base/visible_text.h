#pragma once

#include <string>

namespace Base {

/// `text` for a message, with what a reader cannot see spelled out: control characters as
/// "\xNN" (tab, line feed and carriage return as "\t", "\n", "\r"), bytes that are not UTF-8
/// as "\xNN", and the invisible characters (byte order mark, no-break and zero-width spaces,
/// line and paragraph separators) as "\uXXXX". A backslash is written twice.
std::string visibleText(const std::string& text);

} // namespace Base
