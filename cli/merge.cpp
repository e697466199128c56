#include "merge.h"

#include "diff.h"
#include "input.h"
#include "site.h"

#include "model/document_error.h"
#include "model/file_replace.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <utility>

namespace QorfmtCli {

namespace {

// A value in a conflict message, on one line.
std::string shown(const std::string& value) {
    std::string text = "\"";
    for (const char c : value) {
        if (c == '\n') {
            text += "\\n";
        } else if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else {
            text += c;
        }
    }
    return text + '"';
}

using Group = std::vector<const TreeNode*>;

// The children of a node by list, and the lists in the order they first appear.
struct Lists {
    std::vector<std::string> order;
    std::map<std::string, Group> items;
};

Lists listsOf(const TreeNode* node) {
    Lists lists;
    if (!node) {
        return lists;
    }
    for (const TreeNode& child : node->children) {
        Group& group = lists.items[child.list];
        if (group.empty()) {
            lists.order.push_back(child.list);
        }
        group.push_back(&child);
    }
    return lists;
}

const TreeNode* findKey(const Group& group, const std::string& key) {
    for (const TreeNode* node : group) {
        if (node->key == key) {
            return node;
        }
    }
    return nullptr;
}

std::vector<std::string> keysOf(const Group& group) {
    std::vector<std::string> keys;
    for (const TreeNode* node : group) {
        keys.push_back(node->key);
    }
    return keys;
}

// The key before `key` in `order` among the keys in `among`, or "" at the start.
std::string predecessor(const std::vector<std::string>& order, const std::string& key,
                        const std::set<std::string>& among) {
    std::string previous;
    for (const std::string& k : order) {
        if (k == key) {
            return previous;
        }
        if (among.count(k)) {
            previous = k;
        }
    }
    return previous;
}

class Merger {
public:
    std::vector<MergeConflict> conflicts;

    TreeNode merge(const TreeNode* base, const TreeNode& ours, const TreeNode& theirs) {
        TreeNode result = ours;
        result.children.clear();
        m_path.push_back(&ours);
        for (auto& attribute : result.attributes) {
            const std::string* theirValue = theirs.attribute(attribute.first);
            const std::string* baseValue = base ? base->attribute(attribute.first) : nullptr;
            if (!theirValue || *theirValue == attribute.second) {
                continue;
            }
            if (baseValue && *baseValue == attribute.second) {
                attribute.second = *theirValue;
            } else if (!baseValue || *baseValue != *theirValue) {
                conflict(ours.line, baseValue ? attribute.first + " changed to " +
                                                    shown(attribute.second) + " in ours and to " +
                                                    shown(*theirValue) + " in theirs (was " +
                                                    shown(*baseValue) + ")"
                                              : attribute.first + " is " + shown(attribute.second) +
                                                    " in ours and " + shown(*theirValue) +
                                                    " in theirs (added on both sides)");
            }
        }
        const Lists baseLists = listsOf(base);
        const Lists ourLists = listsOf(&ours);
        const Lists theirLists = listsOf(&theirs);
        std::map<std::string, std::vector<TreeNode>> merged;
        std::vector<std::string> listIds;
        for (const std::string& id : ourLists.order) {
            listIds.push_back(id);
        }
        for (const std::string& id : theirLists.order) {
            if (!ourLists.items.count(id)) {
                listIds.push_back(id);
            }
        }
        for (const std::string& id : listIds) {
            merged[id] =
                mergeList(ours, value(baseLists, id), value(ourLists, id), value(theirLists, id));
        }
        std::vector<std::string> resultIds;
        for (const std::string& id : listIds) {
            if (!merged[id].empty()) {
                resultIds.push_back(id);
            }
        }
        for (const std::string& id :
             mergeOrder(baseLists.order, ourLists.order, theirLists.order, resultIds)) {
            for (TreeNode& child : merged[id]) {
                result.children.push_back(std::move(child));
            }
        }
        m_path.pop_back();
        return result;
    }

private:
    static Group value(const Lists& lists, const std::string& id) {
        const auto found = lists.items.find(id);
        return found == lists.items.end() ? Group() : found->second;
    }

    void conflict(int line, const std::string& what) {
        std::vector<const TreeNode*> path(m_path.begin() + 1, m_path.end());
        conflicts.push_back({describePath(path), line, what});
    }

    std::vector<TreeNode> mergeList(const TreeNode& owner, const Group& base, const Group& ours,
                                    const Group& theirs) {
        std::map<std::string, TreeNode> kept;
        std::vector<std::string> keys;
        for (const TreeNode* mine : ours) {
            const TreeNode* before = findKey(base, mine->key);
            const TreeNode* other = findKey(theirs, mine->key);
            if (other) {
                kept.emplace(mine->key, merge(before, *mine, *other));
            } else if (!before) {
                kept.emplace(mine->key, *mine);
            } else if (!mine->sameContents(*before)) {
                m_path.push_back(mine);
                conflict(mine->line, "changed in ours, removed in theirs: kept");
                m_path.pop_back();
                kept.emplace(mine->key, *mine);
            } else {
                continue;
            }
            keys.push_back(mine->key);
        }
        for (const TreeNode* other : theirs) {
            if (findKey(ours, other->key)) {
                continue;
            }
            const TreeNode* before = findKey(base, other->key);
            if (!before) {
                kept.emplace(other->key, *other);
                keys.push_back(other->key);
            } else if (!other->sameContents(*before)) {
                m_path.push_back(other);
                conflict(owner.line, "removed in ours, changed in theirs: left out");
                m_path.pop_back();
            }
        }
        std::vector<std::string> moveConflicts;
        const bool ordered = !ours.empty() ? ours.front()->ordered
                                           : (!theirs.empty() ? theirs.front()->ordered : true);
        const std::vector<std::string> order = mergeOrder(
            keysOf(base), keysOf(ours), keysOf(theirs), keys, ordered ? &moveConflicts : nullptr);
        for (const std::string& key : moveConflicts) {
            const TreeNode* mine = findKey(ours, key);
            m_path.push_back(mine);
            conflict(mine->line, "moved to different rows in ours and in theirs: kept where "
                                 "ours has it");
            m_path.pop_back();
        }
        std::vector<TreeNode> result;
        for (const std::string& key : order) {
            result.push_back(std::move(kept.at(key)));
        }
        return result;
    }

