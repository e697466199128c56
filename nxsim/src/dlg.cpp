#include <nxsim/dlg.h>

#include "regular_file.h"

#include <boost/filesystem/operations.hpp>
#include <pugixml.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace fs = boost::filesystem;

namespace nxsim {

namespace {

struct KindInfo {
    ItemKind kind;
    const char* element;
    const char* description;
};

const KindInfo kKinds[] = {
    {ItemKind::PushButton, "button", "push button"},
    {ItemKind::SingleSelectList, "list", "single select list"},
    {ItemKind::OptionMenu, "option", "option menu"},
    {ItemKind::StringItem, "string", "string item"},
    {ItemKind::WideString, "widestring", "wide string"},
    {ItemKind::MultiTextBox, "multitext", "multi-line text box"},
    {ItemKind::RadioBox, "radio", "radio box"},
    {ItemKind::IntegerItem, "integer", "integer item"},
    {ItemKind::RealItem, "real", "real item"},
    {ItemKind::Toggle, "toggle", "toggle"},
    {ItemKind::ColorTool, "color", "colour tool"},
    {ItemKind::GroupBox, "group", "group box"},
    {ItemKind::LabelItem, "label", "label"},
    {ItemKind::TabControl, "tabs", "tab control"},
    {ItemKind::TabPage, "page", "tab page"},
    {ItemKind::Row, "row", "row"},
    {ItemKind::Dialog, "dialog", "dialog"},
};

const KindInfo& info(ItemKind kind) {
    for (const KindInfo& k : kKinds) {
        if (k.kind == kind) {
            return k;
        }
    }
    return kKinds[0];
}

// How deep elements may be nested in a dialog; real dialogs stay below ten.
const int kMaxDepth = 64;

// Maps byte offsets of the buffer to 1-based line numbers.
class LineIndex {
public:
    explicit LineIndex(const std::string& text) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n') {
                m_breaks.push_back(i);
            }
        }
    }
    int line(std::ptrdiff_t offset) const {
        if (offset < 0) {
            return 0;
        }
        auto it =
            std::lower_bound(m_breaks.begin(), m_breaks.end(), static_cast<std::size_t>(offset));
        return static_cast<int>(it - m_breaks.begin()) + 1;
    }

private:
    std::vector<std::size_t> m_breaks;
};

class Reader {
public:
    Reader(const std::string& text, const fs::path& file) : m_lines(text), m_file(file) {}

    // Escaped, so that a control character of the file cannot rewrite the terminal it is shown on.
    [[noreturn]] void fail(int line, const std::string& reason) const {
        throw DlgError(
            detail::visibleText(m_file.string() + ":" + std::to_string(line) + ": " + reason));
    }

    int lineOf(const pugi::xml_node& node) const { return m_lines.line(node.offset_debug()); }

    bool flag(const pugi::xml_node& node, const char* name, bool fallback) const {
        pugi::xml_attribute a = node.attribute(name);
        if (!a) {
            return fallback;
        }
        std::string v = a.value();
        if (v == "yes") {
            return true;
        }
        if (v == "no") {
            return false;
        }
        fail(lineOf(node),
             std::string("attribute ") + name + " must be yes or no, not \"" + v + "\"");
    }

    int number(const pugi::xml_node& node, const char* name) const {
        pugi::xml_attribute a = node.attribute(name);
        if (!a) {
            return 0;
        }
        std::string v = a.value();
        char* end = nullptr;
        errno = 0;
        long n = std::strtol(v.c_str(), &end, 10);
        if (v.empty() || *end != '\0' || errno != 0 || n < 0 || n > 10000) {
            fail(lineOf(node), std::string("attribute ") + name +
                                   " must be a number from 0 to 10000, not \"" + v + "\"");
        }
        return static_cast<int>(n);
    }

    void checkAttributes(const pugi::xml_node& node, std::set<std::string> allowed) const {
        for (pugi::xml_attribute a : node.attributes()) {
            if (!allowed.count(a.name())) {
                fail(lineOf(node),
                     std::string("<") + node.name() + "> has no attribute " + a.name());
            }
        }
    }

    void checkValue(const DlgElement& e) const {
        if (e.value.empty()) {
            return;
        }
        const std::string& v = e.value;
        char* end = nullptr;
        errno = 0;
        switch (e.kind) {
        case ItemKind::IntegerItem:
        case ItemKind::ColorTool: {
            long n = std::strtol(v.c_str(), &end, 10);
            if (*end != '\0' || errno != 0 || n < -2147483647 || n > 2147483647) {
                fail(e.line, "value \"" + v + "\" is not an integer");
            }
            break;
        }
        case ItemKind::RealItem:
            std::strtod(v.c_str(), &end);
            if (*end != '\0' || errno != 0) {
                fail(e.line, "value \"" + v + "\" is not a number");
            }
            break;
        case ItemKind::Toggle:
            if (v != "on" && v != "off") {
                fail(e.line, "value of a toggle must be on or off, not \"" + v + "\"");
            }
            break;
        case ItemKind::OptionMenu:
        case ItemKind::RadioBox: {
            long n = std::strtol(v.c_str(), &end, 10);
            if (*end != '\0' || errno != 0 || n < -1 || n >= static_cast<long>(e.entries.size())) {
                fail(e.line, "value \"" + v + "\" is not the index of an entry (0 to " +
                                 std::to_string(static_cast<long>(e.entries.size()) - 1) + ")");
            }
            break;
        }
        default:
            break;
        }
    }

