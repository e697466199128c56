// The .fordef reader: the document's bytes checked (forbidden characters, lines), parsed by
// pugixml, and the model built element by element, each refusal naming the file, the line and
// the reason. It is one file because the element readers share the line recorder, the attribute
// bindings and the order rules of the format, and a document is read in one pass over them.
#include "model/fordef_reader.h"

#include "model/document_error.h"
#include "model/fordef_format.h"

#include "base/regular_file.h"

#include <boost/make_shared.hpp>

#include <pugixml.hpp>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <sys/stat.h>
#include <vector>

namespace fs = boost::filesystem;

namespace QorBorder {

namespace {

using namespace Fordef;

// A reason found while walking the tree; the caller turns it into a DocumentError with a line.
struct ContentError {
    std::ptrdiff_t offset;
    std::string reason;
    std::string attribute = {}; ///< when the reason is about an attribute: its name
    int occurrence = 1;         ///< which of the attribute's occurrences in the start tag
};

[[noreturn]] void fail(pugi::xml_node node, const std::string& reason) {
    throw ContentError{node.offset_debug(), reason};
}

// An attribute's line is its own, not its element's: a start tag may span lines.
[[noreturn]] void failAttribute(pugi::xml_node node, const char* attribute,
                                const std::string& reason, int occurrence = 1) {
    throw ContentError{node.offset_debug(), reason, attribute, occurrence};
}

std::string quoted(const char* text) {
    return std::string("'") + text + "'";
}

// Notes the line of each element for a caller that asked for them; does nothing otherwise.
class LineRecorder {
public:
    LineRecorder(SourceLines* lines, const char* data, std::size_t size) : m_lines(lines) {
        if (m_lines) {
            for (std::size_t i = 0; i < size; ++i) {
                if (data[i] == '\n') {
                    m_newlines.push_back(static_cast<std::ptrdiff_t>(i));
                }
            }
        }
    }

    void object(pugi::xml_node node, const void* object) const {
        if (m_lines) {
            m_lines->record(object, lineOf(node));
        }
    }
    void entry(pugi::xml_node node, const void* owner, const std::string& key) const {
        if (m_lines) {
            m_lines->record(owner, node.name(), key, lineOf(node));
        }
    }
    void entry(pugi::xml_node node, const void* owner, std::size_t index) const {
        if (m_lines) {
            entry(node, owner, std::to_string(index));
        }
    }

    /// The document's own entries (translations) are recorded under this owner.
    const void* document = nullptr;

private:
    int lineOf(pugi::xml_node node) const {
        const std::ptrdiff_t offset = node.offset_debug();
        return 1 + static_cast<int>(std::lower_bound(m_newlines.begin(), m_newlines.end(), offset) -
                                    m_newlines.begin());
    }

    SourceLines* m_lines;
    std::vector<std::ptrdiff_t> m_newlines;
};

// Pointers to the members one element's attributes go to.
class Bindings {
public:
    template <class T>
    void add(T& object, const std::vector<Attribute<T>>& table) {
        for (const Attribute<T>& a : table) {
            switch (a.kind) {
            case Kind::String:
                push(a.name, a.kind, &(object.*a.text));
                break;
            case Kind::Int:
                push(a.name, a.kind, &(object.*a.integer));
                break;
            case Kind::Double:
                push(a.name, a.kind, &(object.*a.real));
                break;
            case Kind::Bool:
                push(a.name, a.kind, &(object.*a.flag));
                break;
            }
        }
    }
    void add(const char* name, std::string& target) { push(name, Kind::String, &target); }
    void add(const char* name, int& target) { push(name, Kind::Int, &target); }
    void add(const char* name, bool& target) { push(name, Kind::Bool, &target); }

