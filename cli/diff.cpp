#include "diff.h"

#include "input.h"
#include "site.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <ostream>
#include <set>

namespace QorfmtCli {

namespace {

struct List {
    std::string id;
    bool ordered = true;
    std::vector<const TreeNode*> items;
};

// The children of `node` by list, lists in the order they first appear.
std::vector<List> listsOf(const TreeNode& node) {
    std::vector<List> lists;
    std::map<std::string, std::size_t> index;
    for (const TreeNode& child : node.children) {
        const auto found = index.emplace(child.list, lists.size());
        if (found.second) {
            lists.push_back({child.list, child.ordered, {}});
        }
        lists[found.first->second].items.push_back(&child);
    }
    return lists;
}

const List* findList(const std::vector<List>& lists, const std::string& id) {
    for (const List& list : lists) {
        if (list.id == id) {
            return &list;
        }
    }
    return nullptr;
}

std::vector<std::string> keysOf(const List* list) {
    std::vector<std::string> keys;
    if (list) {
        for (const TreeNode* item : list->items) {
            keys.push_back(item->key);
        }
    }
    return keys;
}

class Differ {
public:
    std::vector<Change> changes;

    void compare(const TreeNode& a, const TreeNode& b) {
        for (const auto& attribute : a.attributes) {
            const std::string* other = b.attribute(attribute.first);
            if (other && *other != attribute.second) {
                Change change = at(Change::Kind::Changed, a.line, b.line, m_newPath);
                change.attribute = attribute.first;
                change.oldValue = attribute.second;
                change.newValue = *other;
                changes.push_back(change);
            }
        }
        const std::vector<List> listsA = listsOf(a);
        const std::vector<List> listsB = listsOf(b);
        std::vector<std::string> order;
        for (const List& list : listsA) {
            order.push_back(list.id);
        }
        for (const List& list : listsB) {
            if (!findList(listsA, list.id)) {
                order.push_back(list.id);
            }
        }
        for (const std::string& id : order) {
            compareLists(a, findList(listsA, id), b, findList(listsB, id));
        }
    }

private:
    Change at(Change::Kind kind, int oldLine, int newLine,
              const std::vector<const TreeNode*>& path) const {
        Change change;
        change.kind = kind;
        change.oldLine = oldLine;
        change.newLine = newLine;
        change.path = path;
        return change;
    }

    void compareLists(const TreeNode& ownerA, const List* listA, const TreeNode& ownerB,
                      const List* listB) {
        const std::vector<std::string> keysA = keysOf(listA);
        const std::vector<std::string> keysB = keysOf(listB);
        const std::set<std::string> inA(keysA.begin(), keysA.end());
        const std::set<std::string> inB(keysB.begin(), keysB.end());
        std::set<std::string> moved;
        if ((listA ? listA->ordered : listB->ordered)) {
            for (const std::string& key : movedKeys(keysA, keysB)) {
                moved.insert(key);
            }
        }
        if (listA) {
            for (const TreeNode* item : listA->items) {
                if (!inB.count(item->key)) {
                    m_oldPath.push_back(item);
                    changes.push_back(
                        at(Change::Kind::Removed, item->line, ownerB.line, m_oldPath));
                    m_oldPath.pop_back();
                }
            }
        }
        if (!listB) {
            return;
        }
        for (std::size_t i = 0; i < listB->items.size(); ++i) {
            const TreeNode* item = listB->items[i];
            m_newPath.push_back(item);
            if (!inA.count(item->key)) {
                changes.push_back(at(Change::Kind::Added, ownerA.line, item->line, m_newPath));
            } else {
                const std::size_t j = static_cast<std::size_t>(
                    std::find(keysA.begin(), keysA.end(), item->key) - keysA.begin());
                const TreeNode* old = listA->items[j];
                if (moved.count(item->key)) {
                    Change change = at(Change::Kind::Moved, old->line, item->line, m_newPath);
                    change.oldPosition = static_cast<int>(j) + 1;
                    change.newPosition = static_cast<int>(i) + 1;
                    changes.push_back(change);
                }
                m_oldPath.push_back(old);
                compare(*old, *item);
                m_oldPath.pop_back();
            }
            m_newPath.pop_back();
        }
    }

