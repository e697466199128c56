// The by-ID lookups of documents and of the manager against a plain scan of the same lists, over
// long random sequences of adds, deletes, copies, reloads, in-place ID edits through held
// pointers and lookups. Each run is seeded; a failure names the seed, the step and the operations
// that led to it. QORFMT_LOOKUP_SEED=N replays one seed, QORFMT_LOOKUP_STEPS=N changes the length.
#include "model/def_document_manager.h"
#include "model/definition_document.h"

#include "testutil/temp_dir.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace QorBorder;
namespace fs = boost::filesystem;

namespace {

// Few IDs, so that duplicates, collisions and renames onto a used ID are frequent.
const std::vector<std::string> kIds = {"A", "B", "C", "D", "E", "F", "G", "H"};
const std::vector<std::string> kLocationIds = {"L1", "L2", "L3"};
const std::vector<std::string> kLanguages = {"German", "French"};
const std::size_t kMaxDocuments = 8;

// What the test knows a document holds, kept by the test itself: the reference for every answer.
struct Expected {
    boost::shared_ptr<DefinitionDocument> document;
    std::vector<boost::shared_ptr<BorderLayout>> borders;
    std::vector<boost::shared_ptr<BlockLayout>> blocks;
    std::vector<boost::shared_ptr<BlockLocation>> locations;
    DefinitionDocument::TranslationMap translations;
    bool registered = false;
};

template <class T>
boost::shared_ptr<T> scanById(const std::vector<boost::shared_ptr<T>>& list,
                              const std::string& id) {
    for (const boost::shared_ptr<T>& item : list) {
        if (item->id == id) {
            return item;
        }
    }
    return boost::shared_ptr<T>();
}

boost::shared_ptr<BlockLocation>
scanLocation(const std::vector<boost::shared_ptr<BlockLocation>>& list, const std::string& blockId,
             const std::string& locationId) {
    for (const boost::shared_ptr<BlockLocation>& item : list) {
        if (item->blockId == blockId && item->id == locationId) {
            return item;
        }
    }
    return boost::shared_ptr<BlockLocation>();
}

boost::shared_ptr<BlockLocation>
scanLocationAt(const std::vector<boost::shared_ptr<BlockLocation>>& list,
               const std::string& blockId, int index) {
    int seen = 0;
    for (const boost::shared_ptr<BlockLocation>& item : list) {
        if (item->blockId == blockId && seen++ == index) {
            return item;
        }
    }
    return boost::shared_ptr<BlockLocation>();
}

template <class T>
int positionOf(const std::vector<boost::shared_ptr<T>>& list, const std::string& id) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i]->id == id) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

template <class T, class U>
bool samePointers(const std::vector<boost::shared_ptr<T>>& a,
                  const std::vector<boost::shared_ptr<U>>& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].get() != b[i].get()) {
            return false;
        }
    }
    return true;
}

std::string describe(const void* found, const void* expected) {
    std::ostringstream out;
    out << "found " << found << ", a scan finds " << expected;
    return out.str();
}

// Storage for objects of one type that is handed out again, last freed first. It lives until
// the last object built in it is gone.
template <class T>
class Recycler {
public:
    ~Recycler() {
        for (void* storage : m_free) {
            ::operator delete(storage);
        }
    }

    static boost::shared_ptr<T> create(const boost::shared_ptr<Recycler>& recycler) {
        void* storage = nullptr;
        if (recycler->m_free.empty()) {
            storage = ::operator new(sizeof(T));
        } else {
            storage = recycler->m_free.back();
            recycler->m_free.pop_back();
        }
        return boost::shared_ptr<T>(new (storage) T(), [recycler](T* object) {
            object->~T();
            recycler->m_free.push_back(object);
        });
    }

private:
    std::vector<void*> m_free;
};

class Differential {
public:
    Differential(unsigned seed, const fs::path& folder) : m_random(seed), m_folder(folder) {
        for (int i = 0; i < 3; ++i) {
            const fs::path file = newFile();
            DefinitionDocument(file.string()).save(file);
            registerDocument(m_manager.getDocument(file));
        }
        Expected untitled;
        untitled.document = boost::make_shared<DefinitionDocument>("");
        m_documents.push_back(untitled);
    }

