#include "model/fordef_writer.h"

#include "model/document_error.h"
#include "model/fordef_format.h"

#include <boost/filesystem/operations.hpp>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

namespace fs = boost::filesystem;

namespace QorBorder {

namespace {

using namespace Fordef;

// A streaming XML writer: two blanks of indentation per level, one element per line, attributes
// in the order given. String attributes that XML cannot carry go into <raw> children.
class XmlOut {
public:
    XmlOut() { m_out.reserve(1 << 16); }

    void start(const char* name) {
        closeStartTag();
        indent();
        m_out += '<';
        m_out += name;
        m_stack.push_back(name);
        m_tagOpen = true;
    }

    void attribute(const char* name, const std::string& value) {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        if (isXmlSafe(value)) {
            escape(value);
        } else {
            m_raw.emplace_back(name, toHex(value));
        }
        m_out += '"';
    }
    void attribute(const char* name, const char* value) {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        m_out += value;
        m_out += '"';
    }
    void attribute(const char* name, long value) {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        appendInt(m_out, value);
        m_out += '"';
    }
    void attribute(const char* name, double value) {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        appendDouble(m_out, value);
        m_out += '"';
    }
    void attribute(const char* name, bool value) { attribute(name, value ? "true" : "false"); }

    template <class T>
    void attributes(const T& object, const std::vector<Attribute<T>>& table) {
        for (const Attribute<T>& a : table) {
            switch (a.kind) {
            case Kind::String:
                attribute(a.name, object.*a.text);
                break;
            case Kind::Int:
                attribute(a.name, static_cast<long>(object.*a.integer));
                break;
            case Kind::Double:
                attribute(a.name, object.*a.real);
                break;
            case Kind::Bool:
                attribute(a.name, object.*a.flag);
                break;
            }
        }
    }

    void end() {
        if (m_tagOpen && m_raw.empty()) {
            m_out += "/>\n";
            m_tagOpen = false;
            m_stack.pop_back();
            return;
        }
        closeStartTag();
        const char* name = m_stack.back();
        m_stack.pop_back();
        indent();
        m_out += "</";
        m_out += name;
        m_out += ">\n";
    }

    std::string take() { return std::move(m_out); }

private:
    void closeStartTag() {
        if (!m_tagOpen) {
            return;
        }
        m_out += ">\n";
        m_tagOpen = false;
        std::vector<std::pair<const char*, std::string>> raw;
        raw.swap(m_raw);
        for (const auto& entry : raw) {
            indent();
            m_out += '<';
            m_out += kRawElement;
            m_out += " attribute=\"";
            m_out += entry.first;
            m_out += "\" hex=\"";
            m_out += entry.second;
            m_out += "\"/>\n";
        }
    }

    void indent() { m_out.append(2 * m_stack.size(), ' '); }

    void escape(const std::string& value) {
        for (const char c : value) {
            switch (c) {
            case '&':
                m_out += "&amp;";
                break;
            case '<':
                m_out += "&lt;";
                break;
            case '>':
                m_out += "&gt;";
                break;
            case '"':
                m_out += "&quot;";
                break;
            case '\t':
                m_out += "&#9;";
                break;
            case '\n':
                m_out += "&#10;";
                break;
            case '\r':
                m_out += "&#13;";
                break;
            default:
                m_out += c;
            }
        }
    }

