#include "model/def_document_manager.h"

#include "model/document_error.h"
#include "model/file_replace.h"

#include "base/log.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>

namespace fs = boost::filesystem;

namespace QorBorder {

const char* const kNoTranslationFound = "No Translation Found.";

boost::shared_ptr<DefinitionDocument> DefDocumentManagerImpl::find(const fs::path& file) const {
    if (file.empty()) {
        return boost::shared_ptr<DefinitionDocument>();
    }
    const fs::path wanted = normalisedPath(file);
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (!document->filename().empty() && normalisedPath(document->filename()) == wanted) {
            return document;
        }
    }
    return boost::shared_ptr<DefinitionDocument>();
}

void DefDocumentManagerImpl::addDocument(boost::shared_ptr<DefinitionDocument> document) {
    if (!document) {
        throw std::invalid_argument("addDocument: empty document pointer");
    }
    if (document->filename().empty()) {
        throw DocumentError("(untitled)", 0, "a document without a file name cannot be opened");
    }
    const boost::shared_ptr<DefinitionDocument> existing = find(document->filename());
    if (existing == document) {
        return;
    }
    if (existing) {
        throw DocumentError(document->filename(), 0, "another document for this file is open");
    }
    m_documents.push_back(std::move(document));
}

boost::shared_ptr<DefinitionDocument> DefDocumentManagerImpl::getDocument(const fs::path& file) {
    if (const boost::shared_ptr<DefinitionDocument> open = find(file)) {
        return open;
    }
    boost::shared_ptr<DefinitionDocument> loaded = DefinitionDocument::load(file);
    // What a save killed in this folder may have left goes now that someone works here again.
    removeAbandonedTemporaries(fs::absolute(file).parent_path());
    m_documents.push_back(loaded);
    Base::log::LoggerStream(info_log()) << "Opened " << file.string() << "\n";
    return loaded;
}

bool DefDocumentManagerImpl::hasDocument(const fs::path& file) const {
    return static_cast<bool>(find(file));
}

bool DefDocumentManagerImpl::isAnyModified() const {
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (document->modified) {
            return true;
        }
    }
    return false;
}

void DefDocumentManagerImpl::saveAll() {
    std::vector<DocumentError> failures;
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (!document->modified) {
            continue;
        }
        try {
            document->save();
        } catch (const DocumentError& error) {
            failures.push_back(error);
        }
    }
    if (!failures.empty()) {
        throw DocumentsNotSavedError(failures);
    }
}

boost::shared_ptr<BorderLayout> DefDocumentManagerImpl::getBorderLayout(const std::string& text) {
    const HashedKey id(text);
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (boost::shared_ptr<BorderLayout> found = document->getBorderLayout(id)) {
            return found;
        }
    }
    return boost::shared_ptr<BorderLayout>();
}

boost::shared_ptr<BlockLayout> DefDocumentManagerImpl::getBlockLayout(const std::string& text) {
    const HashedKey id(text);
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (boost::shared_ptr<BlockLayout> found = document->getBlockLayout(id)) {
            return found;
        }
    }
    return boost::shared_ptr<BlockLayout>();
}

boost::shared_ptr<BlockLocation>
DefDocumentManagerImpl::getBlockLocation(const std::string& blockId,
                                         const std::string& locationId) {
    const std::string text = DefinitionDocument::blockLocationKey(blockId, locationId);
    const HashedKey key(text);
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (boost::shared_ptr<BlockLocation> found = document->findBlockLocation(key)) {
            return found;
        }
    }
    return boost::shared_ptr<BlockLocation>();
}

const std::vector<boost::shared_ptr<const BlockLayout>>&
DefDocumentManagerImpl::blockLayouts(FrameUnitsType units) const {
    if (units != AllUnits) {
        m_blockLayoutsOfUnits.clear();
        for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
            const auto some = document->blockLayouts(units);
            m_blockLayoutsOfUnits.insert(m_blockLayoutsOfUnits.end(), some.begin(), some.end());
        }
        return m_blockLayoutsOfUnits;
    }
    bool current = m_allBlockLayoutsBuilt && m_allBlockSources.size() == m_documents.size();
    for (std::size_t d = 0; current && d < m_documents.size(); ++d) {
        current = m_allBlockSources[d].first == m_documents[d].get() &&
                  m_allBlockSources[d].second == m_documents[d]->blockListVersion();
    }
    if (!current) {
        m_allBlockLayouts.clear();
        m_allBlockSources.clear();
        for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
            const auto some = document->blockLayouts(AllUnits);
            m_allBlockLayouts.insert(m_allBlockLayouts.end(), some.begin(), some.end());
            m_allBlockSources.emplace_back(document.get(), document->blockListVersion());
        }
        m_allBlockLayoutsBuilt = true;
    }
    return m_allBlockLayouts;
}

std::string DefDocumentManagerImpl::fieldTranslation(const std::string& language,
                                                     const std::string& blockId,
                                                     const std::string& fieldId,
                                                     const std::string& lookupKey) const {
    const std::string text = translationKey(language, blockId, fieldId, lookupKey);
    const HashedKey key(text);
    for (const boost::shared_ptr<DefinitionDocument>& document : m_documents) {
        if (const std::string* found = document->findTranslation(key)) {
            return *found;
        }
    }
    return kNoTranslationFound;
}

DefDocumentManagerImpl& DefDocumentManager() {
    // Never destroyed: documents stay open for the life of the process.
    static DefDocumentManagerImpl* const manager = new DefDocumentManagerImpl();
    return *manager;
}

Base::log::Logger& info_log() {
    static Base::log::Logger* const logger = new Base::log::Logger("qorborder.info");
    return *logger;
}

} // namespace QorBorder
