#pragma once

#include <string>
#include <utility>
#include <vector>

namespace QorfmtCli {

/// One element of a document in canonical form, as diff and merge compare it: its attributes with
/// their canonical text, and its children. Elements are matched across documents by their key
/// within their list, never by their line.
struct TreeNode {
    std::string element;
    /// The element's identity within its list: its key attributes' values joined by a line feed,
    /// then "#N" for the N-th element with the same key (N from 2); "" for an element of which a
    /// parent holds one (a corner, the table).
    std::string key;
    /// Elements of one list are rows of one dialog list; lists of different elements or of
    /// different owners are independent.
    std::string list;
    /// Whether the position in the list means something (false for entries the model keeps
    /// sorted: placements, table columns, type manager choices, translations).
    bool ordered = true;
    std::vector<std::pair<std::string, std::string>> attributes; ///< in the order written
    std::vector<TreeNode> children;
    int line = 0; ///< in the file read; 0 where the element is not in it

    const std::string* attribute(const std::string& name) const;
    /// Equal attributes and children, lines not compared.
    bool sameContents(const TreeNode& other) const;
};

/// A document read for comparison.
struct DocumentTree {
    std::string file; ///< as named in messages
    TreeNode root;
    int firstComment = 0; ///< the line of the file's first XML comment, 0 when it has none
};

/// Reads `file` through the model (so it must be a valid document) and returns its canonical
/// form with the line of each element in the file. `name` is the file's name in messages ("" for
/// `file` itself). Throws InputError naming the file, the line and the reason.
DocumentTree readDocumentTree(const std::string& file, const std::string& name = "");
/// A document with nothing in it (git's /dev/null for an added or removed file).
DocumentTree emptyDocumentTree(const std::string& name);

/// The document that `root` describes, in canonical form. Throws InputError when the model does
/// not take it (then `name` appears in the message).
std::string canonicalXml(const TreeNode& root, const std::string& name);

/// How an element is named to people: `field "TITLE"`, `location "L1" of block "TB"`.
std::string describe(const TreeNode& node);
/// The element's place in the document: `block "TB" > field "TITLE"`.
std::string describePath(const std::vector<const TreeNode*>& path);

} // namespace QorfmtCli
