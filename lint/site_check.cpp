#include "lint/site_check.h"

#include "model/document_error.h"
#include "model/file_state.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace fs = boost::filesystem;

namespace QorLint {

namespace {

std::int64_t nanoseconds(const struct timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

// Template lookups asked once per check: every drawing size and style of the site asks, most
// for the same few templates.
TemplateLookup remembering(const TemplateLookup& lookup) {
    auto known = std::make_shared<std::map<std::pair<std::string, std::string>, bool>>();
    return [lookup, known](const std::string& name, const std::string& folder) {
        const auto key = std::make_pair(name, folder);
        const auto found = known->find(key);
        if (found != known->end()) {
            return found->second;
        }
        return known->emplace(key, lookup(name, folder)).first->second;
    };
}

} // namespace

bool SiteCheck::Identity::operator==(const Identity& other) const {
    return std::tie(device, inode, size, modifiedNs, changedNs) ==
           std::tie(other.device, other.inode, other.size, other.modifiedNs, other.changedNs);
}

const LintDocument& SiteCheck::context(const fs::path& file) {
    Identity identity;
    struct stat info {};
    if (::stat(file.c_str(), &info) == 0) {
        identity = {static_cast<std::uint64_t>(info.st_dev),
                    static_cast<std::uint64_t>(info.st_ino),
                    static_cast<std::uint64_t>(info.st_size), nanoseconds(info.st_mtim),
                    nanoseconds(info.st_ctim)};
    }
    const auto found = m_cache.find(file);
    if (found != m_cache.end() && found->second.identity == identity) {
        return found->second.document;
    }
    Cached cached;
    cached.identity = identity;
    try {
        cached.document = readLintDocument(file, file.string(), false);
    } catch (const QorBorder::DocumentError&) {
        // Not the saved document's fault: the site's own check reports it.
        cached.document = LintDocument();
        cached.document.file = file.string();
        cached.document.checked = false;
    }
    return (m_cache[file] = std::move(cached)).document;
}

std::vector<Finding> SiteCheck::check(
    const fs::path& file, const boost::shared_ptr<const QorBorder::DefinitionDocument>& saved,
    const std::vector<fs::path>& siteDocuments, const std::vector<OpenDocument>& openDocuments,
    const TemplateLookup& templateFound) {
    const fs::path savedPath = QorBorder::normalisedPath(file);
    std::map<fs::path, boost::shared_ptr<const QorBorder::DefinitionDocument>> unsaved;
    std::vector<const OpenDocument*> outsideSite;
    for (const OpenDocument& open : openDocuments) {
        if (open.document && open.document != saved) {
            if (open.file.empty()) {
                outsideSite.push_back(&open);
            } else {
                unsaved[QorBorder::normalisedPath(open.file)] = open.document;
            }
        }
    }

    // Context first, in search order, so that lookups find what the configurator finds.
    std::vector<LintDocument> documents;
    std::vector<fs::path> listed;
    for (const fs::path& siteFile : siteDocuments) {
        const fs::path path = QorBorder::normalisedPath(siteFile);
        if (path == savedPath) {
            continue;
        }
        listed.push_back(path);
        const auto open = unsaved.find(path);
        if (open != unsaved.end()) {
            documents.push_back({siteFile.string(), open->second, {}, false});
        } else if (const LintDocument& read = context(siteFile); read.document) {
            documents.push_back(read);
        }
    }
    for (const auto& open : unsaved) {
        if (open.first != savedPath &&
            std::find(listed.begin(), listed.end(), open.first) == listed.end()) {
            documents.push_back({open.first.string(), open.second, {}, false});
        }
    }
    for (const OpenDocument* open : outsideSite) {
        documents.push_back({open->document->displayName(), open->document, {}, false});
    }

    const TemplateLookup lookup = remembering(templateFound);
    // The document as saved, without lines: most saves have no finding, and then the file
    // need not be read back.
    documents.push_back({file.string(), saved, {}, true});
    if (lint(documents, lookup).empty()) {
        return {};
    }
    // Read back, for the lines that the findings name: the same findings as for the file.
    documents.back() = readLintDocument(file, file.string(), true);
    return lint(documents, lookup);
}

} // namespace QorLint