    /// Reads every attribute of `node` (each must be bound, each bound one must be there), then
    /// the <raw> children that precede the others. Returns the first child after them.
    pugi::xml_node read(pugi::xml_node node) const {
        std::uint64_t seen = 0;
        int cursor = 0;
        for (pugi::xml_attribute attribute : node.attributes()) {
            const char* name = attribute.name();
            int index = -1;
            if (cursor < m_count && std::strcmp(m_items[cursor].name, name) == 0) {
                index = cursor;
            } else {
                for (int i = 0; i < m_count; ++i) {
                    if (std::strcmp(m_items[i].name, name) == 0) {
                        index = i;
                        break;
                    }
                }
            }
            if (index < 0) {
                failAttribute(node, name,
                              "unknown attribute " + quoted(name) + " of element " +
                                  quoted(node.name()));
            }
            const std::uint64_t bit = std::uint64_t(1) << index;
            if (seen & bit) {
                failAttribute(node, name,
                              "attribute " + quoted(name) + " of element " + quoted(node.name()) +
                                  " is given twice",
                              2);
            }
            seen |= bit;
            convert(node, m_items[index], attribute.value());
            cursor = index + 1;
        }
        for (int i = 0; i < m_count; ++i) {
            if (!(seen & (std::uint64_t(1) << i))) {
                fail(node, "missing attribute " + quoted(m_items[i].name) + " of element " +
                               quoted(node.name()));
            }
        }
        pugi::xml_node child = node.first_child();
        std::uint64_t rawSeen = 0;
        while (child && child.type() == pugi::node_element &&
               std::strcmp(child.name(), kRawElement) == 0) {
            readRaw(node, child, rawSeen);
            child = child.next_sibling();
        }
        return child;
    }

private:
    struct Binding {
        const char* name;
        Kind kind;
        void* target;
    };

    void push(const char* name, Kind kind, void* target) {
        m_items[m_count++] = {name, kind, target};
    }

    static void convert(pugi::xml_node node, const Binding& binding, const char* value) {
        bool ok = true;
        const char* expected = "";
        switch (binding.kind) {
        case Kind::String:
            static_cast<std::string*>(binding.target)->assign(value);
            break;
        case Kind::Int:
            ok = parseInt(value, *static_cast<int*>(binding.target));
            expected = "a 32-bit integer";
            break;
        case Kind::Double:
            ok = parseDouble(value, *static_cast<double*>(binding.target));
            expected = "a number";
            break;
        case Kind::Bool:
            ok = parseBool(value, *static_cast<bool*>(binding.target));
            expected = "true or false";
            break;
        }
        if (!ok) {
            failAttribute(node, binding.name,
                          "attribute " + quoted(binding.name) + " of element " +
                              quoted(node.name()) + " must be " + expected + ", not " +
                              quoted(value));
        }
    }

    void readRaw(pugi::xml_node owner, pugi::xml_node raw, std::uint64_t& rawSeen) const {
        if (raw.first_child()) {
            fail(raw, "element " + quoted(kRawElement) + " must be empty");
        }
        std::string attributeName;
        std::string hex;
        Bindings own;
        own.add("attribute", attributeName);
        own.add("hex", hex);
        own.read(raw);
        for (int i = 0; i < m_count; ++i) {
            if (attributeName == m_items[i].name && m_items[i].kind == Kind::String) {
                if (rawSeen & (std::uint64_t(1) << i)) {
                    fail(raw, "attribute " + quoted(attributeName.c_str()) + " has two raw values");
                }
                rawSeen |= std::uint64_t(1) << i;
                if (!fromHex(hex.c_str(), *static_cast<std::string*>(m_items[i].target))) {
                    failAttribute(raw, "hex",
                                  "the raw value of attribute " + quoted(attributeName.c_str()) +
                                      " is not an even number of hex digits");
                }
                return;
            }
        }
        fail(raw, "element " + quoted(owner.name()) + " has no text attribute " +
                      quoted(attributeName.c_str()));
    }

    static constexpr int kCapacity = 32;
    Binding m_items[kCapacity];
    int m_count = 0;
};

// The children of one element, checked against an ordered list of names (each either once or
// any number of times, each required or not), as the schema's sequences say.
class Sequence {
public:
    struct Rule {
        const char* name;
        bool required;
        bool many;
    };

    Sequence(pugi::xml_node parent, const Rule* rules, int count)
        : m_parent(parent), m_rules(rules), m_count(count) {}