    /// Runs `steps` random operations; "" when every answer agreed, else the first difference.
    std::string run(int steps) {
        for (int step = 0; step < steps; ++step) {
            operate();
            // Checks now and then, so that several changes can pile up between lookups.
            std::string difference;
            if (chance(8)) {
                difference = checkEverything();
            } else if (chance(2)) {
                difference = checkOneLookup();
            }
            if (!difference.empty()) {
                std::string trail;
                for (const std::string& operation : m_trail) {
                    trail += "\n  " + operation;
                }
                return "step " + std::to_string(step) + ": " + difference +
                       "\nlast operations:" + trail;
            }
        }
        return "";
    }

private:
    bool chance(int oneIn) { return pick(oneIn) == 0; }
    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }
    template <class T>
    const T& pickFrom(const std::vector<T>& list) {
        return list[pick(list.size())];
    }
    void note(const std::string& operation) {
        m_trail.push_back(operation);
        if (m_trail.size() > 12) {
            m_trail.pop_front();
        }
    }

    std::string anyId() {
        // Now and then an ID nobody used before.
        return chance(10) ? "N" + std::to_string(m_fresh++) : pickFrom(kIds);
    }
    fs::path newFile() { return m_folder / ("doc" + std::to_string(m_files++) + ".fordef"); }

    // Three ways of allocating: make_shared keeps the memory of a freed object until the last
    // weak reference goes, plain new gives it back at once, and the recycler builds the next
    // object where the last freed one lived, as an allocator may.
    template <class T>
    boost::shared_ptr<T> create() {
        switch (pick(4)) {
        case 0:
            return boost::make_shared<T>();
        case 1:
            return boost::shared_ptr<T>(new T());
        default:
            return Recycler<T>::create(recycler<T>());
        }
    }

    template <class T>
    void hold(std::vector<boost::shared_ptr<T>>& held, const boost::shared_ptr<T>& object) {
        if (object && chance(2)) {
            held.push_back(object);
            if (held.size() > 8) {
                held.erase(held.begin() + static_cast<long>(pick(held.size())));
            }
        }
    }

    void registerDocument(const boost::shared_ptr<DefinitionDocument>& document) {
        Expected expected;
        expected.document = document;
        expected.registered = true;
        adoptLists(expected);
        m_documents.push_back(expected);
        m_registered.push_back(m_documents.size() - 1);
    }

    // A document the test did not build itself (read from a file, copied): its lists become
    // the reference after their IDs were compared with the source's.
    void adoptLists(Expected& expected) {
        const DefinitionDocument& document = *expected.document;
        expected.borders.clear();
        for (const auto& border : document.borderLayoutTypes(AllUnits)) {
            expected.borders.push_back(boost::const_pointer_cast<BorderLayout>(border));
        }
        expected.blocks.clear();
        for (const auto& block : document.blockLayouts(AllUnits)) {
            expected.blocks.push_back(boost::const_pointer_cast<BlockLayout>(block));
        }
        expected.locations.clear();
        for (const auto& location : document.allBlockLocations()) {
            expected.locations.push_back(boost::const_pointer_cast<BlockLocation>(location));
        }
        expected.translations = document.translations();
    }

    static std::string idsOf(const Expected& expected) {
        std::string ids;
        for (const auto& border : expected.borders) {
            ids += "b:" + border->id + " ";
        }
        for (const auto& block : expected.blocks) {
            ids += "k:" + block->id + " ";
        }
        for (const auto& location : expected.locations) {
            ids += "l:" + location->blockId + "/" + location->id + " ";
        }
        return ids;
    }

    void operate() {
        // Mostly the document worked on last, as a user works in one document for a while.
        if (chance(3)) {
            m_current = pick(m_documents.size());
        }
        Expected& target = m_documents[m_current];
        DefinitionDocument& document = *target.document;
        const std::string name = document.filename().empty() ? "untitled" : document.filename();
        switch (pick(17)) {
        case 0: {
            auto border = create<BorderLayout>();
            border->id = anyId();
            document.addBorderLayout(border);
            target.borders.push_back(border);
            hold(m_borders, border);
            note("add border " + border->id + " to " + name);
            break;
        }
        case 1: {
            auto block = create<BlockLayout>();
            block->id = anyId();
            document.addBlockLayout(block);
            target.blocks.push_back(block);
            hold(m_blocks, block);
            note("add block " + block->id + " to " + name);
            break;
        }
        case 2: {
            auto location = create<BlockLocation>();
            location->blockId = pickFrom(kIds);
            location->id = pickFrom(kLocationIds);
            document.addBlockLocation(location);
            target.locations.push_back(location);
            hold(m_locations, location);
            note("add location " + location->blockId + "/" + location->id + " to " + name);
            break;
        }
        case 3: {
            const std::string id =
                target.borders.empty() || chance(3) ? anyId() : pickFrom(target.borders)->id;
            document.deleteBorderLayout(id);
            const int at = positionOf(target.borders, id);
            if (at >= 0) {
                target.borders.erase(target.borders.begin() + at);
            }
            note("delete border " + id + " of " + name);
            break;
        }
        case 4: {
            const std::string id =
                target.blocks.empty() || chance(3) ? anyId() : pickFrom(target.blocks)->id;
            document.deleteBlockLayout(id);
            const int at = positionOf(target.blocks, id);
            if (at >= 0) {
                target.blocks.erase(target.blocks.begin() + at);
            }
            note("delete block " + id + " of " + name);
            break;
        }
        case 5: {
            const std::string blockId = pickFrom(kIds);
            const int count = static_cast<int>(document.blockLocations(blockId, "").size());
            if (count > 0) {
                const int index = static_cast<int>(pick(static_cast<std::size_t>(count)));
                const auto gone = scanLocationAt(target.locations, blockId, index);
                document.deleteBlockLocation(blockId, index);
                for (std::size_t i = 0; i < target.locations.size(); ++i) {
                    if (target.locations[i] == gone) {
                        target.locations.erase(target.locations.begin() + static_cast<long>(i));
                        break;
                    }
                }
                note("delete location " + blockId + "[" + std::to_string(index) + "] of " + name);
            }
            break;
        }
        case 6: {
            // A dialog opened on an object of the document, found by a lookup.
            const std::string id = anyId();
            switch (pick(4)) {
            case 0:
                hold(m_borders,
                     chance(2) ? document.getBorderLayout(id) : m_manager.getBorderLayout(id));
                break;
            case 1:
                hold(m_blocks,
                     chance(2) ? document.getBlockLayout(id) : m_manager.getBlockLayout(id));
                break;
            case 2:
                hold(m_locations,
                     document.getBlockLocation(pickFrom(kIds), static_cast<int>(pick(3))));
                break;
            default:
                hold(m_locations, chance(2)
                                      ? document.findBlockLocation(id, pickFrom(kLocationIds))
                                      : m_manager.getBlockLocation(id, pickFrom(kLocationIds)));
                break;
            }
            note("look up " + id + " in " + name + " and maybe hold it");
            break;
        }
        case 7:
        case 8:
        case 9: {
            // A dialog changes an ID in place through the pointer it holds.
            const std::string id = anyId();
            const std::size_t kind = pick(3);
            if (kind == 0 && !m_borders.empty()) {
                BorderLayout& border = *pickFrom(m_borders);
                note("rename border " + border.id + " to " + id);
                border.id = id;
            } else if (kind == 1 && !m_blocks.empty()) {
                BlockLayout& block = *pickFrom(m_blocks);
                note("rename block " + block.id + " to " + id);
                block.id = id;
            } else if (kind == 2 && !m_locations.empty()) {
                BlockLocation& location = *pickFrom(m_locations);
                if (chance(2)) {
                    location.blockId = pickFrom(kIds);
                } else {
                    location.id = pickFrom(kLocationIds);
                }
                note("change location to " + location.blockId + "/" + location.id);
            }
            break;
        }
        case 10:
            if (m_locations.size() >= 2) {
                // The locations page exchanges two entries by assignment.
                BlockLocation& a = *pickFrom(m_locations);
                BlockLocation& b = *pickFrom(m_locations);
                const BlockLocation saved = a;
                a = b;
                b = saved;
                note("exchange locations " + a.id + " and " + b.id);
            }
            break;
        case 11:
        case 12: {
            // Dialogs close and let go of their pointers, mostly the last opened first.
            auto release = [this](auto& held) {
                if (!held.empty()) {
                    held.erase(chance(2) ? held.end() - 1
                                         : held.begin() + static_cast<long>(pick(held.size())));
                }
            };
            release(m_borders);
            release(m_blocks);
            release(m_locations);
            if (chance(8)) {
                m_borders.clear();
                m_blocks.clear();
                m_locations.clear();
            }
            note("release held pointers");
            break;
        }
        case 13: {
            DefinitionDocument::TranslationMap translations;
            for (int i = 0; i < 3; ++i) {
                translations[translationKey(pickFrom(kLanguages), pickFrom(kIds), "F",
                                            pickFrom(kLocationIds))] = anyId();
            }
            document.setFieldTranslations(translations);
            target.translations = translations;
            note("set translations of " + name);
            break;
        }
        case 14:
            if (m_documents.size() < kMaxDocuments) {
                // Save as: a deep copy, written under a new name and registered.
                Expected copy;
                copy.document = boost::make_shared<DefinitionDocument>(document);
                adoptLists(copy);
                if (idsOf(copy) != idsOf(target)) {
                    m_pending = "the copy of " + name + " holds " + idsOf(copy) + ", the source " +
                                idsOf(target);
                }
                const fs::path file = newFile();
                copy.document->save(file);
                m_manager.addDocument(copy.document);
                copy.registered = true;
                m_documents.push_back(copy);
                m_registered.push_back(m_documents.size() - 1);
                note("save " + name + " as " + file.string());
            }
            break;
        case 15:
            if (m_documents.size() < kMaxDocuments) {
                // Written to a new file and opened from it: the document as the reader builds it.
                const fs::path file = newFile();
                const std::string written = idsOf(target);
                DefinitionDocument(document).save(file);
                registerDocument(m_manager.getDocument(file)); // `target` may move
                if (idsOf(m_documents.back()) != written) {
                    m_pending = "reading " + file.string() + " gave " + idsOf(m_documents.back()) +
                                ", written from " + written;
                }
                note("write " + name + " to " + file.string() + " and open it");
            } else if (target.registered &&
                       m_manager.getDocument(document.filename()) != target.document) {
                m_pending = "opening " + name + " again gave another document";
            }
            break;
        default:
            if (m_documents.size() < kMaxDocuments && chance(3)) {
                Expected copy;
                copy.document = boost::make_shared<DefinitionDocument>(document);
                adoptLists(copy);
                m_documents.push_back(copy);
                note("copy " + name + " (untitled)");
            }
            break;
        }
    }

    std::vector<std::string> probeIds() {
        std::vector<std::string> ids = kIds;
        for (int i = 0; i < 3 && m_fresh > 0; ++i) {
            ids.push_back("N" + std::to_string(pick(m_fresh)));
        }
        return ids;
    }

    std::string checkDocument(Expected& expected) {
        DefinitionDocument& document = *expected.document;
        const std::string name = document.filename().empty() ? "untitled" : document.filename();
        if (!samePointers(document.borderLayoutTypes(AllUnits), expected.borders) ||
            !samePointers(document.blockLayouts(AllUnits), expected.blocks) ||
            !samePointers(document.allBlockLocations(), expected.locations) ||
            document.translations() != expected.translations) {
            return name + " does not hold the expected lists";
        }
        for (const std::string& id : probeIds()) {
            const auto border = document.getBorderLayout(id);
            if (border != scanById(expected.borders, id)) {
                return name + ": getBorderLayout(" + id + ") " +
                       describe(border.get(), scanById(expected.borders, id).get());
            }
            const auto block = document.getBlockLayout(id);
            if (block != scanById(expected.blocks, id)) {
                return name + ": getBlockLayout(" + id + ") " +
                       describe(block.get(), scanById(expected.blocks, id).get());
            }
            for (const std::string& locationId : kLocationIds) {
                const auto found = document.findBlockLocation(id, locationId);
                const auto scanned = scanLocation(expected.locations, id, locationId);
                if (found != scanned) {
                    return name + ": findBlockLocation(" + id + ", " + locationId + ") " +
                           describe(found.get(), scanned.get());
                }
            }
            for (int index = -1; index <= 3; ++index) {
                const auto found = document.getBlockLocation(id, index);
                const auto scanned = scanLocationAt(expected.locations, id, index);
                if (found != scanned) {
                    return name + ": getBlockLocation(" + id + ", " + std::to_string(index) + ") " +
                           describe(found.get(), scanned.get());
                }
            }
        }
        return "";
    }

    std::string checkManager() {
        const auto documents = m_manager.documents();
        if (documents.size() != m_registered.size()) {
            return "the manager holds " + std::to_string(documents.size()) + " documents, not " +
                   std::to_string(m_registered.size());
        }
        for (std::size_t i = 0; i < documents.size(); ++i) {
            if (documents[i] != m_documents[m_registered[i]].document) {
                return "the manager's document " + std::to_string(i) + " is another one";
            }
        }
        for (const std::string& id : probeIds()) {
            boost::shared_ptr<BorderLayout> border;
            boost::shared_ptr<BlockLayout> block;
            for (std::size_t at : m_registered) {
                if (!border) {
                    border = scanById(m_documents[at].borders, id);
                }
                if (!block) {
                    block = scanById(m_documents[at].blocks, id);
                }
            }
            if (m_manager.getBorderLayout(id) != border) {
                return "manager getBorderLayout(" + id + ") " +
                       describe(m_manager.getBorderLayout(id).get(), border.get());
            }
            if (m_manager.getBlockLayout(id) != block) {
                return "manager getBlockLayout(" + id + ") " +
                       describe(m_manager.getBlockLayout(id).get(), block.get());
            }
            for (const std::string& locationId : kLocationIds) {
                boost::shared_ptr<BlockLocation> location;
                for (std::size_t at : m_registered) {
                    if (!location) {
                        location = scanLocation(m_documents[at].locations, id, locationId);
                    }
                }
                const auto found = m_manager.getBlockLocation(id, locationId);
                if (found != location) {
                    return "manager getBlockLocation(" + id + ", " + locationId + ") " +
                           describe(found.get(), location.get());
                }
                for (const std::string& language : kLanguages) {
                    std::string text = kNoTranslationFound;
                    const std::string key = translationKey(language, id, "F", locationId);
                    for (std::size_t at : m_registered) {
                        const auto& map = m_documents[at].translations;
                        if (map.count(key) != 0) {
                            text = map.at(key);
                            break;
                        }
                    }
                    if (m_manager.fieldTranslation(language, id, "F", locationId) != text) {
                        return "manager fieldTranslation(" + key + ") is not " + text;
                    }
                }
            }
        }
        return "";
    }

    std::string checkEverything() {
        if (!m_pending.empty()) {
            return m_pending;
        }
        for (Expected& expected : m_documents) {
            const std::string difference = checkDocument(expected);
            if (!difference.empty()) {
                return difference;
            }
        }
        return checkManager();
    }

    // One lookup, as a dialog makes them between edits.
    std::string checkOneLookup() {
        if (!m_pending.empty()) {
            return m_pending;
        }
        const std::string id = anyId();
        Expected& expected = m_documents[pick(m_documents.size())];
        const auto found = expected.document->getBlockLayout(id);
        if (found != scanById(expected.blocks, id)) {
            return "getBlockLayout(" + id + ") " +
                   describe(found.get(), scanById(expected.blocks, id).get());
        }
        return "";
    }

    template <class T>
    boost::shared_ptr<Recycler<T>>& recycler();

    std::mt19937 m_random;
    fs::path m_folder;
    boost::shared_ptr<Recycler<BorderLayout>> m_borderStorage =
        boost::make_shared<Recycler<BorderLayout>>();
    boost::shared_ptr<Recycler<BlockLayout>> m_blockStorage =
        boost::make_shared<Recycler<BlockLayout>>();
    boost::shared_ptr<Recycler<BlockLocation>> m_locationStorage =
        boost::make_shared<Recycler<BlockLocation>>();
    DefDocumentManagerImpl m_manager;
    std::vector<Expected> m_documents;
    std::vector<std::size_t> m_registered; ///< positions in m_documents, in registration order
    std::vector<boost::shared_ptr<BorderLayout>> m_borders; ///< held by open "dialogs"
    std::vector<boost::shared_ptr<BlockLayout>> m_blocks;
    std::vector<boost::shared_ptr<BlockLocation>> m_locations;
    std::deque<std::string> m_trail;
    std::string m_pending; ///< a difference found during an operation
    std::size_t m_current = 0;
    std::size_t m_fresh = 0;
    int m_files = 0;
};

