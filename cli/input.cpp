#include "input.h"

#include "base/regular_file.h"

#include "site.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"

#include <iostream>

using namespace QorBorder;

namespace QorfmtCli {

std::string inputName(const std::string& file) {
    return file == kStandardStream ? "standard input" : file;
}

std::string readStandardInput() {
    // In pieces rather than through stream iterators, which optimised builds warn about.
    std::string bytes;
    char piece[65536];
    while (std::cin.read(piece, sizeof piece) || std::cin.gcount() > 0) {
        bytes.append(piece, static_cast<std::size_t>(std::cin.gcount()));
    }
    if (std::cin.bad()) {
        throw InputError("standard input: cannot read it");
    }
    return bytes;
}

DocumentInput readDocumentInput(const std::string& file, SourceLines* lines, bool keepBytes) {
    DocumentInput input;
    try {
        if (file == kStandardStream) {
            input.bytes = readStandardInput();
            input.document =
                FordefReader::parse(input.bytes.data(), input.bytes.size(), inputName(file), lines);
            return input;
        }
        input.document = FordefReader::read(file, lines);
    } catch (const DocumentError& e) {
        throw InputError(e.what());
    }
    if (keepBytes) {
        try {
            input.bytes = Base::readRegularFile(file, Base::kMaxDocumentBytes, "a document");
        } catch (const Base::UnreadableFile& error) {
            throw InputError(file + ": " + error.what());
        }
    }
    return input;
}

} // namespace QorfmtCli
