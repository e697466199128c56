#include "fmt.h"

#include "site.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include <algorithm>
#include <ostream>

using namespace QorBorder;

namespace QorfmtCli {

namespace {

struct Reading {
    boost::shared_ptr<DefinitionDocument> document;
    bool canonical = false;
};

Reading readDocument(const std::string& file) {
    Reading reading;
    try {
        reading.document = FordefReader::read(file);
    } catch (const DocumentError& e) {
        throw InputError(e.what());
    }
    std::string bytes;
    if (!readWholeFile(file, bytes)) {
        throw InputError(file + ": cannot read the file");
    }
    reading.canonical = bytes == FordefWriter::toXml(*reading.document);
    return reading;
}

} // namespace

bool isCanonical(const std::string& file) {
    return readDocument(file).canonical;
}

int runFmt(const FmtOptions& options, std::ostream& out, std::ostream& err) {
    int exitCode = 0;
    for (const std::string& file : options.files) {
        try {
            Reading reading = readDocument(file);
            if (reading.canonical) {
                continue;
            }
            if (options.check) {
                out << file << ": not in canonical form\n";
                exitCode = std::max(exitCode, 1);
                continue;
            }
            reading.document->save();
            out << file << ": rewritten\n";
        } catch (const InputError& e) {
            err << "qorfmt fmt: " << e.what() << '\n';
            exitCode = 2;
        } catch (const DocumentError& e) {
            err << "qorfmt fmt: " << e.what() << '\n';
            exitCode = 2;
        }
    }
    return exitCode;
}

} // namespace QorfmtCli
