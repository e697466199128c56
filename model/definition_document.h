#pragma once

#include "model/block_layout.h"
#include "model/block_location.h"
#include "model/border_layout.h"
#include "model/file_state.h"
#include "model/frame_units_type.h"
#include "model/layout_list.h"
#include "model/lookup_index.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace QorBorder {

/// One format definition document (a .fordef file): border layouts, block layouts, block
/// locations and field translations. Getters hand out the document's own objects (edit in
/// place); lists for display are vectors of pointers to const. Every add, delete and
/// setFieldTranslations sets `modified`; a successful save clears it.
class DefinitionDocument {
public:
    using TranslationMap = std::map<std::string, std::string>;

    /// A document for that file name ("" for a new, untitled one). Reads no file.
    explicit DefinitionDocument(const std::string& filename);
    /// A deep copy of all contents.
    DefinitionDocument(const DefinitionDocument& other);
    DefinitionDocument& operator=(const DefinitionDocument&) = delete;
    ~DefinitionDocument();

    /// Reads a document from `file`. Throws DocumentError naming the file, the line and the
    /// reason when it cannot be read or is not a valid document.
    static boost::shared_ptr<DefinitionDocument> load(const boost::filesystem::path& file);

    std::string filename() const { return m_filename; }
    /// The file name without its folder ("Untitled" for an untitled document).
    std::string displayName() const;
    /// The folder of the file ("" for an untitled document).
    std::string displayLocation() const;

    bool modified = false;

    /// Writes to filename() atomically and clears `modified`. Throws DocumentError (the file and
    /// the reason) when the document has no file name or the file cannot be written, and
    /// FileChangedError when someone else changed the file since this document read or last
    /// saved it; the old file and `modified` are then as they were.
    void save();
    /// The same to `file`, which becomes the document's file name on success. Only when `file`
    /// is the document's own file is it checked for changes by someone else.
    void save(const boost::filesystem::path& file);

    /// Adds the layout itself (not a copy) at the end; an ID the document already holds is kept
    /// twice and lookups find the first.
    void addBorderLayout(const boost::shared_ptr<BorderLayout>& layout);
    /// The document's own layout with that ID, or an empty pointer.
    boost::shared_ptr<BorderLayout> getBorderLayout(const std::string& id);
    /// Removes the first layout with that ID; nothing happens (and `modified` stays) if none.
    void deleteBorderLayout(const std::string& id);
    /// The layouts of those units, in document order; AllUnits gives every layout.
    std::vector<boost::shared_ptr<const BorderLayout>>
    borderLayoutTypes(FrameUnitsType units) const;

    void addBlockLayout(const boost::shared_ptr<BlockLayout>& layout);
    boost::shared_ptr<BlockLayout> getBlockLayout(const std::string& id);
    void deleteBlockLayout(const std::string& id);
    std::vector<boost::shared_ptr<const BlockLayout>> blockLayouts(FrameUnitsType units) const;
    /// Changes whenever a block layout is added or deleted, so that a list of them kept
    /// elsewhere knows when to build it again.
    std::uint64_t blockListVersion() const { return m_blockLayouts.version(); }

    /// Appends to the list of the location's block.
    void addBlockLocation(const boost::shared_ptr<BlockLocation>& location);
    /// The index-th location of that block, or an empty pointer.
    boost::shared_ptr<BlockLocation> getBlockLocation(const std::string& blockId, int index);
    /// The location of that block with that location ID, or an empty pointer.
    boost::shared_ptr<BlockLocation> findBlockLocation(const std::string& blockId,
                                                       const std::string& locationId);
    /// Removes the index-th location of that block. Throws std::out_of_range.
    void deleteBlockLocation(const std::string& blockId, int index);
    /// The locations of that block in list order; a non-empty style ID keeps only those whose
    /// style ID equals it.
    std::vector<boost::shared_ptr<const BlockLocation>>
    blockLocations(const std::string& blockId, const std::string& styleId) const;
    /// Every location of every block, in the document's order.
    std::vector<boost::shared_ptr<const BlockLocation>> allBlockLocations() const;

    /// Replaces `out` with a copy of the translation map.
    void fieldTranslations(TranslationMap& out) const { out = m_translations; }
    void setFieldTranslations(const TranslationMap& translations);
    const TranslationMap& translations() const { return m_translations; }
    /// The translation stored under the joined key, or nullptr.
    const std::string* findTranslation(const std::string& key) const {
        return findTranslation(HashedKey(key));
    }
    const std::string* findTranslation(const HashedKey& key) const;

    /// The same lookups with a key hashed once (the manager asks every document with it).
    boost::shared_ptr<BorderLayout> getBorderLayout(const HashedKey& id);
    boost::shared_ptr<BlockLayout> getBlockLayout(const HashedKey& id);
    /// `key` is blockLocationKey(blockId, locationId).
    boost::shared_ptr<BlockLocation> findBlockLocation(const HashedKey& key);
    static std::string blockLocationKey(const std::string& blockId, const std::string& locationId);

    /// Equal contents (file name and `modified` are not compared).
    bool sameContents(const DefinitionDocument& other) const;

private:
    struct ByLocation {
        static std::string key(const BlockLocation& location);
        static const std::string& groupKey(const BlockLocation& location) {
            return location.blockId;
        }
    };

    friend class FordefReader;

    void write(const boost::filesystem::path& file, bool ownFile);

    std::string m_filename;
    FileState m_fileState; ///< of the file read or last saved, to see changes by others
    LayoutList<BorderLayout> m_borderLayouts;
    LayoutList<BlockLayout> m_blockLayouts;
    std::vector<boost::shared_ptr<BlockLocation>> m_blockLocations;
    TranslationMap m_translations;
    // Hash index over m_translations' keys, built on first use after a change.
    mutable std::unordered_map<HashedKey, const std::string*, HashedKeyHash> m_translationIndex;
    mutable HashFilter m_translationFilter;
    mutable bool m_translationIndexValid = false;

    LookupIndex<BlockLocation, ByLocation> m_locationIndex;
};

/// The key of a field translation: the four parts joined by "_".
std::string translationKey(const std::string& language, const std::string& blockId,
                           const std::string& fieldId, const std::string& lookupKey);

} // namespace QorBorder
