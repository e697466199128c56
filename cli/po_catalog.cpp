#include "po_catalog.h"

#include "input.h"

#include "site.h"

#include "model/document_error.h"
#include "model/fordef_writer.h"

#include "base/regular_file.h"

#include <boost/filesystem/operations.hpp>

#include <gettext-po.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sys/mman.h>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>

namespace fs = boost::filesystem;

namespace QorfmtCli {

namespace {

// libgettextpo reports problems through plain C callbacks without a context argument; this is
// where the call in progress collects them.
struct ProblemLog {
    std::string first; ///< the first error, FILE:LINE: TEXT
    bool failed = false;
    std::string readName;    ///< the name the library was given to read ...
    std::string displayName; ///< ... and the one to show for it
    /// When the first error involves a second message (a message defined twice) whose place the
    /// library does not give: that message, and the error's text before and after its place.
    po_message_t other = nullptr;
    std::string beforeOther;
    std::string afterOther;
};
thread_local ProblemLog* currentLog = nullptr;

std::string place(const char* filename, std::size_t lineno) {
    std::string where = filename ? filename : "";
    if (currentLog && !currentLog->readName.empty() && where == currentLog->readName) {
        where = currentLog->displayName;
    }
    if (filename && lineno != static_cast<std::size_t>(-1)) {
        where += ":" + std::to_string(lineno);
    }
    return where;
}

std::string withoutFinalNewlines(const char* text) {
    std::string message = text ? text : "";
    while (!message.empty() && message.back() == '\n') {
        message.pop_back();
    }
    return message;
}

void note(int severity, const std::string& where, const std::string& message) {
    if (!currentLog || severity == PO_SEVERITY_WARNING || currentLog->failed) {
        return;
    }
    currentLog->first = where.empty() ? message : where + ": " + message;
    currentLog->failed = true;
}

// Fatal errors are reported after the reader has finished its work (a summary of the errors
// before, or a failed write); returning from them lets the library clean up after itself.
void onProblem(int severity, po_message_t, const char* filename, std::size_t lineno, std::size_t,
               int, const char* text) {
    note(severity, place(filename, lineno), withoutFinalNewlines(text));
}

// Two places, as for a message defined twice: both are named, the second in parentheses.
void onProblemPair(int severity, po_message_t, const char* filename1, std::size_t lineno1,
                   std::size_t, int, const char* text1, po_message_t message2,
                   const char* filename2, std::size_t lineno2, std::size_t, int,
                   const char* text2) {
    const bool located = filename2 && lineno2 != static_cast<std::size_t>(-1);
    const bool firstError = currentLog && !currentLog->failed && severity != PO_SEVERITY_WARNING;
    note(severity, place(filename1, lineno1),
         withoutFinalNewlines(text1) + " (" + (located ? place(filename2, lineno2) + ": " : "") +
             withoutFinalNewlines(text2) + ")");
    if (firstError && !located && message2) {
        // Located once the file is read, from where that message starts.
        currentLog->other = message2;
        currentLog->beforeOther =
            place(filename1, lineno1) + ": " + withoutFinalNewlines(text1) + " (";
        currentLog->afterOther = ": " + withoutFinalNewlines(text2) + ")";
    }
}

const po_xerror_handler kHandler = {onProblem, onProblemPair};

class LogScope {
public:
    explicit LogScope(ProblemLog& log) : m_previous(currentLog) { currentLog = &log; }
    ~LogScope() { currentLog = m_previous; }
    LogScope(const LogScope&) = delete;
    LogScope& operator=(const LogScope&) = delete;

private:
    ProblemLog* m_previous;
};

struct FileDeleter {
    void operator()(po_file_t file) const { po_file_free(file); }
};
using PoFile = std::unique_ptr<std::remove_pointer_t<po_file_t>, FileDeleter>;

struct IteratorDeleter {
    void operator()(po_message_iterator_t iterator) const { po_message_iterator_free(iterator); }
};
using PoIterator = std::unique_ptr<std::remove_pointer_t<po_message_iterator_t>, IteratorDeleter>;

std::string headerText(const PoCatalog& catalog) {
    return "Project-Id-Version: " + catalog.project +
           "\n"
           "PO-Revision-Date: \n"
           "Last-Translator: \n"
           "Language-Team: \n"
           "Language: " +
           catalog.language +
           "\n"
           "MIME-Version: 1.0\n"
           "Content-Type: text/plain; charset=UTF-8\n"
           "Content-Transfer-Encoding: 8bit\n";
}

std::string headerField(const char* header, const char* name) {
    if (!header) {
        return "";
    }
    char* value = po_header_field(header, name);
    if (!value) {
        return "";
    }
    std::string text = value;
    std::free(value);
    return text;
}

// A file that lives in memory, which libgettextpo writes by a name under /proc: it needs no
// folder (the temporary folder may be missing) and leaves nothing behind.
class MemoryFile {
public:
    MemoryFile() : m_fd(::memfd_create("qorfmt-po", MFD_CLOEXEC)) {
        if (m_fd < 0) {
            throw InputError(std::string("cannot create a file in memory: ") +
                             std::strerror(errno));
        }
    }
    ~MemoryFile() { ::close(m_fd); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string name() const { return "/proc/self/fd/" + std::to_string(m_fd); }

    std::string content() const {
        struct stat status {};
        if (::fstat(m_fd, &status) != 0) {
            throw InputError(std::string("cannot read a file in memory: ") + std::strerror(errno));
        }
        std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t got =
                ::pread(m_fd, &bytes[done], bytes.size() - done, static_cast<off_t>(done));
            if (got <= 0) {
                throw InputError(std::string("cannot read a file in memory: ") +
                                 std::strerror(errno));
            }
            done += static_cast<std::size_t>(got);
        }
        return bytes;
    }

private:
    int m_fd;
};

// The line on which each message of the file starts (its msgctxt, else its msgid), obsolete ones
// included, in file order: the order in which libgettextpo hands the messages out. Only lines are
// located here; every text is read by libgettextpo.
std::vector<int> messageStartLines(const std::string& content) {
    std::vector<int> starts;
    bool contextPending = false;
    int number = 0;
    std::string::size_type start = 0;
    while (start < content.size()) {
        auto end = content.find('\n', start);
        end = end == std::string::npos ? content.size() : end;
        ++number;
        std::string line = content.substr(start, end - start);
        start = end + 1;
        auto first = line.find_first_not_of(" \t\r");
        line = first == std::string::npos ? "" : line.substr(first);
        if (line.rfind("#~", 0) == 0) {
            line = line.substr(2);
            first = line.find_first_not_of(" \t");
            line = first == std::string::npos ? "" : line.substr(first);
        } else if (line.rfind("#", 0) == 0) {
            continue;
        }
        auto keyword = [&](const char* word) {
            const std::size_t length = std::strlen(word);
            return line.compare(0, length, word) == 0 && line.size() > length &&
                   (line[length] == ' ' || line[length] == '\t' || line[length] == '"');
        };
        if (keyword("msgctxt")) {
            starts.push_back(number);
            contextPending = true;
        } else if (keyword("msgid")) {
            if (!contextPending) {
                starts.push_back(number);
            }
            contextPending = false;
        }
    }
    return starts;
}

bool isUtf8Charset(const std::string& contentType) {
    std::string lower = contentType;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto at = lower.find("charset=");
    if (at == std::string::npos) {
        return true; // no charset named: taken as UTF-8, as the documents are
    }
    const std::string charset = lower.substr(at + 8, lower.find_first_of("; \n", at + 8) - at - 8);
    return charset == "utf-8" || charset == "utf8";
}

} // namespace

void writePoFile(const PoCatalog& catalog, const fs::path& file) {
    PoFile po(po_file_create());
    {
        PoIterator iterator(po_message_iterator(po.get(), nullptr));
        po_message_t header = po_message_create();
        po_message_set_msgid(header, "");
        po_message_set_msgstr(header, headerText(catalog).c_str());
        po_message_insert(iterator.get(), header);
        for (const PoEntry& entry : catalog.entries) {
            po_message_t message = po_message_create();
            po_message_set_msgctxt(message, entry.context.c_str());
            po_message_set_msgid(message, entry.source.c_str());
            po_message_set_msgstr(message, entry.translation.c_str());
            if (!entry.comment.empty()) {
                po_message_set_extracted_comments(message, entry.comment.c_str());
            }
            if (!entry.referenceFile.empty()) {
                po_message_add_filepos(message, entry.referenceFile.c_str(),
                                       entry.referenceLine > 0
                                           ? static_cast<std::size_t>(entry.referenceLine)
                                           : static_cast<std::size_t>(-1));
            }
            po_message_set_fuzzy(message, entry.fuzzy);
            po_message_insert(iterator.get(), message);
        }
    }
    // The library writes into a file in memory first; the result then replaces the target
    // atomically, so that a failed write never leaves half a catalog behind.
    const MemoryFile scratch;
    ProblemLog log;
    {
        LogScope scope(log);
        po_file_write(po.get(), scratch.name().c_str(), &kHandler);
    }
    const std::string content = scratch.content();
    if (log.failed) {
        throw InputError(file.string() + ": cannot write the catalog: " + log.first);
    }
    if (file == "-") {
        std::cout << content << std::flush;
        return;
    }
    try {
        QorBorder::replaceFileAtomically(file, content);
    } catch (const QorBorder::DocumentError& e) {
        throw InputError(e.what());
    }
}

PoCatalog readPoFile(const fs::path& file) {
    if (file == "-") {
        return parsePoCatalog(readStandardInput(), "standard input");
    }
    const std::string name = file.string();
    std::string content;
    try {
        content = Base::readRegularFile(file, Base::kMaxCatalogBytes, "a catalog");
    } catch (const Base::UnreadableFile& error) {
        throw InputError(name + ": " + error.what());
    }
    return parsePoCatalog(std::move(content), name);
}

PoCatalog parsePoCatalog(std::string content, const std::string& name) {
    // A byte order mark is no part of the first keyword (the library calls it a syntax error).
    if (content.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        content.erase(0, 3);
    }
    // The library reads by name: it gets the bytes checked here, from a file in memory, and its
    // messages name the real file.
    const int memory = ::memfd_create("qorfmt-po", MFD_CLOEXEC);
    if (memory < 0) {
        throw InputError(name + ": cannot read the file: " + std::strerror(errno));
    }
    struct Closer {
        int fd;
        ~Closer() { ::close(fd); }
    } closer{memory};
    for (std::size_t done = 0; done < content.size();) {
        const ssize_t wrote = ::write(memory, content.data() + done, content.size() - done);
        if (wrote < 0 && errno != EINTR) {
            throw InputError(name + ": cannot read the file: " + std::strerror(errno));
        }
        done += wrote > 0 ? static_cast<std::size_t>(wrote) : 0;
    }
    ProblemLog log;
    log.readName = "/proc/self/fd/" + std::to_string(memory);
    log.displayName = name;
    PoFile po;
    {
        LogScope scope(log);
        po.reset(po_file_read(log.readName.c_str(), &kHandler));
    }
    if (!po) {
        throw InputError(name + ": cannot read the file: " + std::strerror(errno));
    }
    if (log.failed) {
        if (log.other) {
            const std::vector<int> starts = messageStartLines(content);
            PoIterator iterator(po_message_iterator(po.get(), nullptr));
            std::size_t index = 0;
            while (po_message_t message = po_next_message(iterator.get())) {
                if (message == log.other && index < starts.size()) {
                    throw InputError(log.beforeOther + name + ":" + std::to_string(starts[index]) +
                                     log.afterOther);
                }
                ++index;
            }
        }
        throw InputError(log.first);
    }
    PoCatalog catalog;
    // The library hands out a copy of the header, which the caller frees.
    const std::unique_ptr<char, void (*)(void*)> header(
        const_cast<char*>(po_file_domain_header(po.get(), nullptr)), std::free);
    catalog.language = headerField(header.get(), "Language");
    catalog.project = headerField(header.get(), "Project-Id-Version");
    const std::string contentType = headerField(header.get(), "Content-Type");
    if (!isUtf8Charset(contentType)) {
        throw InputError(name + ": the catalog is not in UTF-8 (" + contentType + ")");
    }
    const std::vector<int> starts = messageStartLines(content);
    std::vector<PoEntry> entries;
    std::vector<bool> kept; // neither obsolete nor the header
    PoIterator iterator(po_message_iterator(po.get(), nullptr));
    while (po_message_t message = po_next_message(iterator.get())) {
        PoEntry entry;
        const char* context = po_message_msgctxt(message);
        entry.context = context ? context : "";
        entry.source = po_message_msgid(message);
        entry.translation = po_message_msgstr(message);
        entry.fuzzy = po_message_is_fuzzy(message) != 0;
        entry.hasPlural = po_message_msgid_plural(message) != nullptr;
        const char* comment = po_message_extracted_comments(message);
        entry.comment = comment ? comment : "";
        const bool isHeader = !context && entry.source.empty();
        kept.push_back(!isHeader && po_message_is_obsolete(message) == 0);
        entries.push_back(std::move(entry));
    }
    const bool linesKnown = starts.size() == entries.size();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (linesKnown) {
            entries[i].line = starts[i];
        }
        if (kept[i]) {
            catalog.entries.push_back(std::move(entries[i]));
        }
    }
    return catalog;
}

} // namespace QorfmtCli
