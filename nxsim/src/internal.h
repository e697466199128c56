#pragma once

#include <NXOpen/BasePart.hxx>
#include <NXOpen/NXException.hxx>

#include <memory>
#include <string>

namespace NXOpen::UIStyler {
class StylerItem;
}

namespace nxsim {
class RuntimeDialog;
class RuntimeItem;
} // namespace nxsim

namespace nxsim {
/// Reaches the stand-in's part behind an NX part object.
class PartAccess {
public:
    static SimPart& of(const NXOpen::BasePart& part) { return *part.m_part; }
};
} // namespace nxsim

namespace nxsim::detail {

inline SimPart& simPart(const NXOpen::BasePart& part) {
    return PartAccess::of(part);
}

struct ExceptionFactory {
    static NXOpen::NXException make(int code, const std::string& details);
};

/// The exception for `code` with the table's text followed by ": details".
[[noreturn]] inline void raise(int code, const std::string& details) {
    throw ExceptionFactory::make(code, details);
}

/// Logs the call and returns the injected error code for it, 0 when it is to work.
int enterCall(const char* call);
/// As enterCall, but throws NXException for an injected fault (NX Open methods).
void enterMethod(const char* call);

/// "a push button", "an option menu".
inline std::string withArticle(const std::string& noun) {
    bool vowel = !noun.empty() && std::string("aeiou").find(noun[0]) != std::string::npos;
    return (vowel ? "an " : "a ") + noun;
}

/// An object of the item's own UIStyler class (PushButton, ...) bound to it.
std::unique_ptr<NXOpen::UIStyler::StylerItem> makeItemObject(RuntimeItem* item);

/// The stack of shown dialogs.
void pushShown(RuntimeDialog* dialog);
void popShown(RuntimeDialog* dialog);

} // namespace nxsim::detail