    // `depth` counts the elements around this one; the tree is read, kept and laid out
    // recursively, so a bound keeps a damaged file from exhausting the stack.
    DlgElement element(const pugi::xml_node& node, ItemKind parentKind, int depth) {
        DlgElement e;
        e.line = lineOf(node);
        if (depth >= kMaxDepth) {
            fail(e.line, "elements are nested more than " + std::to_string(kMaxDepth) + " deep");
        }
        const std::string tag = node.name();
        const KindInfo* found = nullptr;
        for (const KindInfo& k : kKinds) {
            if (tag == k.element && k.kind != ItemKind::Dialog) {
                found = &k;
            }
        }
        if (!found) {
            fail(e.line, "unknown element <" + tag + ">");
        }
        e.kind = found->kind;
        if (parentKind == ItemKind::TabControl && e.kind != ItemKind::TabPage) {
            fail(e.line, "a <tabs> element holds only <page> elements, not <" + tag + ">");
        }
        if (e.kind == ItemKind::TabPage && parentKind != ItemKind::TabControl) {
            fail(e.line, "<page> must be inside <tabs>");
        }

        std::set<std::string> allowed = {"name", "label", "tooltip", "sensitive", "visible"};
        switch (e.kind) {
        case ItemKind::SingleSelectList:
            allowed.insert({"rows", "width"});
            break;
        case ItemKind::MultiTextBox:
            allowed.insert({"rows", "width"});
            break;
        case ItemKind::StringItem:
        case ItemKind::WideString:
        case ItemKind::IntegerItem:
        case ItemKind::RealItem:
            allowed.insert({"value", "width"});
            break;
        case ItemKind::OptionMenu:
        case ItemKind::RadioBox:
        case ItemKind::Toggle:
        case ItemKind::ColorTool:
            allowed.insert("value");
            break;
        case ItemKind::Row:
            allowed = {};
            break;
        default:
            break;
        }
        checkAttributes(node, allowed);

        e.name = node.attribute("name").value();
        e.label = node.attribute("label").value();
        e.tooltip = node.attribute("tooltip").value();
        e.value = node.attribute("value").value();
        e.sensitive = flag(node, "sensitive", true);
        e.visible = flag(node, "visible", true);
        e.rows = number(node, "rows");
        e.width = number(node, "width");
        if (e.name.empty() && isBindable(e.kind) && e.kind != ItemKind::LabelItem &&
            e.kind != ItemKind::GroupBox) {
            fail(e.line, "<" + tag + "> needs a name");
        }
        if (!e.name.empty()) {
            auto [it, inserted] = m_names.emplace(e.name, e.line);
            if (!inserted) {
                fail(e.line, "the name " + e.name + " is used twice (first on line " +
                                 std::to_string(it->second) + ")");
            }
        }

        const bool container = e.kind == ItemKind::GroupBox || e.kind == ItemKind::TabControl ||
                               e.kind == ItemKind::TabPage || e.kind == ItemKind::Row;
        const bool hasEntries = e.kind == ItemKind::OptionMenu || e.kind == ItemKind::RadioBox ||
                                e.kind == ItemKind::SingleSelectList;
        for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
            if (child.type() == pugi::node_comment) {
                continue;
            }
            if (child.type() != pugi::node_element) {
                if (std::string(child.value()).find_first_not_of(" \t\r\n") != std::string::npos) {
                    fail(lineOf(child.type() == pugi::node_element ? child : node),
                         "<" + tag + "> holds text; use attributes or child elements");
                }
                continue;
            }
            std::string childTag = child.name();
            if (hasEntries && childTag == "entry") {
                checkAttributes(child, {"sensitive"});
                e.entries.push_back(child.child_value());
                e.entrySensitive.push_back(flag(child, "sensitive", true));
            } else if (e.kind == ItemKind::MultiTextBox && childTag == "line") {
                checkAttributes(child, {});
                e.entries.push_back(child.child_value());
            } else if (container) {
                e.children.push_back(element(child, e.kind, depth + 1));
            } else {
                fail(lineOf(child), "<" + childTag + "> is not allowed inside <" + tag + ">");
            }
        }
        if (e.kind == ItemKind::SingleSelectList || e.kind == ItemKind::MultiTextBox) {
            for (std::size_t i = 0; i < e.entrySensitive.size(); ++i) {
                if (!e.entrySensitive[i]) {
                    fail(e.line, "entries of a list cannot be insensitive");
                }
            }
        }
        checkValue(e);
        return e;
    }

    DialogLayout read(const std::string& text) {
        pugi::xml_document doc;
        pugi::xml_parse_result result =
            doc.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
        if (!result) {
            fail(m_lines.line(result.offset),
                 std::string("malformed XML: ") + result.description());
        }
        pugi::xml_node root = doc.document_element();
        if (std::string(root.name()) != "dialog") {
            fail(lineOf(root),
                 "the root element must be <dialog>, not <" + std::string(root.name()) + ">");
        }
        checkAttributes(root, {"format", "name", "title", "buttons", "width"});
        std::string format = root.attribute("format").value();
        if (format != "1") {
            fail(lineOf(root), format.empty() ? "<dialog> needs format=\"1\""
                                              : "unsupported format \"" + format + "\"");
        }

        DialogLayout layout;
        layout.path = m_file;
        layout.fileName = m_file.filename().string();
        layout.name = root.attribute("name").value();
        layout.title = root.attribute("title").value();
        layout.width = number(root, "width");
        if (pugi::xml_attribute buttons = root.attribute("buttons")) {
            layout.navigation = DlgNavigation{false, false, false, false};
            std::istringstream words(buttons.value());
            std::string word;
            while (words >> word) {
                if (word == "ok") {
                    layout.navigation.ok = true;
                } else if (word == "apply") {
                    layout.navigation.apply = true;
                } else if (word == "back") {
                    layout.navigation.back = true;
                } else if (word == "cancel") {
                    layout.navigation.cancel = true;
                } else {
                    fail(lineOf(root),
                         "unknown navigation button \"" + word + "\" (ok, apply, back, cancel)");
                }
            }
        }
        for (pugi::xml_node child = root.first_child(); child; child = child.next_sibling()) {
            if (child.type() == pugi::node_element) {
                layout.elements.push_back(element(child, ItemKind::Dialog, 0));
            } else if (child.type() == pugi::node_pcdata &&
                       std::string(child.value()).find_first_not_of(" \t\r\n") !=
                           std::string::npos) {
                fail(lineOf(root), "<dialog> holds text; use child elements");
            }
        }
        return layout;
    }