    /// The rule index `child` matches, or -1 for a node to skip. Fails on anything out of place.
    int next(pugi::xml_node child) {
        if (child.type() != pugi::node_element) {
            if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
                fail(child, "unexpected text in element " + quoted(m_parent.name()));
            }
            return -1;
        }
        const char* name = child.name();
        int i = m_current < 0 ? 0 : m_current;
        if (m_current >= 0 && std::strcmp(m_rules[m_current].name, name) == 0) {
            if (!m_rules[m_current].many) {
                fail(child,
                     "element " + quoted(name) + " is given twice in " + quoted(m_parent.name()));
            }
            return m_current;
        }
        if (m_current >= 0) {
            ++i;
        }
        for (; i < m_count; ++i) {
            if (std::strcmp(m_rules[i].name, name) == 0) {
                m_current = i;
                return i;
            }
            if (m_rules[i].required && m_current < i) {
                fail(child, "missing element " + quoted(m_rules[i].name) + " in " +
                                quoted(m_parent.name()) + " before " + quoted(name));
            }
        }
        for (int j = 0; j < m_count; ++j) {
            if (std::strcmp(m_rules[j].name, name) == 0) {
                fail(child,
                     "element " + quoted(name) + " is out of order in " + quoted(m_parent.name()));
            }
        }
        fail(child, "unexpected element " + quoted(name) + " in " + quoted(m_parent.name()));
    }

    void finish() const {
        for (int i = m_current + 1; i < m_count; ++i) {
            if (m_rules[i].required) {
                fail(m_parent, "missing element " + quoted(m_rules[i].name) + " in " +
                                   quoted(m_parent.name()));
            }
        }
    }

private:
    pugi::xml_node m_parent;
    const Rule* m_rules;
    int m_count;
    int m_current = -1;
};

template <int N>
Sequence sequence(pugi::xml_node parent, const Sequence::Rule (&rules)[N]) {
    return Sequence(parent, rules, N);
}

void noChildren(pugi::xml_node node, pugi::xml_node first) {
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element) {
            fail(child,
                 "unexpected element " + quoted(child.name()) + " in " + quoted(node.name()));
        }
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            fail(child, "unexpected text in element " + quoted(node.name()));
        }
    }
}

template <class T>
void readLeaf(pugi::xml_node node, T& object, const std::vector<Attribute<T>>& table) {
    Bindings bindings;
    bindings.add(object, table);
    noChildren(node, bindings.read(node));
}

std::string readItem(pugi::xml_node node, const char* attribute) {
    std::string value;
    Bindings bindings;
    bindings.add(attribute, value);
    noChildren(node, bindings.read(node));
    return value;
}

// The start of reading an element that is an object of the model: the object, the line it
// stands on and its attributes. Returns the object; `first` is the element's first child.
template <class T>
boost::shared_ptr<T> readObject(pugi::xml_node node, const LineRecorder& lines,
                                const std::vector<Attribute<T>>& attributes,
                                pugi::xml_node& first) {
    const auto object = boost::make_shared<T>();
    lines.object(node, object.get());
    Bindings bindings;
    bindings.add(*object, attributes);
    first = bindings.read(node);
    return object;
}

boost::shared_ptr<Field> readField(pugi::xml_node node, const LineRecorder& lines) {
    pugi::xml_node first;
    const auto field = readObject<Field>(node, lines, fieldAttributes(), first);
    static const Sequence::Rule rules[] = {{"choice", false, true}};
    Sequence children = sequence(node, rules);
    std::vector<Choice> choices;
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        if (children.next(child) == 0) {
            lines.entry(child, field.get(), choices.size());
            choices.emplace_back();
            readLeaf(child, choices.back(), choiceAttributes());
        }
    }
    field->setTextChoices(std::move(choices));
    return field;
}

