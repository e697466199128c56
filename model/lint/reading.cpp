// Reading a site's documents for the checker: on every core, each document let go once its
// facts are taken, and read again with its lines only when a finding names it.
#include "model/lint/lint.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"

#include "base/regular_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <thread>
#include <utility>

namespace fs = boost::filesystem;
using namespace QorBorder;

namespace QorLint {

LintDocument readLintDocument(const fs::path& file, const std::string& shownAs, bool checked) {
    return readLintDocument(file, shownAs, checked, true);
}

LintDocument readLintDocument(const fs::path& file, const std::string& shownAs, bool checked,
                              bool withLines) {
    LintDocument doc;
    doc.file = shownAs;
    doc.checked = checked;
    doc.document = FordefReader::read(file, withLines ? &doc.lines : nullptr);
    doc.lines.finish();
    return doc;
}

namespace {

// Reads each source with `read(source, reading)` on `threads` threads (0: one per core), each
// reading in its own slot. A DocumentError or a lack of memory becomes the reading's error; any
// other failure is raised in the caller's thread, as a single-threaded read would raise it, the
// first in the order of the sources.
template <class Reading, class Read>
std::vector<Reading> readOnThreads(const std::vector<LintSource>& sources, unsigned threads,
                                   const Read& read) {
    std::vector<Reading> readings(sources.size());
    // Each thread takes the next unread source; the threads share nothing else.
    std::atomic<std::size_t> next{0};
    std::vector<std::exception_ptr> failures(sources.size());
    const auto work = [&] {
        for (std::size_t i = next++; i < sources.size(); i = next++) {
            const LintSource& source = sources[i];
            try {
                read(source, readings[i]);
            } catch (const DocumentError& e) {
                readings[i].error = e.what();
                readings[i].errorLine = e.line();
                readings[i].reason = e.reason().empty() ? e.what() : e.reason();
            } catch (const std::bad_alloc&) {
                readings[i].reason = "too large to read: out of memory";
                readings[i].error = source.file.string() + ": " + readings[i].reason;
            } catch (...) {
                failures[i] = std::current_exception();
            }
        }
    };
    if (threads == 0) {
        threads = std::max(1u, std::thread::hardware_concurrency());
    }
    threads = static_cast<unsigned>(std::min<std::size_t>(threads, sources.size()));
    std::vector<std::thread> pool;
    for (unsigned t = 1; t < threads; ++t) {
        pool.emplace_back(work);
    }
    work();
    for (std::thread& thread : pool) {
        thread.join();
    }
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
    return readings;
}

// A FIFO or a device is refused without being opened: opening one could block, or act.
void refuseIrregular(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        throw DocumentError(file.string(), 0,
                            std::string("cannot open the file: ") + std::strerror(errno));
    }
    if (!S_ISREG(status.st_mode)) {
        throw DocumentError(file.string(), 0,
                            "it is " + Base::fileKind(status.st_mode) + ", not a regular file");
    }
}

} // namespace

std::vector<LintReading> readLintDocuments(const std::vector<LintSource>& sources,
                                           unsigned threads) {
    return readOnThreads<LintReading>(
        sources, threads, [](const LintSource& source, LintReading& reading) {
            reading.document = readLintDocument(source.file, source.shownAs, source.checked);
        });
}

std::vector<FactsReading> readDocumentFacts(const std::vector<LintSource>& sources, bool withLines,
                                            unsigned threads) {
    return readOnThreads<FactsReading>(
        sources, threads, [withLines](const LintSource& source, FactsReading& reading) {
            refuseIrregular(source.file);
            // The document itself is let go on this thread, as soon as its facts are taken.
            reading.facts = documentFacts(
                readLintDocument(source.file, source.shownAs, source.checked, withLines));
        });
}

LintedFiles lintFiles(const std::vector<LintSource>& sources, const TemplateLookup& templateFound,
                      unsigned threads) {
    LintedFiles result;
    std::vector<FactsReading> readings = readDocumentFacts(sources, false, threads);
    // Context documents first, in the order given, so that lookups find what the configurator
    // finds; the read ones only, each remembering its source.
    std::vector<std::size_t> order;
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t i = 0; i < readings.size(); ++i) {
            if (readings[i].error.empty() && readings[i].facts.checked == (pass == 1)) {
                order.push_back(i);
            }
        }
    }
    for (std::size_t i = 0; i < readings.size(); ++i) {
        if (!readings[i].error.empty()) {
            result.unreadable.push_back({i, readings[i].errorLine, readings[i].reason});
        }
    }
    std::vector<const DocumentFacts*> documents;
    for (std::size_t i : order) {
        documents.push_back(&readings[i].facts);
    }
    std::vector<bool> named;
    result.findings = lint(documents, templateFound, &named);
    if (result.findings.empty()) {
        return result;
    }
    // Most documents of a kept site have no finding, and recording where each element stands
    // costs more than reading it: only the documents that the findings name are read again,
    // with their lines, and the same findings are worked out with those lines.
    std::vector<LintSource> again;
    std::vector<std::size_t> againAt;
    for (std::size_t k = 0; k < order.size(); ++k) {
        if (named[k]) {
            again.push_back(sources[order[k]]);
            againAt.push_back(order[k]);
        }
    }
    std::vector<FactsReading> lined = readDocumentFacts(again, true, threads);
    for (std::size_t k = 0; k < lined.size(); ++k) {
        // A file changed or gone since the first read keeps what that read found, without lines.
        if (lined[k].error.empty()) {
            readings[againAt[k]].facts = std::move(lined[k].facts);
        }
    }
    result.findings = lint(documents, templateFound);
    return result;
}

} // namespace QorLint
