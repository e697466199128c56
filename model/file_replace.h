#pragma once

#include "model/file_state.h"

#include <boost/filesystem/path.hpp>

#include <cstddef>
#include <functional>
#include <string>

namespace QorBorder {

/// Receives a file's content piece by piece.
using ChunkSink = std::function<void(const char* data, std::size_t size)>;
/// Hands a file's content to the sink it is given.
using ContentProducer = std::function<void(const ChunkSink&)>;
/// Runs after the new file is complete and on disk, just before it replaces the old one; it
/// throws to refuse the replacement.
using CommitCheck = std::function<void()>;

/// How the new file is held while it is written.
enum class TemporaryFile {
    /// Unnamed (O_TMPFILE) where the file system allows it, else named as below.
    Unnamed,
    /// A hidden file `.NAME.qorfmt-PID-START-HOST.XXXXXXXX` beside the target, naming the saving
    /// process and its machine; a save killed while writing leaves it, and the next save or open
    /// in the folder removes it.
    Named,
};

/// Replaces `file` atomically with what `produce` hands to its sink. The bytes go to a new,
/// unnamed file in the same folder, which is flushed to disk and only then linked in under a
/// temporary name and renamed over the old file (a symbolic link is followed). Linking and
/// renaming are done by a vforked child, which finishes them even if this process is killed
/// meanwhile: a save killed at any instant leaves the old file or the new one, and nothing else.
/// The child is in a process group of its own, so that a kill of the saver's group does not stop
/// it either; a temporary left all the same (the kill fell before the child got its group) is
/// removed by the next save or open in the folder. A link whose target is gone gets the target
/// created. SIGXFSZ and SIGPIPE are held off while writing: a file size limit is a failed save.
/// Only a regular file is replaced. The new file gets the old one's permissions. Returns the state
/// of the new file. Throws DocumentError naming the file and the reason, and whatever `produce` or
/// `check` throw; the old file is then untouched and nothing is left in the folder.
FileState replaceFileAtomically(const boost::filesystem::path& file, const ContentProducer& produce,
                                const CommitCheck& check = CommitCheck(),
                                TemporaryFile temporary = TemporaryFile::Unnamed);
FileState replaceFileAtomically(const boost::filesystem::path& file, const std::string& content);

/// Removes the hidden temporaries of saves in `folder` whose process is gone: files of this user
/// named `.NAME.qorfmt-PID-START-HOST.XXXXXXXX` where HOST is this machine and no process PID
/// started at START runs on it any more.
/// Returns how many were removed; a folder that cannot be listed counts 0.
int removeAbandonedTemporaries(const boost::filesystem::path& folder);

} // namespace QorBorder