boost::shared_ptr<BlockStyle> readStyle(pugi::xml_node node, const LineRecorder& lines) {
    pugi::xml_node first;
    const auto style = readObject<BlockStyle>(node, lines, styleAttributes(), first);
    static const Sequence::Rule rules[] = {{"placement", false, true},
                                           {"tableColumn", false, true}};
    Sequence children = sequence(node, rules);
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        switch (children.next(child)) {
        case 0: {
            std::string field;
            FieldPlacement placement;
            Bindings entry;
            entry.add("field", field);
            entry.add(placement, placementAttributes());
            noChildren(child, entry.read(child));
            if (style->hasPlacement(field)) {
                fail(child, "field " + quoted(field.c_str()) + " is placed twice in style " +
                                quoted(style->id.c_str()));
            }
            style->setPlacement(field, placement);
            lines.entry(child, style.get(), field);
            break;
        }
        case 1: {
            std::string rowType;
            std::string field;
            int column = 0;
            Bindings entry;
            entry.add("rowType", rowType);
            entry.add("field", field);
            entry.add("column", column);
            noChildren(child, entry.read(child));
            if (style->hasTableColumn(rowType, field)) {
                fail(child, "the column of field " + quoted(field.c_str()) + " of row type " +
                                quoted(rowType.c_str()) + " is given twice");
            }
            style->setTableColumn(rowType, field, column);
            lines.entry(child, style.get(), rowType + '\n' + field);
            break;
        }
        default:
            break;
        }
    }
    return style;
}

boost::shared_ptr<RowType> readRowType(pugi::xml_node node, const LineRecorder& lines) {
    pugi::xml_node first;
    const auto rowType = readObject<RowType>(node, lines, rowTypeAttributes(), first);
    static const Sequence::Rule rules[] = {
        {"field", false, true}, {"dialogField", false, true}, {"typeManagerChoice", false, true}};
    Sequence children = sequence(node, rules);
    std::vector<std::string> dialogFields;
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        switch (children.next(child)) {
        case 0:
            rowType->appendField(readField(child, lines));
            break;
        case 1:
            lines.entry(child, rowType.get(), dialogFields.size());
            dialogFields.push_back(readItem(child, "id"));
            break;
        case 2: {
            int index = 0;
            TypeManagerChoiceSettings settings;
            Bindings entry;
            entry.add("index", index);
            entry.add(settings, typeManagerChoiceAttributes());
            noChildren(child, entry.read(child));
            if (rowType->typeManagerSettings().count(index) != 0) {
                fail(child, "type manager choice " + std::to_string(index) + " is given twice");
            }
            lines.entry(child, rowType.get(), std::to_string(index));
            rowType->setValidSymbolIndices(index, settings.validSymbolIndices);
            rowType->setDisabledFieldIds(index, settings.disabledFieldIds);
            break;
        }
        default:
            break;
        }
    }
    rowType->setDialogListFields(std::move(dialogFields));
    return rowType;
}

boost::shared_ptr<SymbolType> readSymbolType(pugi::xml_node node, const LineRecorder& lines) {
    pugi::xml_node first;
    const auto symbol = readObject<SymbolType>(node, lines, symbolTypeAttributes(), first);
    static const Sequence::Rule rules[] = {{"line1Field", false, true},
                                           {"line2Field", false, true}};
    Sequence children = sequence(node, rules);
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        switch (children.next(child)) {
        case 0:
            lines.entry(child, symbol.get(), symbol->line1FieldIds.size());
            symbol->line1FieldIds.push_back(readItem(child, "id"));
            break;
        case 1:
            lines.entry(child, symbol.get(), symbol->line2FieldIds.size());
            symbol->line2FieldIds.push_back(readItem(child, "id"));
            break;
        default:
            break;
        }
    }
    return symbol;
}

