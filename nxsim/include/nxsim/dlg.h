#pragma once

#include <boost/filesystem/path.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace nxsim {

/// The kinds of element in a dialog resource file. The first thirteen are items that a dialog can
/// bind by name (the UIStyler item classes); the others only arrange items.
enum class ItemKind {
    PushButton,
    SingleSelectList,
    OptionMenu,
    StringItem,
    WideString,
    MultiTextBox,
    RadioBox,
    IntegerItem,
    RealItem,
    Toggle,
    ColorTool,
    GroupBox,
    LabelItem,
    TabControl, ///< a set of tab pages
    TabPage,    ///< one page of a TabControl
    Row,        ///< items side by side
    Dialog      ///< the dialog itself (DialogItem); never an element of the file
};

/// The words naming a kind: "push button", "single select list", ...
const char* kindDescription(ItemKind kind);
/// The element name of a kind in the file: "button", "list", ...
const char* kindElementName(ItemKind kind);
/// True for the kinds that a dialog binds by name.
bool isBindable(ItemKind kind);

/// One element of the layout as the file gives it.
struct DlgElement {
    ItemKind kind = ItemKind::LabelItem;
    std::string name;    ///< resource name (upper case); may be empty for labels and arrangements
    std::string label;   ///< caption; for a LabelItem its text
    std::string tooltip; ///< what the item means, shown when the mouse rests on it; may be empty
    /// Entries of an option menu or radio box, initial rows of a list, initial lines of a
    /// multi-line text.
    std::vector<std::string> entries;
    /// Initial sensitivity of each entry of an option menu or radio box (same length as entries).
    std::vector<bool> entrySensitive;
    /// Initial value as written: text, integer, real, "on"/"off", colour number, or for option
    /// menus and radio boxes the index of the current entry. Empty for the kind's default.
    std::string value;
    bool sensitive = true;
    bool visible = true;
    int rows = 0;  ///< height hint for lists and multi-line text, 0 for the presenter's default
    int width = 0; ///< width hint in characters, 0 for the presenter's default
    int line = 0;  ///< line in the file
    std::vector<DlgElement> children; ///< for groups, tab controls, tab pages and rows
};

/// The navigation buttons along the bottom of a dialog.
struct DlgNavigation {
    bool ok = true;
    bool apply = false;
    bool back = false;
    bool cancel = true;
};

/// A whole dialog resource file.
struct DialogLayout {
    boost::filesystem::path path; ///< the file read
    std::string fileName;         ///< its name without directories
    std::string name;             ///< the dialog name; may be empty
    std::string title;
    int width = 0; ///< minimum width in characters, 0 for what the contents need
    DlgNavigation navigation;
    std::vector<DlgElement> elements;

    /// The dialog name, or the file name when the dialog name is empty (how journals name it).
    std::string journalName() const;
    /// The element with that resource name anywhere in the tree, null when none.
    const DlgElement* find(const std::string& name) const;
};

/// A resource file that cannot be used; what() reads "FILE:LINE: reason".
class DlgError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a resource file; throws DlgError naming the file, the line and the reason.
DialogLayout readDialogLayout(const boost::filesystem::path& file);
/// Reads resource text; `file` names it in errors and in the result.
DialogLayout parseDialogLayout(const std::string& text, const boost::filesystem::path& file);

/// The directories searched for resource files, in order: those given to setResourcePath(), else
/// those of QORFMT_RESOURCE_PATH (separated by ':').
std::vector<boost::filesystem::path> resourcePath();
void setResourcePath(const std::vector<boost::filesystem::path>& directories);
/// `name` itself when it holds a directory part or is absolute; otherwise the first
/// DIR/name along the resource path. Empty when not found.
boost::filesystem::path findDialogResource(const std::string& name);

} // namespace nxsim
