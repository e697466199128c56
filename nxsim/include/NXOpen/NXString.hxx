#pragma once
// Stand-in for the NX Open SDK header of the same name; it declares only what the program calls.

#include <string>

namespace NXOpen {

/// A text as NX Open passes it; narrow (UTF-8) throughout in the stand-in. Deliberately without
/// operator==, as in the SDK: compare GetText() results.
class NXString {
public:
    NXString() = default;
    NXString(const char* text) : m_text(text ? text : "") {}
    NXString(const std::string& text) : m_text(text) {}

    const char* GetText() const { return m_text.c_str(); }
    const char* GetLocaleText() const { return m_text.c_str(); }
    const char* GetUTF8Text() const { return m_text.c_str(); }

private:
    std::string m_text;
};

} // namespace NXOpen