boost::shared_ptr<BlockLayout> readBlock(pugi::xml_node node, const LineRecorder& lines) {
    pugi::xml_node first;
    const auto block = readObject<BlockLayout>(node, lines, blockAttributes(), first);
    static const Sequence::Rule rules[] = {{"field", false, true},
                                           {"style", false, true},
                                           {"table", true, false},
                                           {"symbolType", false, true}};
    Sequence children = sequence(node, rules);
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        switch (children.next(child)) {
        case 0:
            block->addField(readField(child, lines));
            break;
        case 1:
            block->addStyle(readStyle(child, lines));
            break;
        case 2: {
            Table& table = block->getTable();
            Bindings own;
            own.add("rowsCreated", table.rowsCreated);
            static const Sequence::Rule tableRules[] = {{"rowType", false, true}};
            Sequence rows = sequence(child, tableRules);
            for (pugi::xml_node row = own.read(child); row; row = row.next_sibling()) {
                if (rows.next(row) == 0) {
                    table.addRowType(readRowType(row, lines));
                }
            }
            break;
        }
        case 3:
            block->addSymbolType(readSymbolType(child, lines));
            break;
        default:
            break;
        }
    }
    children.finish();
    return block;
}

boost::shared_ptr<BorderLayout> readBorder(pugi::xml_node node, const LineRecorder& lines) {
    pugi::xml_node first;
    const auto border = readObject<BorderLayout>(node, lines, borderAttributes(), first);
    static const Sequence::Rule rules[] = {
        {"bottomLeft", true, false},        {"topRight", true, false},
        {"coreRequiredBlock", false, true}, {"sheet1RequiredBlock", false, true},
        {"secondLanguage", false, true},    {"drawingSize", false, true}};
    Sequence children = sequence(node, rules);
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        switch (children.next(child)) {
        case 0:
            lines.entry(child, border.get(), "");
            readLeaf(child, border->bottomLeft, pointAttributes());
            break;
        case 1:
            lines.entry(child, border.get(), "");
            readLeaf(child, border->topRight, pointAttributes());
            break;
        case 2:
            lines.entry(child, border.get(), border->coreRequiredBlocks.size());
            border->coreRequiredBlocks.push_back(readItem(child, "id"));
            break;
        case 3:
            lines.entry(child, border.get(), border->sheet1RequiredBlocks.size());
            border->sheet1RequiredBlocks.push_back(readItem(child, "id"));
            break;
        case 4:
            lines.entry(child, border.get(), border->secondLanguages.size());
            border->secondLanguages.push_back(readItem(child, "name"));
            break;
        case 5: {
            lines.entry(child, border.get(), border->drawingSizes().size());
            DrawingSize size;
            readLeaf(child, size, drawingSizeAttributes());
            const ImpossibleValue impossible = impossibleValue(size);
            if (impossible.attribute) {
                failAttribute(child, impossible.attribute, impossible.reason);
            }
            border->addDrawingSize(size);
            break;
        }
        default:
            break;
        }
    }
    children.finish();
    return border;
}

bool isXmlSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Where in the start tag at `offset` the given occurrence of `attribute` begins; `offset` itself
// when it is not found.
std::size_t attributeOffset(const char* data, std::size_t size, std::size_t offset,
                            const std::string& attribute, int occurrence) {
    char quote = 0;
    for (std::size_t i = offset; i < size; ++i) {
        const char c = data[i];
        if (quote) {
            quote = c == quote ? 0 : quote;
            continue;
        }
        if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            break;
        } else if (isXmlSpace(c) && i + 1 + attribute.size() < size &&
                   attribute.compare(0, attribute.size(), data + i + 1, attribute.size()) == 0) {
            std::size_t after = i + 1 + attribute.size();
            while (after < size && isXmlSpace(data[after])) {
                ++after;
            }
            if (after < size && data[after] == '=' && --occurrence == 0) {
                return i + 1;
            }
        }
    }
    return offset;
}

int lineOf(const char* data, std::size_t size, const ContentError& error) {
    if (error.offset < 0) {
        return 1;
    }
    std::size_t end = std::min(size, static_cast<std::size_t>(error.offset));
    if (!error.attribute.empty()) {
        end = attributeOffset(data, size, end, error.attribute, error.occurrence);
    }
    return 1 + static_cast<int>(std::count(data, data + end, '\n'));
}

