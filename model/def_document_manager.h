#pragma once

#include "model/definition_document.h"
#include "model/frame_units_type.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Base {
namespace log {
class Logger;
} // namespace log
} // namespace Base

namespace QorBorder {

/// What fieldTranslation answers for a combination stored nowhere.
extern const char* const kNoTranslationFound;

/// The registry of all open documents, at most one per file. Lookups by ID search every
/// registered document in registration order and return the first match.
class DefDocumentManagerImpl {
public:
    DefDocumentManagerImpl() = default;
    DefDocumentManagerImpl(const DefDocumentManagerImpl&) = delete;
    DefDocumentManagerImpl& operator=(const DefDocumentManagerImpl&) = delete;

    /// Registers a document under its file name. Throws DocumentError when it has none or
    /// another document is registered for that file; registering the same object again does
    /// nothing.
    void addDocument(boost::shared_ptr<DefinitionDocument> document);
    /// The open document for that file, else the file read and registered. Throws DocumentError
    /// (nothing registered) when the file is missing, unreadable or not a valid document.
    boost::shared_ptr<DefinitionDocument> getDocument(const boost::filesystem::path& file);
    bool hasDocument(const boost::filesystem::path& file) const;
    bool isAnyModified() const;
    /// Saves every registered document whose `modified` is set. A failure, or a refusal because
    /// someone else changed the file, does not stop the others; afterwards one
    /// DocumentsNotSavedError names every document that was not saved, with its reason.
    void saveAll();
    std::vector<boost::shared_ptr<DefinitionDocument>> documents() const { return m_documents; }

    boost::shared_ptr<BorderLayout> getBorderLayout(const std::string& id);
    boost::shared_ptr<BlockLayout> getBlockLayout(const std::string& id);
    boost::shared_ptr<BlockLocation> getBlockLocation(const std::string& blockId,
                                                      const std::string& locationId);
    /// Every block layout of every registered document (of those units; AllUnits: all), in
    /// registration and document order. The list of all units is built again only after a
    /// document was registered or a block layout added to or deleted from one, so that dialogs
    /// may ask after every event. The reference stays valid; its contents change with the next
    /// call that finds the documents changed, so do not register or change documents while
    /// iterating over it.
    const std::vector<boost::shared_ptr<const BlockLayout>>&
    blockLayouts(FrameUnitsType units) const;
    /// The stored translation, or exactly kNoTranslationFound ("No Translation Found.").
    std::string fieldTranslation(const std::string& language, const std::string& blockId,
                                 const std::string& fieldId, const std::string& lookupKey) const;

private:
    boost::shared_ptr<DefinitionDocument> find(const boost::filesystem::path& file) const;

    std::vector<boost::shared_ptr<DefinitionDocument>> m_documents;

    // The list blockLayouts(AllUnits) gave last, and the block list version of each document it
    // was built from.
    mutable std::vector<boost::shared_ptr<const BlockLayout>> m_allBlockLayouts;
    mutable std::vector<std::pair<const DefinitionDocument*, std::uint64_t>> m_allBlockSources;
    mutable bool m_allBlockLayoutsBuilt = false;
    // A layout's units change in place, unseen: a list of some units is built on every call.
    mutable std::vector<boost::shared_ptr<const BlockLayout>> m_blockLayoutsOfUnits;
};

/// The one manager of the process, created on first use and never destroyed.
DefDocumentManagerImpl& DefDocumentManager();

/// The model library's information logger ("qorborder.info").
Base::log::Logger& info_log();

} // namespace QorBorder