    std::vector<const TreeNode*> m_path;
};

} // namespace

std::vector<std::string> mergeOrder(const std::vector<std::string>& base,
                                    const std::vector<std::string>& ours,
                                    const std::vector<std::string>& theirs,
                                    const std::vector<std::string>& result,
                                    std::vector<std::string>* conflicts) {
    const std::set<std::string> stays(result.begin(), result.end());
    const std::vector<std::string> ourMoves = movedKeys(base, ours);
    const std::vector<std::string> theirMoves = movedKeys(base, theirs);
    const std::set<std::string> movedByUs(ourMoves.begin(), ourMoves.end());
    const std::set<std::string> movedByThem(theirMoves.begin(), theirMoves.end());
    const std::set<std::string> inOurs(ours.begin(), ours.end());
    const std::set<std::string> inTheirs(theirs.begin(), theirs.end());

    std::set<std::string> placeAsTheirs;
    for (const std::string& key : theirs) {
        if (stays.count(key) &&
            (!inOurs.count(key) || (movedByThem.count(key) && !movedByUs.count(key)))) {
            placeAsTheirs.insert(key);
        }
    }
    if (conflicts) {
        std::set<std::string> inBoth;
        for (const std::string& key : ours) {
            if (inTheirs.count(key)) {
                inBoth.insert(key);
            }
        }
        for (const std::string& key : ours) {
            if (stays.count(key) && movedByUs.count(key) && movedByThem.count(key) &&
                predecessor(ours, key, inBoth) != predecessor(theirs, key, inBoth)) {
                conflicts->push_back(key);
            }
        }
    }
    std::vector<std::string> order;
    for (const std::string& key : ours) {
        if (stays.count(key) && !placeAsTheirs.count(key)) {
            order.push_back(key);
        }
    }
    // A row that ours moved is no landmark for theirs' rows: they follow the nearest row before
    // them that stayed where it was.
    std::string previous;
    for (const std::string& key : theirs) {
        if (placeAsTheirs.count(key)) {
            const auto after = previous.empty()
                                   ? order.begin()
                                   : std::find(order.begin(), order.end(), previous) + 1;
            order.insert(after, key);
        }
        if (std::find(order.begin(), order.end(), key) != order.end() && !movedByUs.count(key)) {
            previous = key;
        }
    }
    return order;
}

MergeResult mergeTrees(const TreeNode& base, const TreeNode& ours, const TreeNode& theirs) {
    Merger merger;
    MergeResult result;
    result.root = merger.merge(&base, ours, theirs);
    result.conflicts = std::move(merger.conflicts);
    return result;
}

int runMerge(const MergeOptions& options, std::ostream& out, std::ostream& err) {
    const std::string oursName = options.name.empty() ? inputName(options.ours) : options.name;
    std::string merged;
    MergeResult result;
    try {
        const DocumentTree base = readDocumentTree(options.base);
        const DocumentTree ours = readDocumentTree(options.ours, oursName);
        const DocumentTree theirs = readDocumentTree(options.theirs);
        // The result is canonical and keeps no comments: a comment of either side would be lost
        // without a word, so the merge stops and git leaves the file conflicted, as it was.
        // Git names THEIRS by a temporary file: the message says whose version it is.
        const std::pair<const DocumentTree*, std::string> sides[] = {
            {&ours, "our version"}, {&theirs, "their version of " + oursName}};
        for (const auto& [side, whose] : sides) {
            if (side->firstComment != 0 && !options.dropComments) {
                throw InputError(side->file + ":" + std::to_string(side->firstComment) + ": " +
                                 whose +
                                 " holds an XML comment, which the merged document would not "
                                 "keep; nothing was written (--drop-comments merges without "
                                 "comments)");
            }
        }
        result = mergeTrees(base.root, ours.root, theirs.root);
        merged = canonicalXml(result.root, oursName);
    } catch (const InputError& e) {
        err << "qorfmt merge: " << e.what() << '\n';
        return 2;
    }
    for (const MergeConflict& conflict : result.conflicts) {
        err << oursName << ':' << conflict.line << ": conflict: " << conflict.where << ": "
            << conflict.what << '\n';
    }
    if (options.output == "-" || (options.output.empty() && options.ours == "-")) {
        out << merged;
    } else {
        try {
            QorBorder::replaceFileAtomically(options.output.empty() ? options.ours : options.output,
                                             merged);
        } catch (const QorBorder::DocumentError& e) {
            err << "qorfmt merge: " << e.what() << '\n';
            return 2;
        }
    }
    return result.conflicts.empty() ? 0 : 1;
}

} // namespace QorfmtCli