// XML 1.0 allows tab, line feed, carriage return and the characters from U+0020 on, except the
// surrogates and U+FFFE and U+FFFF.
bool xmlAllows(unsigned long code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

// Where the first control character XML forbids is, or `size`. Blocks without one, nearly all,
// are passed over by a loop the compiler turns into vector instructions.
std::size_t firstForbiddenControl(const char* data, std::size_t size) {
    constexpr std::size_t kBlock = 4096;
    for (std::size_t start = 0; start < size; start += kBlock) {
        const std::size_t end = std::min(size, start + kBlock);
        unsigned found = 0;
        for (std::size_t i = start; i < end; ++i) {
            const unsigned char c = static_cast<unsigned char>(data[i]);
            found |= static_cast<unsigned>(c < 0x20) & static_cast<unsigned>(c != '\t') &
                     static_cast<unsigned>(c != '\n') & static_cast<unsigned>(c != '\r');
        }
        if (found) {
            for (std::size_t i = start; i < end; ++i) {
                if (!xmlAllows(static_cast<unsigned char>(data[i]))) {
                    return i;
                }
            }
        }
    }
    return size;
}

// The parser would take a control character, or a reference to one such as "&#0;" (which cut
// the text short), where XML forbids it: refuse them rather than read a text that is not the
// file's. The first in the file is named.
void refuseForbiddenCharacters(const char* data, std::size_t size) {
    const std::size_t control = firstForbiddenControl(data, size);
    for (const char* at = static_cast<const char*>(std::memchr(data, '&', control)); at;
         at = static_cast<const char*>(
             std::memchr(at + 1, '&', control - static_cast<std::size_t>(at + 1 - data)))) {
        const std::size_t i = static_cast<std::size_t>(at - data);
        if (i + 2 >= size || data[i + 1] != '#') {
            continue;
        }
        std::size_t end = i + 2;
        const bool hex = data[end] == 'x';
        end += hex ? 1 : 0;
        unsigned long code = 0;
        std::size_t digits = 0;
        for (; end < size && digits < 9 && std::isxdigit(static_cast<unsigned char>(data[end]));
             ++end, ++digits) {
            const char d = data[end];
            if (!hex && !std::isdigit(static_cast<unsigned char>(d))) {
                break;
            }
            code = code * (hex ? 16 : 10) +
                   static_cast<unsigned long>(std::isdigit(static_cast<unsigned char>(d))
                                                  ? d - '0'
                                                  : std::tolower(d) - 'a' + 10);
        }
        if (digits > 0 && end < size && data[end] == ';' && !xmlAllows(code)) {
            throw ContentError{static_cast<std::ptrdiff_t>(i),
                               "character reference " +
                                   quoted(std::string(data + i, end + 1 - i).c_str()) +
                                   " names a character XML does not allow"};
        }
    }
    if (control < size) {
        char code[8];
        std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned char>(data[control]));
        throw ContentError{static_cast<std::ptrdiff_t>(control),
                           std::string("control character ") + code +
                               " is a character XML does not allow"};
    }
}

struct Contents {
    std::vector<boost::shared_ptr<BorderLayout>> borders;
    std::vector<boost::shared_ptr<BlockLayout>> blocks;
    std::vector<boost::shared_ptr<BlockLocation>> locations;
    DefinitionDocument::TranslationMap translations;
};