    std::string m_out;
    std::vector<const char*> m_stack;
    std::vector<std::pair<const char*, std::string>> m_raw;
    bool m_tagOpen = false;
};

void writeIdList(XmlOut& out, const char* element, const char* attribute,
                 const std::vector<std::string>& ids) {
    for (const std::string& id : ids) {
        out.start(element);
        out.attribute(attribute, id);
        out.end();
    }
}

void writePoint(XmlOut& out, const char* element, const Point3& point) {
    out.start(element);
    out.attributes(point, pointAttributes());
    out.end();
}

void writeBorder(XmlOut& out, const BorderLayout& border) {
    out.start("border");
    out.attributes(border, borderAttributes());
    writePoint(out, "bottomLeft", border.bottomLeft);
    writePoint(out, "topRight", border.topRight);
    writeIdList(out, "coreRequiredBlock", "id", border.coreRequiredBlocks);
    writeIdList(out, "sheet1RequiredBlock", "id", border.sheet1RequiredBlocks);
    writeIdList(out, "secondLanguage", "name", border.secondLanguages);
    for (const DrawingSize& size : border.drawingSizes()) {
        out.start("drawingSize");
        out.attributes(size, drawingSizeAttributes());
        out.end();
    }
    out.end();
}

void writeField(XmlOut& out, const Field& field) {
    out.start("field");
    out.attributes(field, fieldAttributes());
    for (const Choice& choice : field.choices()) {
        out.start("choice");
        out.attributes(choice, choiceAttributes());
        out.end();
    }
    out.end();
}

void writeStyle(XmlOut& out, const BlockStyle& style) {
    out.start("style");
    out.attributes(style, styleAttributes());
    for (const auto& entry : style.placements()) {
        out.start("placement");
        out.attribute("field", entry.first);
        out.attributes(entry.second, placementAttributes());
        out.end();
    }
    for (const auto& entry : style.tableColumns()) {
        out.start("tableColumn");
        out.attribute("rowType", entry.first.first);
        out.attribute("field", entry.first.second);
        out.attribute("column", static_cast<long>(entry.second));
        out.end();
    }
    out.end();
}

void writeRowType(XmlOut& out, const RowType& rowType) {
    out.start("rowType");
    out.attributes(rowType, rowTypeAttributes());
    for (const boost::shared_ptr<const Field>& field : rowType.fields()) {
        writeField(out, *field);
    }
    writeIdList(out, "dialogField", "id", rowType.dialogListFields());
    for (const auto& entry : rowType.typeManagerSettings()) {
        out.start("typeManagerChoice");
        out.attribute("index", static_cast<long>(entry.first));
        out.attributes(entry.second, typeManagerChoiceAttributes());
        out.end();
    }
    out.end();
}

void writeBlock(XmlOut& out, const BlockLayout& block) {
    out.start("block");
    out.attributes(block, blockAttributes());
    for (const boost::shared_ptr<const Field>& field : block.fields()) {
        writeField(out, *field);
    }
    for (const boost::shared_ptr<const BlockStyle>& style : block.styles()) {
        writeStyle(out, *style);
    }
    out.start("table");
    out.attribute("rowsCreated", block.getTable().rowsCreated);
    for (const boost::shared_ptr<const RowType>& rowType : block.getTable().rowTypes()) {
        writeRowType(out, *rowType);
    }
    out.end();
    for (const boost::shared_ptr<const SymbolType>& symbol : block.symbolTypes()) {
        out.start("symbolType");
        out.attributes(*symbol, symbolTypeAttributes());
        writeIdList(out, "line1Field", "id", symbol->line1FieldIds);
        writeIdList(out, "line2Field", "id", symbol->line2FieldIds);
        out.end();
    }
    out.end();
}

std::string errnoText(int error) {
    return std::strerror(error);
}

} // namespace

std::string FordefWriter::toXml(const DefinitionDocument& document) {
    XmlOut out;
    std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    out.start(kRootElement);
    out.attribute("version", static_cast<long>(kFormatVersion));
    for (const auto& border : document.borderLayoutTypes(AllUnits)) {
        writeBorder(out, *border);
    }
    for (const auto& block : document.blockLayouts(AllUnits)) {
        writeBlock(out, *block);
    }
    for (const auto& location : document.allBlockLocations()) {
        out.start("location");
        out.attributes(*location, locationAttributes());
        out.end();
    }
    for (const auto& entry : document.translations()) {
        out.start("translation");
        out.attribute("key", entry.first);
        out.attribute("text", entry.second);
        out.end();
    }
    out.end();
    return head + out.take();
}

void FordefWriter::write(const DefinitionDocument& document, const fs::path& file) {
    replaceFileAtomically(file, toXml(document));
}

void replaceFileAtomically(const fs::path& file, const std::string& content) {
    const std::string name = file.string();
    if (name.empty()) {
        throw DocumentError(name, 0, "the document has no file name");
    }
    fs::path target = file;
    boost::system::error_code ec;
    if (fs::is_symlink(target, ec)) {
        // Replace the file the link points to, not the link.
        const fs::path resolved = fs::canonical(target, ec);
        if (!ec) {
            target = resolved;
        }
    }
    if (fs::is_directory(target, ec)) {
        throw DocumentError(name, 0, "cannot save: it is a folder");
    }
    struct stat existing {};
    const bool exists = ::stat(target.c_str(), &existing) == 0;
    if (exists && ::access(target.c_str(), W_OK) != 0) {
        throw DocumentError(name, 0, "cannot save: the file is read-only");
    }

    fs::path folder = target.parent_path();
    if (folder.empty()) {
        folder = ".";
    }
    std::string temporary = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    const int fd = ::mkstemp(&temporary[0]);
    if (fd < 0) {
        const int error = errno;
        throw DocumentError(name, 0,
                            "cannot create a file in the folder " + folder.string() + ": " +
                                errnoText(error));
    }
    auto fail = [&](const std::string& what, int error) {
        ::close(fd);
        ::unlink(temporary.c_str());
        throw DocumentError(name, 0, what + ": " + errnoText(error));
    };
    const mode_t mode = exists ? (existing.st_mode & 07777) : [] {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        return static_cast<mode_t>(0666 & ~mask);
    }();
    if (::fchmod(fd, mode) != 0) {
        fail("cannot set the permissions of the new file", errno);
    }
    const char* data = content.data();
    std::size_t left = content.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, left);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            fail("cannot write", errno);
        }
        data += written;
        left -= static_cast<std::size_t>(written);
    }
    if (::fsync(fd) != 0) {
        fail("cannot flush to disk", errno);
    }
    if (::close(fd) != 0) {
        const int error = errno;
        ::unlink(temporary.c_str());
        throw DocumentError(name, 0, "cannot write: " + errnoText(error));
    }
    if (::rename(temporary.c_str(), target.c_str()) != 0) {
        const int error = errno;
        ::unlink(temporary.c_str());
        throw DocumentError(name, 0, "cannot replace the file: " + errnoText(error));
    }
    // Make the rename itself durable.
    const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

} // namespace QorBorder
