#pragma once

#include "document_tree.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace QorfmtCli {

/// One difference between two documents. Lines are those of the element in each file; where the
/// element is in one file only, the other line is that of its owner (0 for the document).
struct Change {
    enum class Kind { Added, Removed, Moved, Changed };
    Kind kind = Kind::Changed;
    std::vector<const TreeNode*> path; ///< the element, from the document's top; in B when added
    std::string attribute;             ///< Changed: the attribute
    std::string oldValue;              ///< Changed: in A
    std::string newValue;              ///< Changed: in B
    int oldPosition = 0;               ///< Moved: the row in its list in A, from 1
    int newPosition = 0;               ///< Moved: in B
    int oldLine = 0;
    int newLine = 0;
};

/// What changed from `a` to `b`, in document order: elements by their identity, attributes by
/// name, and the rows of a list that moved. The changes point into both trees.
std::vector<Change> diffTrees(const TreeNode& a, const TreeNode& b);

/// The rows of `before` (keys) that moved to reach `after`: of the keys in both, those outside a
/// longest common subsequence of the two orders.
std::vector<std::string> movedKeys(const std::vector<std::string>& before,
                                   const std::vector<std::string>& after);

struct DiffOptions {
    std::string format = "text"; ///< text or json
    /// A and B; with `git`, the seven arguments git hands an external diff driver: PATH
    /// OLD-FILE OLD-HEX OLD-MODE NEW-FILE NEW-HEX NEW-MODE (/dev/null for a missing side).
    std::vector<std::string> files;
    bool git = false;
};

/// The diff command. Returns 0 when the documents are equal, 1 when they differ, 2 when one
/// cannot be read; as git's driver, 0 unless one cannot be read.
int runDiff(const DiffOptions& options, std::ostream& out, std::ostream& err);

} // namespace QorfmtCli