Contents readRoot(const pugi::xml_document& xml, const LineRecorder& lines) {
    const pugi::xml_node root = xml.document_element();
    if (!root) {
        throw ContentError{-1, "the file holds no XML element"};
    }
    if (std::strcmp(root.name(), kRootElement) != 0) {
        fail(root, "the root element is " + quoted(root.name()) + ", not " + quoted(kRootElement));
    }
    const pugi::xml_attribute versionAttribute = root.attribute("version");
    if (!versionAttribute) {
        fail(root, "missing attribute 'version' of element " + quoted(kRootElement));
    }
    int version = 0;
    if (!parseInt(versionAttribute.value(), version) || version != kFormatVersion) {
        fail(root, "format version " + quoted(versionAttribute.value()) +
                       " is not supported (this program reads version " +
                       std::to_string(kFormatVersion) + ")");
    }
    Bindings bindings;
    bindings.add("version", version);
    Contents contents;
    static const Sequence::Rule rules[] = {{"border", false, true},
                                           {"block", false, true},
                                           {"location", false, true},
                                           {"translation", false, true}};
    Sequence children = sequence(root, rules);
    for (pugi::xml_node child = bindings.read(root); child; child = child.next_sibling()) {
        switch (children.next(child)) {
        case 0:
            contents.borders.push_back(readBorder(child, lines));
            break;
        case 1:
            contents.blocks.push_back(readBlock(child, lines));
            break;
        case 2: {
            const auto location = boost::make_shared<BlockLocation>();
            lines.object(child, location.get());
            readLeaf(child, *location, locationAttributes());
            contents.locations.push_back(location);
            break;
        }
        case 3: {
            std::string key;
            std::string text;
            Bindings entry;
            entry.add("key", key);
            entry.add("text", text);
            noChildren(child, entry.read(child));
            lines.entry(child, lines.document, key);
            if (!contents.translations.emplace(std::move(key), std::move(text)).second) {
                fail(child, "the translation key is given twice");
            }
            break;
        }
        default:
            break;
        }
    }
    return contents;
}

// Parses `buffer` in place. On failure `pristine` gives the unmodified bytes for the line.
template <class Pristine>
Contents parseInPlace(char* buffer, std::size_t size, const std::string& fileName,
                      Pristine pristine, SourceLines* sourceLines, const void* document) {
    LineRecorder lines(sourceLines, buffer, size);
    lines.document = document;
    pugi::xml_document xml;
    try {
        refuseForbiddenCharacters(buffer, size);
        const pugi::xml_parse_result parsed =
            xml.load_buffer_inplace(buffer, size, pugi::parse_default, pugi::encoding_utf8);
        if (!parsed) {
            throw ContentError{parsed.offset,
                               std::string("malformed XML: ") + parsed.description()};
        }
        return readRoot(xml, lines);
    } catch (const ContentError& error) {
        const std::string original = pristine();
        throw DocumentError(fileName, lineOf(original.data(), original.size(), error),
                            error.reason);
    }
}

} // namespace

boost::shared_ptr<DefinitionDocument> FordefReader::read(const fs::path& file, SourceLines* lines) {
    const std::string name = file.string();
    std::string buffer;
    struct stat info {};
    try {
        buffer = Base::readRegularFile(file, Base::kMaxDocumentBytes, "a document", &info);
    } catch (const Base::UnreadableFile& error) {
        throw DocumentError(name, 0, error.what());
    }
    // What was read, to recognise a change by someone else when the document is saved.
    ContentHash hash;
    hash.update(buffer.data(), buffer.size());
    const FileState state = fileStateOf(info, buffer.size(), hash.value());
    auto pristine = [&file] {
        try {
            return Base::readRegularFile(file, Base::kMaxDocumentBytes, "a document");
        } catch (const Base::UnreadableFile&) {
            return std::string();
        }
    };
    const auto document = boost::make_shared<DefinitionDocument>(name);
    Contents contents =
        parseInPlace(&buffer[0], buffer.size(), name, pristine, lines, document.get());
    document->m_borderLayouts.assign(std::move(contents.borders));
    document->m_blockLayouts.assign(std::move(contents.blocks));
    document->m_blockLocations = std::move(contents.locations);
    document->m_translations = std::move(contents.translations);
    document->m_fileState = state;
    return document;
}

boost::shared_ptr<DefinitionDocument> FordefReader::parse(const char* data, std::size_t size,
                                                          const std::string& fileName,
                                                          SourceLines* lines) {
    std::string buffer(data, size);
    auto pristine = [data, size] { return std::string(data, size); };
    const auto document = boost::make_shared<DefinitionDocument>(fileName);
    Contents contents =
        parseInPlace(&buffer[0], buffer.size(), fileName, pristine, lines, document.get());
    document->m_borderLayouts.assign(std::move(contents.borders));
    document->m_blockLayouts.assign(std::move(contents.blocks));
    document->m_blockLocations = std::move(contents.locations);
    document->m_translations = std::move(contents.translations);
    return document;
}

} // namespace QorBorder