private:
    LineIndex m_lines;
    fs::path m_file;
    std::map<std::string, int> m_names;
};

const DlgElement* findIn(const std::vector<DlgElement>& elements, const std::string& name) {
    for (const DlgElement& e : elements) {
        if (e.name == name) {
            return &e;
        }
        if (const DlgElement* inner = findIn(e.children, name)) {
            return inner;
        }
    }
    return nullptr;
}

std::vector<fs::path>& explicitResourcePath() {
    static std::vector<fs::path> path;
    return path;
}

bool& resourcePathSet() {
    static bool set = false;
    return set;
}

} // namespace

const char* kindDescription(ItemKind kind) {
    return info(kind).description;
}

const char* kindElementName(ItemKind kind) {
    return info(kind).element;
}

bool isBindable(ItemKind kind) {
    return kind != ItemKind::TabControl && kind != ItemKind::TabPage && kind != ItemKind::Row &&
           kind != ItemKind::Dialog;
}

std::string DialogLayout::journalName() const {
    return name.empty() ? fileName : name;
}

const DlgElement* DialogLayout::find(const std::string& itemName) const {
    if (itemName.empty()) {
        return nullptr;
    }
    return findIn(elements, itemName);
}

DialogLayout parseDialogLayout(const std::string& text, const fs::path& file) {
    return Reader(text, file).read(text);
}

DialogLayout readDialogLayout(const fs::path& file) {
    std::string text;
    try {
        text = detail::readRegularFile(file, detail::kMaxDialogBytes, "a dialog resource file");
    } catch (const detail::UnreadableFile& error) {
        throw DlgError(file.string() + ":0: " + error.what());
    }
    return parseDialogLayout(text, file);
}

std::vector<fs::path> resourcePath() {
    if (resourcePathSet()) {
        return explicitResourcePath();
    }
    std::vector<fs::path> dirs;
    const char* env = std::getenv("QORFMT_RESOURCE_PATH");
    if (!env) {
        return dirs;
    }
    std::string value = env;
    std::size_t start = 0;
    while (start <= value.size()) {
        std::size_t colon = value.find(':', start);
        if (colon == std::string::npos) {
            colon = value.size();
        }
        std::string part = value.substr(start, colon - start);
        if (!part.empty()) {
            dirs.emplace_back(part);
        }
        start = colon + 1;
    }
    return dirs;
}

void setResourcePath(const std::vector<fs::path>& directories) {
    explicitResourcePath() = directories;
    resourcePathSet() = true;
}

fs::path findDialogResource(const std::string& name) {
    if (name.empty()) {
        return {};
    }
    fs::path given(name);
    if (given.is_absolute() || given.has_parent_path()) {
        boost::system::error_code ec;
        return fs::exists(given, ec) ? given : fs::path();
    }
    for (const fs::path& dir : resourcePath()) {
        boost::system::error_code ec;
        fs::path candidate = dir / given;
        // Whatever is there is taken: the reader names a FIFO or a folder for what it is.
        if (fs::exists(candidate, ec)) {
            return candidate;
        }
    }
    return {};
}

} // namespace nxsim
