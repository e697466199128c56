#include "document_tree.h"

#include "input.h"
#include "site.h"
#include "text_diff.h"

#include "model/document_error.h"
#include "model/fordef_format.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <map>

using namespace QorBorder;

namespace QorfmtCli {

namespace {

// How each element of the format is matched and named. `text` is how people read it: {0} and
// {1} stand for the values of the key attributes.
struct ElementKind {
    const char* element;
    std::vector<const char*> keys;
    const char* text;
    const char* listOwner; ///< attribute that splits the list by owner, or nullptr
    bool ordered;
};

const std::vector<ElementKind>& elementKinds() {
    static const std::vector<ElementKind> kinds = {
        {"border", {"id"}, "border \"{0}\"", nullptr, true},
        {"bottomLeft", {}, "bottom left corner", nullptr, true},
        {"topRight", {}, "top right corner", nullptr, true},
        {"coreRequiredBlock", {"id"}, "core required block \"{0}\"", nullptr, true},
        {"sheet1RequiredBlock", {"id"}, "sheet 1 required block \"{0}\"", nullptr, true},
        {"secondLanguage", {"name"}, "second language \"{0}\"", nullptr, true},
        {"drawingSize", {"name"}, "drawing size \"{0}\"", nullptr, true},
        {"block", {"id"}, "block \"{0}\"", nullptr, true},
        {"field", {"id"}, "field \"{0}\"", nullptr, true},
        {"choice", {"lookupKey"}, "choice \"{0}\"", nullptr, true},
        {"style", {"id"}, "style \"{0}\"", nullptr, true},
        {"placement", {"field"}, "placement of field \"{0}\"", nullptr, false},
        {"tableColumn",
         {"rowType", "field"},
         "table column of row type \"{0}\" and field \"{1}\"",
         nullptr,
         false},
        {"table", {}, "table", nullptr, true},
        {"rowType", {"id"}, "row type \"{0}\"", nullptr, true},
        {"dialogField", {"id"}, "dialog list field \"{0}\"", nullptr, true},
        {"typeManagerChoice", {"index"}, "type manager choice {0}", nullptr, false},
        {"symbolType", {"dialogText"}, "symbol type \"{0}\"", nullptr, true},
        {"line1Field", {"id"}, "line 1 field \"{0}\"", nullptr, true},
        {"line2Field", {"id"}, "line 2 field \"{0}\"", nullptr, true},
        {"location", {"blockId", "id"}, "location \"{1}\" of block \"{0}\"", "blockId", true},
        {"translation", {"key"}, "translation \"{0}\"", nullptr, false},
    };
    return kinds;
}

const ElementKind* kindOf(const std::string& element) {
    for (const ElementKind& kind : elementKinds()) {
        if (element == kind.element) {
            return &kind;
        }
    }
    return nullptr;
}

std::string attributeOr(const TreeNode& node, const char* name) {
    const std::string* value = node.attribute(name);
    return value ? *value : std::string();
}

// Line numbers from byte offsets.
class LineTable {
public:
    LineTable(const char* data, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            if (data[i] == '\n') {
                m_newlines.push_back(static_cast<std::ptrdiff_t>(i));
            }
        }
    }
    int of(std::ptrdiff_t offset) const {
        return 1 + static_cast<int>(std::lower_bound(m_newlines.begin(), m_newlines.end(), offset) -
                                    m_newlines.begin());
    }

private:
    std::vector<std::ptrdiff_t> m_newlines;
};

// Gives each child its list and its key; the N-th child with a key already seen in its list
// gets "#N".
void identifyChildren(TreeNode& node) {
    std::map<std::pair<std::string, std::string>, int> seen;
    for (TreeNode& child : node.children) {
        const ElementKind* kind = kindOf(child.element);
        child.list = child.element;
        std::string key;
        if (kind) {
            if (kind->listOwner) {
                child.list += "\n" + attributeOr(child, kind->listOwner);
            }
            child.ordered = kind->ordered;
            for (std::size_t i = 0; i < kind->keys.size(); ++i) {
                key += (i ? "\n" : "") + attributeOr(child, kind->keys[i]);
            }
        }
        const int count = ++seen[{child.list, key}];
        child.key = count == 1 ? key : key + "#" + std::to_string(count);
    }
}

TreeNode buildNode(pugi::xml_node node, const LineTable* lines) {
    TreeNode result;
    result.element = node.name();
    result.line = lines ? lines->of(node.offset_debug()) : 0;
    for (pugi::xml_attribute attribute : node.attributes()) {
        result.attributes.emplace_back(attribute.name(), attribute.value());
    }
    for (pugi::xml_node child : node.children()) {
        if (child.type() != pugi::node_element) {
            continue;
        }
        if (std::strcmp(child.name(), Fordef::kRawElement) == 0) {
            // A value XML cannot carry: it is the attribute's value here.
            std::string bytes;
            Fordef::fromHex(child.attribute("hex").value(), bytes);
            const std::string name = child.attribute("attribute").value();
            for (auto& attribute : result.attributes) {
                if (attribute.first == name) {
                    attribute.second = bytes;
                }
            }
            continue;
        }
        result.children.push_back(buildNode(child, lines));
    }
    identifyChildren(result);
    return result;
}

// Takes the lines of `source` (the file as written) for the same elements of `target`.
void takeLines(TreeNode& target, const TreeNode& source) {
    target.line = source.line;
    std::map<std::pair<std::string, std::string>, const TreeNode*> byKey;
    for (const TreeNode& child : source.children) {
        byKey.emplace(std::make_pair(child.list, child.key), &child);
    }
    for (TreeNode& child : target.children) {
        const auto found = byKey.find({child.list, child.key});
        if (found != byKey.end()) {
            takeLines(child, *found->second);
        }
    }
}

TreeNode parseTree(const std::string& xml, const LineTable* lines, const std::string& name) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
    if (!parsed) {
        throw InputError(name + ": " + parsed.description());
    }
    return buildNode(document.document_element(), lines);
}

