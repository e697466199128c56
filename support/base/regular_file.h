#pragma once

#include <boost/filesystem/path.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>

#include <sys/types.h>

struct stat;

namespace Base {

/// The largest file of each kind the programs read; a larger one is refused before it is read.
constexpr std::uint64_t kMaxDocumentBytes = std::uint64_t(1) << 30;  ///< .fordef: 1 GiB
constexpr std::uint64_t kMaxCatalogBytes = std::uint64_t(256) << 20; ///< PO catalogs: 256 MiB
constexpr std::uint64_t kMaxSettingsBytes = std::uint64_t(1) << 20;  ///< *.conf: 1 MiB

/// Why a file could not be read; what() is the reason alone, without the file's name.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a file of this mode is, for a message: "a FIFO (named pipe)", "a folder", ...
std::string fileKind(mode_t mode);

/// The whole content of `file`, which must be a regular file (a link is followed to one) of at
/// most `limit` bytes; `kind` names the kind of file in the message ("a document"). A FIFO,
/// device, socket or folder is refused at once without waiting for a writer. `info`, when
/// given, receives the file's status. Throws UnreadableFile with the reason.
std::string readRegularFile(const boost::filesystem::path& file, std::uint64_t limit,
                            const char* kind, struct stat* info = nullptr);

/// `limit` bytes in the largest unit that divides it ("1 GiB", "256 MiB", "1000 bytes").
std::string byteCount(std::uint64_t limit);

} // namespace Base
