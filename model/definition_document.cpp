#include "model/definition_document.h"

#include "model/document_error.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"
#include "model/list_util.h"

#include <boost/filesystem/operations.hpp>

namespace fs = boost::filesystem;

namespace QorBorder {

namespace {

template <class T, class Index>
boost::shared_ptr<T> lookUp(const HashedKey& id, std::vector<boost::shared_ptr<T>>& list,
                            Index& index) {
    const long position = index.find(id, list);
    if (position < 0) {
        return boost::shared_ptr<T>();
    }
    index.lend(static_cast<std::size_t>(position), list);
    return list[static_cast<std::size_t>(position)];
}

} // namespace

std::string DefinitionDocument::ByLocation::key(const BlockLocation& location) {
    return blockLocationKey(location.blockId, location.id);
}

std::string DefinitionDocument::blockLocationKey(const std::string& blockId,
                                                 const std::string& locationId) {
    // Length-prefixed, so that no two (block, location) pairs give the same key.
    return std::to_string(blockId.size()) + ":" + blockId + locationId;
}

DefinitionDocument::DefinitionDocument(const std::string& filename) : m_filename(filename) {}

DefinitionDocument::DefinitionDocument(const DefinitionDocument& other)
    : modified(other.modified), m_filename(other.m_filename), m_fileState(other.m_fileState),
      m_borderLayouts(other.m_borderLayouts), m_blockLayouts(other.m_blockLayouts),
      m_blockLocations(ListUtil::deepCopy(other.m_blockLocations)),
      m_translations(other.m_translations) {}

DefinitionDocument::~DefinitionDocument() = default;

boost::shared_ptr<DefinitionDocument> DefinitionDocument::load(const fs::path& file) {
    return FordefReader::read(file);
}

std::string DefinitionDocument::displayName() const {
    if (m_filename.empty()) {
        return "Untitled";
    }
    return fs::path(m_filename).filename().string();
}

std::string DefinitionDocument::displayLocation() const {
    if (m_filename.empty()) {
        return "";
    }
    return fs::path(m_filename).parent_path().string();
}

void DefinitionDocument::save() {
    if (m_filename.empty()) {
        throw DocumentError("(untitled)", 0, "the document has no file name yet");
    }
    write(m_filename, true);
}

void DefinitionDocument::save(const fs::path& file) {
    write(file, !m_filename.empty() && normalisedPath(file) == normalisedPath(m_filename));
}

void DefinitionDocument::write(const fs::path& file, bool ownFile) {
    // Checked before writing, and again just before the new file replaces the old one, so that
    // a change made while this save was writing is not replaced either.
    const FileState known = ownFile ? m_fileState : FileState();
    const auto refuseIfChanged = [&file, &known] {
        if (changedOnDisk(file, known)) {
            throw FileChangedError(file.string());
        }
    };
    refuseIfChanged();
    m_fileState = FordefWriter::write(*this, file, refuseIfChanged);
    m_filename = file.string();
    modified = false;
}

void DefinitionDocument::addBorderLayout(const boost::shared_ptr<BorderLayout>& layout) {
    m_borderLayouts.add(layout);
    modified = true;
}

boost::shared_ptr<BorderLayout> DefinitionDocument::getBorderLayout(const std::string& id) {
    return m_borderLayouts.find(HashedKey(id));
}

boost::shared_ptr<BorderLayout> DefinitionDocument::getBorderLayout(const HashedKey& id) {
    return m_borderLayouts.find(id);
}

void DefinitionDocument::deleteBorderLayout(const std::string& id) {
    if (m_borderLayouts.remove(HashedKey(id))) {
        modified = true;
    }
}

std::vector<boost::shared_ptr<const BorderLayout>>
DefinitionDocument::borderLayoutTypes(FrameUnitsType units) const {
    return m_borderLayouts.withUnits(units);
}

void DefinitionDocument::addBlockLayout(const boost::shared_ptr<BlockLayout>& layout) {
    m_blockLayouts.add(layout);
    modified = true;
}

boost::shared_ptr<BlockLayout> DefinitionDocument::getBlockLayout(const std::string& id) {
    return m_blockLayouts.find(HashedKey(id));
}

boost::shared_ptr<BlockLayout> DefinitionDocument::getBlockLayout(const HashedKey& id) {
    return m_blockLayouts.find(id);
}

void DefinitionDocument::deleteBlockLayout(const std::string& id) {
    if (m_blockLayouts.remove(HashedKey(id))) {
        modified = true;
    }
}

std::vector<boost::shared_ptr<const BlockLayout>>
DefinitionDocument::blockLayouts(FrameUnitsType units) const {
    return m_blockLayouts.withUnits(units);
}

void DefinitionDocument::addBlockLocation(const boost::shared_ptr<BlockLocation>& location) {
    m_blockLocations.push_back(location);
    m_locationIndex.appended(m_blockLocations);
    modified = true;
}

boost::shared_ptr<BlockLocation> DefinitionDocument::getBlockLocation(const std::string& blockId,
                                                                      int index) {
    const std::vector<std::size_t>* positions = m_locationIndex.group(blockId, m_blockLocations);
    if (!positions || index < 0 || static_cast<std::size_t>(index) >= positions->size()) {
        return boost::shared_ptr<BlockLocation>();
    }
    const std::size_t position = (*positions)[static_cast<std::size_t>(index)];
    m_locationIndex.lend(position, m_blockLocations);
    return m_blockLocations[position];
}

boost::shared_ptr<BlockLocation>
DefinitionDocument::findBlockLocation(const std::string& blockId, const std::string& locationId) {
    const std::string key = blockLocationKey(blockId, locationId);
    return findBlockLocation(HashedKey(key));
}

boost::shared_ptr<BlockLocation> DefinitionDocument::findBlockLocation(const HashedKey& key) {
    return lookUp(key, m_blockLocations, m_locationIndex);
}

void DefinitionDocument::deleteBlockLocation(const std::string& blockId, int index) {
    const std::vector<std::size_t>* positions = m_locationIndex.group(blockId, m_blockLocations);
    const std::size_t at =
        ListUtil::checkedIndex(index, positions ? positions->size() : 0, "deleteBlockLocation");
    const std::size_t position = (*positions)[at];
    m_blockLocations.erase(m_blockLocations.begin() + static_cast<long>(position));
    m_locationIndex.erased(position);
    modified = true;
}

std::vector<boost::shared_ptr<const BlockLocation>>
DefinitionDocument::blockLocations(const std::string& blockId, const std::string& styleId) const {
    std::vector<boost::shared_ptr<const BlockLocation>> result;
    for (const boost::shared_ptr<BlockLocation>& location : m_blockLocations) {
        if (location->blockId == blockId && (styleId.empty() || location->styleId == styleId)) {
            result.push_back(location);
        }
    }
    return result;
}

std::vector<boost::shared_ptr<const BlockLocation>> DefinitionDocument::allBlockLocations() const {
    return ListUtil::constView(m_blockLocations);
}

void DefinitionDocument::setFieldTranslations(const TranslationMap& translations) {
    m_translations = translations;
    m_translationIndex.clear();
    m_translationIndexValid = false;
    modified = true;
}

const std::string* DefinitionDocument::findTranslation(const HashedKey& key) const {
    if (!m_translationIndexValid) {
        m_translationIndex.clear();
        m_translationIndex.reserve(m_translations.size());
        m_translationFilter.reset(m_translations.size());
        for (const auto& entry : m_translations) {
            const HashedKey stored(entry.first);
            m_translationIndex.emplace(stored, &entry.second);
            m_translationFilter.add(stored.hash);
        }
        m_translationIndexValid = true;
    }
    if (!m_translationFilter.mayContain(key.hash)) {
        return nullptr;
    }
    const auto it = m_translationIndex.find(key);
    return it == m_translationIndex.end() ? nullptr : it->second;
}

bool DefinitionDocument::sameContents(const DefinitionDocument& other) const {
    return ListUtil::deepEqual(m_borderLayouts.all(), other.m_borderLayouts.all()) &&
           ListUtil::deepEqual(m_blockLayouts.all(), other.m_blockLayouts.all()) &&
           ListUtil::deepEqual(m_blockLocations, other.m_blockLocations) &&
           m_translations == other.m_translations;
}

std::string translationKey(const std::string& language, const std::string& blockId,
                           const std::string& fieldId, const std::string& lookupKey) {
    return language + "_" + blockId + "_" + fieldId + "_" + lookupKey;
}

} // namespace QorBorder
