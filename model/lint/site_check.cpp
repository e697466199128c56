#include "model/lint/site_check.h"

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

} // namespace

bool SiteCheck::Identity::operator==(const Identity& other) const {
    return std::tie(device, inode, size, modifiedNs, changedNs) ==
           std::tie(other.device, other.inode, other.size, other.modifiedNs, other.changedNs);
}

SiteCheck::Identity SiteCheck::identityOf(const fs::path& file) {
    Identity identity;
    struct stat info {};
    if (::stat(file.c_str(), &info) == 0) {
        identity = {static_cast<std::uint64_t>(info.st_dev),
                    static_cast<std::uint64_t>(info.st_ino),
                    static_cast<std::uint64_t>(info.st_size), nanoseconds(info.st_mtim),
                    nanoseconds(info.st_ctim)};
    }
    return identity;
}

void SiteCheck::readChanged(const std::vector<fs::path>& files) {
    std::vector<LintSource> sources;
    std::vector<Identity> identities;
    for (const fs::path& file : files) {
        const Identity identity = identityOf(file);
        const auto found = m_cache.find(file);
        if (found == m_cache.end() || !(found->second.identity == identity)) {
            sources.push_back({file, file.string(), false});
            identities.push_back(identity);
        }
    }
    // On every core: the first check after the configurator starts reads the whole site.
    // With their lines: a duplicate found later names the line of the other definition.
    std::vector<FactsReading> readings = readDocumentFacts(sources, true);
    for (std::size_t i = 0; i < readings.size(); ++i) {
        Cached& cached = m_cache[sources[i].file];
        cached.identity = identities[i];
        // A document that cannot be read is not the saved document's fault: the site's own
        // check reports it. It gives no context here.
        cached.read = readings[i].error.empty();
        cached.facts = cached.read ? std::move(readings[i].facts) : DocumentFacts{};
    }
}

const fs::path& SiteCheck::normalised(const fs::path& file) {
    const auto found = m_normalised.find(file);
    if (found != m_normalised.end()) {
        return found->second;
    }
    return m_normalised.emplace(file, QorBorder::normalisedPath(file)).first->second;
}

bool SiteCheck::templateFoundBefore(const std::string& name, const std::string& folder,
                                    const TemplateLookup& lookup) {
    const auto key = std::make_pair(name, folder);
    if (m_templatesFound.count(key)) {
        return true;
    }
    // Only what was found is kept: a template added while the configurator runs is found at the
    // next check, and one removed is rare enough to wait for the next run.
    if (lookup(name, folder)) {
        m_templatesFound.insert(key);
        return true;
    }
    return false;
}

std::vector<Finding> SiteCheck::check(
    const fs::path& file, const boost::shared_ptr<const QorBorder::DefinitionDocument>& saved,
    const std::vector<fs::path>& siteDocuments, const std::vector<OpenDocument>& openDocuments,
    const TemplateLookup& templateFound) {
    const fs::path savedPath = normalised(file);
    std::map<fs::path, boost::shared_ptr<const QorBorder::DefinitionDocument>> unsaved;
    std::vector<const OpenDocument*> outsideSite;
    for (const OpenDocument& open : openDocuments) {
        if (open.document && open.document != saved) {
            if (open.file.empty()) {
                outsideSite.push_back(&open);
            } else {
                unsaved[normalised(open.file)] = open.document;
            }
        }
    }

    std::vector<fs::path> onDisk;
    for (const fs::path& siteFile : siteDocuments) {
        const fs::path path = normalised(siteFile);
        if (path != savedPath && unsaved.find(path) == unsaved.end()) {
            onDisk.push_back(siteFile);
        }
    }
    readChanged(onDisk);

    // Context first, in search order, so that lookups find what the configurator finds. The
    // facts of the open documents with unsaved changes are taken anew at each check.
    std::vector<DocumentFacts> unsavedFacts;
    unsavedFacts.reserve(unsaved.size() + outsideSite.size());
    const auto openFacts = [&unsavedFacts](const std::string& name, const auto& document) {
        unsavedFacts.push_back(documentFacts({name, document, {}, false}));
        return &unsavedFacts.back();
    };
    std::vector<const DocumentFacts*> documents;
    std::vector<fs::path> listed;
    for (const fs::path& siteFile : siteDocuments) {
        const fs::path path = normalised(siteFile);
        if (path == savedPath) {
            continue;
        }
        listed.push_back(path);
        const auto open = unsaved.find(path);
        if (open != unsaved.end()) {
            documents.push_back(openFacts(siteFile.string(), open->second));
        } else if (const Cached& read = m_cache.at(siteFile); read.read) {
            documents.push_back(&read.facts);
        }
    }
    for (const auto& open : unsaved) {
        if (open.first != savedPath &&
            std::find(listed.begin(), listed.end(), open.first) == listed.end()) {
            documents.push_back(openFacts(open.first.string(), open.second));
        }
    }
    for (const OpenDocument* open : outsideSite) {
        documents.push_back(openFacts(open->document->displayName(), open->document));
    }

    const TemplateLookup lookup = [this, &templateFound](const std::string& name,
                                                         const std::string& folder) {
        return templateFoundBefore(name, folder, templateFound);
    };
    // The document as saved, without lines: most saves have no finding, and then the file
    // need not be read back.
    DocumentFacts savedFacts = documentFacts({file.string(), saved, {}, true});
    documents.push_back(&savedFacts);
    if (lint(documents, lookup).empty()) {
        return {};
    }
    // Read back, for the lines that the findings name: the same findings as for the file.
    savedFacts = documentFacts(readLintDocument(file, file.string(), true));
    return lint(documents, lookup);
}

} // namespace QorLint