template <>
boost::shared_ptr<Recycler<BorderLayout>>& Differential::recycler<BorderLayout>() {
    return m_borderStorage;
}
template <>
boost::shared_ptr<Recycler<BlockLayout>>& Differential::recycler<BlockLayout>() {
    return m_blockStorage;
}
template <>
boost::shared_ptr<Recycler<BlockLocation>>& Differential::recycler<BlockLocation>() {
    return m_locationStorage;
}

int environmentNumber(const char* name, int fallback) {
    const char* value = std::getenv(name);
    return value && *value ? std::atoi(value) : fallback;
}

} // namespace

TEST(LookupDifferential, EveryByIdAnswerEqualsAPlainScanAfterRandomEdits) {
    std::vector<unsigned> seeds;
    if (const int only = environmentNumber("QORFMT_LOOKUP_SEED", 0)) {
        seeds.push_back(static_cast<unsigned>(only));
    } else {
        // Three fixed seeds, and one new each run.
        seeds = {1, 2, 3, std::random_device()()};
    }
    const int steps = environmentNumber("QORFMT_LOOKUP_STEPS", 3000);
    for (unsigned seed : seeds) {
        TestUtil::TempDir dir;
        Differential differential(seed, dir.path());
        const std::string difference = differential.run(steps);
        ASSERT_EQ(difference, "") << "seed " << seed << " (replay with QORFMT_LOOKUP_SEED=" << seed
                                  << ")";
    }
}
