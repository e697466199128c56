#include "fmt.h"

#include "input.h"
#include "site.h"
#include "text_diff.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>

using namespace QorBorder;

namespace QorfmtCli {

namespace {

struct Reading {
    boost::shared_ptr<DefinitionDocument> document;
    std::string bytes;
    std::string formatted;
    bool canonical = false;
};

Reading readDocument(const std::string& file) {
    Reading reading;
    DocumentInput input = readDocumentInput(file, nullptr, true);
    reading.document = input.document;
    reading.bytes = std::move(input.bytes);
    reading.formatted = FordefWriter::toXml(*reading.document);
    reading.canonical = reading.bytes == reading.formatted;
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
            if (options.diff) {
                const std::string name = inputName(file);
                out << unifiedDiff(reading.bytes, reading.formatted, name, name + " (formatted)");
                exitCode = std::max(exitCode, reading.canonical ? 0 : 1);
                continue;
            }
            if (options.check) {
                if (!reading.canonical) {
                    out << inputName(file) << ": not in canonical form\n";
                    exitCode = std::max(exitCode, 1);
                }
                continue;
            }
            if (!reading.canonical && !options.dropComments) {
                if (const int line = firstCommentLine(reading.bytes)) {
                    throw InputError(inputName(file) + ":" + std::to_string(line) +
                                     ": holds an XML comment, which the canonical form does not "
                                     "keep; not rewritten (--diff shows the change, "
                                     "--drop-comments rewrites it without its comments)");
                }
            }
            if (file == kStandardStream) {
                // A filter: the canonical form goes to standard output.
                out << reading.formatted;
                continue;
            }
            if (reading.canonical) {
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
