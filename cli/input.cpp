#include "input.h"

#include "base/regular_file.h"

#include "site.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"

#include <iostream>
#include <iterator>

using namespace QorBorder;

namespace QorfmtCli {

std::string inputName(const std::string& file) {
    return file == kStandardStream ? "standard input" : file;
}

DocumentInput readDocumentInput(const std::string& file, SourceLines* lines, bool keepBytes) {
    DocumentInput input;
    try {
        if (file == kStandardStream) {
            input.bytes.assign(std::istreambuf_iterator<char>(std::cin),
                               std::istreambuf_iterator<char>());
            if (std::cin.bad()) {
                throw InputError("standard input: cannot read it");
            }
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
