// libFuzzer target: the reader must refuse any input with a DocumentError or read it, and what it
// reads must write and read back to the same contents.
#include "model/document_error.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    boost::shared_ptr<QorBorder::DefinitionDocument> document;
    try {
        document = QorBorder::FordefReader::parse(reinterpret_cast<const char*>(data), size,
                                                  "fuzz.fordef");
    } catch (const QorBorder::DocumentError&) {
        return 0;
    }
    const std::string xml = QorBorder::FordefWriter::toXml(*document);
    const auto again = QorBorder::FordefReader::parse(xml.data(), xml.size(), "again.fordef");
    if (QorBorder::FordefWriter::toXml(*again) != xml) {
        std::abort();
    }
    return 0;
}