void appendEscaped(std::string& out, const std::string& value) {
    for (const char c : value) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\t':
            out += "&#9;";
            break;
        case '\n':
            out += "&#10;";
            break;
        case '\r':
            out += "&#13;";
            break;
        default:
            out += c;
        }
    }
}

void appendNode(std::string& out, const TreeNode& node) {
    out += '<' + node.element;
    std::string raw;
    for (const auto& attribute : node.attributes) {
        out += ' ' + attribute.first + "=\"";
        if (Fordef::isXmlSafe(attribute.second)) {
            appendEscaped(out, attribute.second);
        } else {
            raw += std::string("<") + Fordef::kRawElement + " attribute=\"" + attribute.first +
                   "\" hex=\"" + Fordef::toHex(attribute.second) + "\"/>\n";
        }
        out += '"';
    }
    if (raw.empty() && node.children.empty()) {
        out += "/>\n";
        return;
    }
    out += ">\n" + raw;
    for (const TreeNode& child : node.children) {
        appendNode(out, child);
    }
    out += "</" + node.element + ">\n";
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

} // namespace

const std::string* TreeNode::attribute(const std::string& name) const {
    for (const auto& entry : attributes) {
        if (entry.first == name) {
            return &entry.second;
        }
    }
    return nullptr;
}

bool TreeNode::sameContents(const TreeNode& other) const {
    if (element != other.element || attributes != other.attributes ||
        children.size() != other.children.size()) {
        return false;
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (!children[i].sameContents(other.children[i])) {
            return false;
        }
    }
    return true;
}

DocumentTree readDocumentTree(const std::string& file, const std::string& name) {
    DocumentTree tree;
    tree.file = name.empty() ? inputName(file) : name;
    DocumentInput input;
    try {
        input = readDocumentInput(file, nullptr, true);
    } catch (const InputError& e) {
        // The reader names the file it read; a caller's name for it replaces that.
        std::string message = e.what();
        if (!name.empty() && message.compare(0, file.size(), file) == 0) {
            message = name + message.substr(file.size());
        }
        throw InputError(message);
    }
    tree.root = parseTree(FordefWriter::toXml(*input.document), nullptr, tree.file);
    const LineTable lines(input.bytes.data(), input.bytes.size());
    takeLines(tree.root, parseTree(input.bytes, &lines, tree.file));
    tree.firstComment = firstCommentLine(input.bytes);
    return tree;
}

DocumentTree emptyDocumentTree(const std::string& name) {
    DocumentTree tree;
    tree.file = name;
    tree.root = parseTree(FordefWriter::toXml(DefinitionDocument("")), nullptr, name);
    return tree;
}

std::string canonicalXml(const TreeNode& root, const std::string& name) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    appendNode(xml, root);
    try {
        const boost::shared_ptr<DefinitionDocument> document =
            FordefReader::parse(xml.data(), xml.size(), name);
        return FordefWriter::toXml(*document);
    } catch (const DocumentError& e) {
        throw InputError(e.what());
    }
}

std::string describe(const TreeNode& node) {
    const ElementKind* kind = kindOf(node.element);
    if (!kind) {
        return node.element;
    }
    std::string text = kind->text;
    for (std::size_t i = 0; i < kind->keys.size(); ++i) {
        text = replaceAll(text, "{" + std::to_string(i) + "}", attributeOr(node, kind->keys[i]));
    }
    const std::size_t hash = node.key.rfind('#');
    if (hash != std::string::npos && node.key.find('\n', hash) == std::string::npos &&
        node.key.size() > hash + 1 &&
        std::all_of(node.key.begin() + static_cast<std::ptrdiff_t>(hash) + 1, node.key.end(),
                    [](char c) { return c >= '0' && c <= '9'; })) {
        // A key given twice: which of them.
        const std::string plain = node.key.substr(0, hash);
        std::string own;
        for (std::size_t i = 0; i < kind->keys.size(); ++i) {
            own += (i ? "\n" : "") + attributeOr(node, kind->keys[i]);
        }
        if (own == plain) {
            text += " (number " + node.key.substr(hash + 1) + ")";
        }
    }
    return text;
}

std::string describePath(const std::vector<const TreeNode*>& path) {
    std::string text;
    for (const TreeNode* node : path) {
        text += (text.empty() ? "" : " > ") + describe(*node);
    }
    return text.empty() ? "document" : text;
}

} // namespace QorfmtCli
