#include "model/fordef_writer.h"

#include "model/document_error.h"
#include "model/fordef_format.h"

#include <cstring>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <future>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = boost::filesystem;

namespace QorBorder {

namespace {

using namespace Fordef;

// A streaming XML writer: two blanks of indentation per level, one element per line, attributes
// in the order given. String attributes that XML cannot carry go into <raw> children. Text is
// gathered in a plain buffer (many tiny appends; std::string's are too slow here) and handed to
// the sink in pieces of about 1 MB, or kept whole for take() when there is no sink. Each full
// piece goes to the sink on a thread of its own while the next is built, so that writing the
// file overlaps building its text; the last piece (for most documents the only one) goes in the
// caller's thread. One piece at a time is with the sink, in order.
class XmlOut {
public:
    using Sink = ChunkSink;

    explicit XmlOut(Sink sink = Sink()) : m_sink(std::move(sink)) { grow(kChunk + kChunk / 4); }

    void text(const char* value) { put(value, std::strlen(value)); }

    void start(const char* name) {
        closeStartTag();
        if (m_sink && m_size >= kChunk) {
            handOver();
        }
        indent();
        putChar('<');
        put(name, std::strlen(name));
        m_stack.push_back(name);
        m_tagOpen = true;
    }

    void attribute(const char* name, std::size_t nameLength, const std::string& value) {
        openValue(name, nameLength, value.size() * 6);
        if (!escape(value)) {
            m_raw.emplace_back(name, toHex(value));
        }
        putChar('"');
    }
    void attribute(const char* name, std::size_t nameLength, long value) {
        openValue(name, nameLength, 24);
        const std::to_chars_result result =
            std::to_chars(m_buffer.get() + m_size, m_buffer.get() + m_capacity, value);
        m_size = static_cast<std::size_t>(result.ptr - m_buffer.get());
        putChar('"');
    }
    void attribute(const char* name, std::size_t nameLength, double value) {
        openValue(name, nameLength, 32);
        if (std::isfinite(value)) {
            const std::to_chars_result result =
                std::to_chars(m_buffer.get() + m_size, m_buffer.get() + m_capacity, value);
            m_size = static_cast<std::size_t>(result.ptr - m_buffer.get());
        } else {
            const std::string special = formatDouble(value);
            put(special.data(), special.size());
        }
        putChar('"');
    }
    void attribute(const char* name, std::size_t nameLength, bool value) {
        openValue(name, nameLength, 5);
        if (value) {
            put("true", 4);
        } else {
            put("false", 5);
        }
        putChar('"');
    }
    template <class T>
    void attribute(const char* name, const T& value) {
        attribute(name, std::strlen(name), value);
    }

    template <class T>
    void attributes(const T& object, const std::vector<Attribute<T>>& table) {
        for (const Attribute<T>& a : table) {
            switch (a.kind) {
            case Kind::String:
                attribute(a.name, a.nameLength, object.*a.text);
                break;
            case Kind::Int:
                attribute(a.name, a.nameLength, static_cast<long>(object.*a.integer));
                break;
            case Kind::Double:
                attribute(a.name, a.nameLength, object.*a.real);
                break;
            case Kind::Bool:
                attribute(a.name, a.nameLength, object.*a.flag);
                break;
            }
        }
    }

    void end() {
        if (m_tagOpen && m_raw.empty()) {
            put("/>\n", 3);
            m_tagOpen = false;
            m_stack.pop_back();
            return;
        }
        closeStartTag();
        const char* name = m_stack.back();
        m_stack.pop_back();
        indent();
        put("</", 2);
        put(name, std::strlen(name));
        put(">\n", 2);
    }

    std::string take() { return std::string(m_buffer.get(), m_size); }

    /// Hands the last piece to the sink, after the pieces before it; rethrows what the sink
    /// threw for any of them.
    void flush() {
        waitForPending();
        if (m_sink && m_size > 0) {
            m_sink(m_buffer.get(), m_size);
            m_size = 0;
        }
    }

private:
    static constexpr std::size_t kChunk = 1 << 20;

    void handOver() {
        waitForPending();
        std::swap(m_buffer, m_spare);
        std::swap(m_capacity, m_spareCapacity);
        const char* data = m_spare.get();
        const std::size_t size = m_size;
        m_size = 0;
        if (!m_buffer) {
            grow(kChunk + kChunk / 4);
        }
        try {
            m_pending = std::async(std::launch::async, [this, data, size] { m_sink(data, size); });
        } catch (const std::system_error&) {
            // No thread to be had: the piece is written in this one.
            m_sink(data, size);
        }
    }
    void waitForPending() {
        if (m_pending.valid()) {
            m_pending.get();
        }
    }

