#pragma once

#include "document_tree.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

/// A place where OURS and THEIRS changed the same thing in two ways; the merge kept OURS there.
struct MergeConflict {
    std::string where; ///< the element, as describePath names it
    int line = 0;      ///< in OURS (of the element, or of its owner when OURS removed it)
    std::string what;  ///< both sides' values
};

struct MergeResult {
    TreeNode root;
    std::vector<MergeConflict> conflicts;
};

/// The three-way merge of two documents that both started from `base`, by the elements'
/// identities and attributes: changes to different elements or attributes are all taken, rows
/// that only one side moved move, and where the sides disagree OURS wins and a conflict says so.
MergeResult mergeTrees(const TreeNode& base, const TreeNode& ours, const TreeNode& theirs);

/// The order of a merged list: OURS' order, with the rows that only THEIRS added or moved placed
/// after the row that precedes them in THEIRS (the nearest one that OURS did not move). `result`
/// holds the keys that stay. `conflicts` receives the keys that both sides moved to different
/// places (they keep OURS' place).
std::vector<std::string> mergeOrder(const std::vector<std::string>& base,
                                    const std::vector<std::string>& ours,
                                    const std::vector<std::string>& theirs,
                                    const std::vector<std::string>& result,
                                    std::vector<std::string>* conflicts = nullptr);

struct MergeOptions {
    std::string base;
    std::string ours;
    std::string theirs;
    /// "" writes over OURS (as git's merge driver wants), or to standard output when OURS is
    /// standard input; "-" is standard output.
    std::string output;
    std::string name; ///< OURS' name in messages (git's %P); "" for OURS itself
    /// Merge even though OURS or THEIRS holds XML comments, which the canonical result drops.
    bool dropComments = false;
};

/// The merge command: writes the merged document in canonical form and lists each conflict on
/// `err` as "OURS:LINE: conflict: ...". Returns 0 when clean, 1 on conflicts, 2 when a document
/// cannot be read, OURS or THEIRS holds an XML comment (unless `dropComments`), or the result
/// cannot be written (then nothing is written).
int runMerge(const MergeOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
