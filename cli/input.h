#pragma once

#include "model/definition_document.h"
#include "model/source_lines.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace QorfmtCli {

/// The file argument that stands for standard input (where a command reads one file) or standard
/// output (where it writes one).
constexpr const char* kStandardStream = "-";

/// How a file argument is named in messages: "standard input" for "-".
std::string inputName(const std::string& file);

/// Everything on standard input; throws InputError when it cannot be read.
std::string readStandardInput();

/// A document read from a file argument.
struct DocumentInput {
    boost::shared_ptr<QorBorder::DefinitionDocument> document;
    std::string bytes; ///< the file's content, when asked for
};

/// Reads the document in `file`, or in standard input for "-", through the model's reader.
/// `lines` receives the line of each element. Throws InputError naming the file, the line and
/// the reason.
DocumentInput readDocumentInput(const std::string& file, QorBorder::SourceLines* lines = nullptr,
                                bool keepBytes = false);

} // namespace QorfmtCli
