#pragma once

// The stand-in's own reader of regular files, beside the product's one in support/base: the
// stand-in plays NX, which has nothing of the product, so it may not link the product's libraries.

#include <boost/filesystem/path.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace nxsim::detail {

/// The largest journal, part and dialog resource file the stand-in reads.
constexpr std::uint64_t kMaxJournalBytes = std::uint64_t(64) << 20;
constexpr std::uint64_t kMaxPartBytes = std::uint64_t(256) << 20;
constexpr std::uint64_t kMaxDialogBytes = std::uint64_t(16) << 20;

/// Why a file could not be read; what() is the reason alone.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The whole content of `file`, which must be a regular file (a link is followed to one) of at
/// most `limit` bytes; `kind` names the kind of file in the message ("a journal"). A FIFO,
/// device, socket or folder is refused at once. The stand-in needs nothing of the product, so
/// it has this reader of its own. Throws UnreadableFile.
std::string readRegularFile(const boost::filesystem::path& file, std::uint64_t limit,
                            const char* kind);

enum class KeepLineBreaks { No, Yes };

/// `text` with control characters and bytes that are not UTF-8 written as "\xNN" (tab, line
/// feed and carriage return as "\t", "\n", "\r", unless line feeds are kept), for messages
/// that quote what a file holds.
std::string visibleText(const std::string& text, KeepLineBreaks keep = KeepLineBreaks::No);

} // namespace nxsim::detail
