#pragma once

#include <boost/filesystem/path.hpp>

#include <cstddef>
#include <cstdint>

#define XXH_STATIC_LINKING_ONLY // the state by value: no allocation per hash
#include <xxhash.h>

struct stat;

namespace QorBorder {

/// The XXH64 hash (libxxhash) of a byte stream fed in pieces of any size. Not cryptographic: it
/// tells whether a file's bytes are still those a document read or wrote.
class ContentHash {
public:
    ContentHash();
    void update(const char* data, std::size_t size);
    /// The hash of everything fed so far.
    std::uint64_t value() const;

private:
    XXH64_state_t m_state;
};

/// What a document knows of the file it was read from or last saved to.
struct FileState {
    bool known = false; ///< false until the document was read from or saved to its file
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0; ///< modification time
    std::int64_t changedNs = 0;  ///< status change time
    std::uint64_t hash = 0;      ///< ContentHash of the bytes
};

/// The state of an opened file from its fstat, with the hash of its bytes.
FileState fileStateOf(const struct stat& info, std::uint64_t size, std::uint64_t hash);

/// Whether `file` no longer holds the bytes `known` describes. When its device, inode, size and
/// times are those remembered it is taken as unchanged; otherwise its bytes are read and their
/// size and hash compared, so that a file only touched, or rewritten with the same bytes, counts
/// as unchanged; so does a file that is gone, since saving then replaces nobody's work. Throws
/// DocumentError naming the file and the reason when it cannot be examined.
bool changedOnDisk(const boost::filesystem::path& file, const FileState& known);

/// `file` made absolute, with `.`, `..` and symbolic links resolved as far as it exists: two
/// spellings of one file give the same path.
boost::filesystem::path normalisedPath(const boost::filesystem::path& file);

} // namespace QorBorder