    void grow(std::size_t needed) {
        const std::size_t capacity = std::max(needed, m_capacity * 2);
        std::unique_ptr<char[]> bigger(new char[capacity]);
        if (m_size > 0) {
            std::memcpy(bigger.get(), m_buffer.get(), m_size);
        }
        m_buffer = std::move(bigger);
        m_capacity = capacity;
    }
    void reserve(std::size_t more) {
        if (m_size + more > m_capacity) {
            grow(m_size + more);
        }
    }
    void put(const char* data, std::size_t length) {
        reserve(length);
        std::memcpy(m_buffer.get() + m_size, data, length);
        m_size += length;
    }
    void putChar(char c) {
        reserve(1);
        m_buffer[m_size++] = c;
    }
    // ` name="`, with room for `valueRoom` more bytes and the closing quote.
    void openValue(const char* name, std::size_t nameLength, std::size_t valueRoom) {
        reserve(nameLength + valueRoom + 4);
        char* p = m_buffer.get() + m_size;
        *p++ = ' ';
        std::memcpy(p, name, nameLength);
        p += nameLength;
        *p++ = '=';
        *p++ = '"';
        m_size = static_cast<std::size_t>(p - m_buffer.get());
    }

    void closeStartTag() {
        if (!m_tagOpen) {
            return;
        }
        put(">\n", 2);
        m_tagOpen = false;
        std::vector<std::pair<const char*, std::string>> raw;
        raw.swap(m_raw);
        for (const auto& entry : raw) {
            indent();
            putChar('<');
            text(kRawElement);
            text(" attribute=\"");
            text(entry.first);
            text("\" hex=\"");
            put(entry.second.data(), entry.second.size());
            put("\"/>\n", 4);
        }
    }

    void indent() {
        const std::size_t blanks = 2 * m_stack.size();
        reserve(blanks);
        std::memset(m_buffer.get() + m_size, ' ', blanks);
        m_size += blanks;
    }

    // Appends `value` escaped (the room was reserved by openValue); false, with nothing
    // appended, when XML text cannot carry it.
    bool escape(const std::string& value) {
        // 0: copy, 1: escape, 2: not allowed in XML, 3: part of a multi-byte sequence.
        static const auto classes = [] {
            std::array<unsigned char, 256> table{};
            for (int c = 0; c < 0x20; ++c) {
                table[c] = 2;
            }
            for (const char c : {'&', '<', '>', '"', '\t', '\n', '\r'}) {
                table[static_cast<unsigned char>(c)] = 1;
            }
            for (int c = 0x80; c < 0x100; ++c) {
                table[c] = 3;
            }
            return table;
        }();
        char* out = m_buffer.get() + m_size;
        bool checkedUtf8 = false;
        for (const char c : value) {
            const unsigned char kind = classes[static_cast<unsigned char>(c)];
            if (kind == 0) {
                *out++ = c;
                continue;
            }
            if (kind == 3) {
                if (!checkedUtf8 && !isXmlSafe(value)) {
                    return false;
                }
                checkedUtf8 = true;
                *out++ = c;
                continue;
            }
            if (kind == 2) {
                return false;
            }
            const char* entity = c == '&'    ? "&amp;"
                                 : c == '<'  ? "&lt;"
                                 : c == '>'  ? "&gt;"
                                 : c == '"'  ? "&quot;"
                                 : c == '\t' ? "&#9;"
                                 : c == '\n' ? "&#10;"
                                             : "&#13;";
            while (*entity) {
                *out++ = *entity++;
            }
        }
        m_size = static_cast<std::size_t>(out - m_buffer.get());
        return true;
    }

    Sink m_sink;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
    std::vector<const char*> m_stack;
    std::vector<std::pair<const char*, std::string>> m_raw;
    bool m_tagOpen = false;
    std::unique_ptr<char[]> m_spare; ///< the piece with the sink, while m_pending runs
    std::size_t m_spareCapacity = 0;
    // Last, so that it is destroyed first: an unfinished write ends before its buffer goes.
    std::future<void> m_pending;
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

void writeDocument(XmlOut& out, const DefinitionDocument& document) {
    out.text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
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
    out.flush();
}

} // namespace

std::string FordefWriter::toXml(const DefinitionDocument& document) {
    XmlOut out;
    writeDocument(out, document);
    return out.take();
}

FileState FordefWriter::write(const DefinitionDocument& document, const fs::path& file,
                              const CommitCheck& check) {
    // Never write what the reader would refuse: the saved file could not be opened again.
    for (const auto& border : document.borderLayoutTypes(AllUnits)) {
        for (const DrawingSize& size : border->drawingSizes()) {
            const Fordef::ImpossibleValue impossible = Fordef::impossibleValue(size);
            if (impossible.attribute) {
                throw DocumentError(file.string(), 0,
                                    "cannot save: border '" + border->id + "', drawing size '" +
                                        size.name + "': " + impossible.reason);
            }
        }
    }
    return replaceFileAtomically(
        file,
        [&document](const ChunkSink& sink) {
            XmlOut out(sink);
            writeDocument(out, document);
        },
        check);
}

} // namespace QorBorder