    std::vector<const TreeNode*> m_oldPath;
    std::vector<const TreeNode*> m_newPath;
};

// A value as people read it in one line: quoted, with its line breaks and tabs shown.
std::string quoted(const std::string& value) {
    std::string text = "\"";
    for (const char c : value) {
        if (c == '\n') {
            text += "\\n";
        } else if (c == '\t') {
            text += "\\t";
        } else if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else {
            text += c;
        }
    }
    return text + '"';
}

const char* kindName(Change::Kind kind) {
    switch (kind) {
    case Change::Kind::Added:
        return "added";
    case Change::Kind::Removed:
        return "removed";
    case Change::Kind::Moved:
        return "moved";
    case Change::Kind::Changed:
        return "changed";
    }
    return "";
}

std::string changeText(const Change& change) {
    std::string text = describePath(change.path) + ": ";
    switch (change.kind) {
    case Change::Kind::Added:
    case Change::Kind::Removed:
        return text + kindName(change.kind);
    case Change::Kind::Moved:
        return text + "moved from row " + std::to_string(change.oldPosition) + " to row " +
               std::to_string(change.newPosition);
    case Change::Kind::Changed:
        return text + change.attribute + " changed from " + quoted(change.oldValue) + " to " +
               quoted(change.newValue);
    }
    return text;
}

std::string fileLine(const std::string& file, int line) {
    return line > 0 ? file + ":" + std::to_string(line) : file;
}

nlohmann::ordered_json changeJson(const Change& change) {
    nlohmann::ordered_json path = nlohmann::ordered_json::array();
    for (const TreeNode* node : change.path) {
        nlohmann::ordered_json step = {{"element", node->element},
                                       {"description", describe(*node)}};
        path.push_back(step);
    }
    nlohmann::ordered_json json = {{"change", kindName(change.kind)},
                                   {"where", describePath(change.path)},
                                   {"path", path},
                                   {"oldLine", change.oldLine},
                                   {"newLine", change.newLine}};
    if (change.kind == Change::Kind::Changed) {
        json["attribute"] = change.attribute;
        json["old"] = change.oldValue;
        json["new"] = change.newValue;
    } else if (change.kind == Change::Kind::Moved) {
        json["oldRow"] = change.oldPosition;
        json["newRow"] = change.newPosition;
    } else {
        nlohmann::ordered_json attributes = nlohmann::ordered_json::object();
        for (const auto& attribute : change.path.back()->attributes) {
            attributes[attribute.first] = attribute.second;
        }
        json["attributes"] = attributes;
    }
    return json;
}

DocumentTree readSide(const std::string& file, const std::string& name, bool git) {
    if (git && file == "/dev/null") {
        return emptyDocumentTree("/dev/null");
    }
    return readDocumentTree(file, name);
}

} // namespace

std::vector<std::string> movedKeys(const std::vector<std::string>& before,
                                   const std::vector<std::string>& after) {
    const std::set<std::string> inBefore(before.begin(), before.end());
    const std::set<std::string> inAfter(after.begin(), after.end());
    std::vector<std::string> a;
    std::vector<std::string> b;
    std::copy_if(before.begin(), before.end(), std::back_inserter(a),
                 [&](const std::string& key) { return inAfter.count(key) > 0; });
    std::copy_if(after.begin(), after.end(), std::back_inserter(b),
                 [&](const std::string& key) { return inBefore.count(key) > 0; });
    // Longest common subsequence; what lies outside it moved.
    const std::size_t n = a.size();
    const std::size_t m = b.size();
    std::vector<std::vector<int>> length(n + 1, std::vector<int>(m + 1, 0));
    for (std::size_t i = n; i-- > 0;) {
        for (std::size_t j = m; j-- > 0;) {
            length[i][j] = a[i] == b[j] ? length[i + 1][j + 1] + 1
                                        : std::max(length[i + 1][j], length[i][j + 1]);
        }
    }
    std::set<std::string> kept;
    for (std::size_t i = 0, j = 0; i < n && j < m;) {
        if (a[i] == b[j]) {
            kept.insert(a[i]);
            ++i;
            ++j;
        } else if (length[i + 1][j] >= length[i][j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
    std::vector<std::string> moved;
    for (const std::string& key : b) {
        if (!kept.count(key)) {
            moved.push_back(key);
        }
    }
    return moved;
}

std::vector<Change> diffTrees(const TreeNode& a, const TreeNode& b) {
    Differ differ;
    differ.compare(a, b);
    return differ.changes;
}

int runDiff(const DiffOptions& options, std::ostream& out, std::ostream& err) {
    std::string oldFile;
    std::string newFile;
    std::string oldName;
    std::string newName;
    if (options.git) {
        if (options.files.size() != 7) {
            err << "qorfmt diff: --git takes the seven arguments git hands a diff driver (PATH "
                   "OLD-FILE OLD-HEX OLD-MODE NEW-FILE NEW-HEX NEW-MODE), not "
                << options.files.size() << '\n';
            return 2;
        }
        oldFile = options.files[1];
        newFile = options.files[4];
        oldName = oldFile == "/dev/null" ? oldFile : "a/" + options.files[0];
        newName = newFile == "/dev/null" ? newFile : "b/" + options.files[0];
    } else {
        if (options.files.size() != 2) {
            err << "qorfmt diff: give two documents, A and B\n";
            return 2;
        }
        oldFile = options.files[0];
        newFile = options.files[1];
        oldName = inputName(oldFile);
        newName = inputName(newFile);
    }
    DocumentTree a;
    DocumentTree b;
    try {
        a = readSide(oldFile, oldName, options.git);
        b = readSide(newFile, newName, options.git);
    } catch (const InputError& e) {
        err << "qorfmt diff: " << e.what() << '\n';
        return 2;
    }
    const std::vector<Change> changes = diffTrees(a.root, b.root);
    if (options.format == "json") {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const Change& change : changes) {
            list.push_back(changeJson(change));
        }
        const nlohmann::ordered_json document = {
            {"old", a.file}, {"new", b.file}, {"equal", changes.empty()}, {"changes", list}};
        out << document.dump(2) << '\n';
    } else {
        if (options.git && !changes.empty()) {
            out << "qorfmt diff " << a.file << ' ' << b.file << '\n';
        }
        for (const Change& change : changes) {
            out << fileLine(a.file, change.oldLine) << ' ' << fileLine(b.file, change.newLine)
                << ": " << changeText(change) << '\n';
        }
    }
    if (options.git) {
        return 0;
    }
    return changes.empty() ? 0 : 1;
}

} // namespace QorfmtCli
