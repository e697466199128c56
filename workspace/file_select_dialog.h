#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>

#include <vector>

namespace QorBorder {
class BlockLayout;
class BorderLayout;
} // namespace QorBorder

namespace KivNX {
namespace UI {
class OptionMenu;
class SingleSelectList;
class WideString;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// The file picker: lists the .fordef files of one base directory, lets the user pick one or type
/// a name and, in the copy modes, pick a border or block of the chosen document. Ends with 2 on
/// OK and with 9 after a double-click.
class FileSelectDialog : public KivNX::UI::NXDialogBase {
public:
    enum Mode {
        OpenMode = 0,
        SaveAsMode = 1,
        CopyBlockMode = 2,
        CopyBorderMode = 3,
        CopyLocationMode = 4
    };

    /// `startPath` is left out of the files offered (the active document, when it is the
    /// source); empty offers every file. Reads the file search path and the configurations;
    /// throws Kiv::ConfigurationError when their settings are malformed.
    FileSelectDialog(const boost::filesystem::path& startPath, int mode);

    /// Shows the dialog; true when the user chose: OK (response 2) or a double-click (9), which
    /// opening, choosing a move target and copying from another document all accept. Save As
    /// takes only OK and calls show() itself.
    bool chooseFile();

    /// The chosen path; valid after the dialog ended with OK or a double-click.
    const boost::filesystem::path& selectedPath() const { return m_selectedPath; }
    /// The block chosen in copy-block mode; null when none was chosen.
    const boost::shared_ptr<const QorBorder::BlockLayout>& selectedBlockLayout() const {
        return m_selectedBlockLayout;
    }
    /// The border chosen in copy-border mode; null when none was chosen.
    const boost::shared_ptr<const QorBorder::BorderLayout>& selectedBorderLayout() const {
        return m_selectedBorderLayout;
    }

    /// The path a typed name stands for below `baseDirectory`: ".fordef" is appended unless
    /// the name is a plain word (letters, digits, '_', '-') ending in ".fordef". Empty for an
    /// empty name.
    static boost::filesystem::path pathForName(const boost::filesystem::path& baseDirectory,
                                               const std::string& name);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onFilterActivated(StylerEvent* event);
    DialogState onFileListActivated(StylerEvent* event);
    DialogState onFileListDoubleClicked(StylerEvent* event);
    DialogState onObjectListActivated(StylerEvent* event);
    DialogState onObjectListDoubleClicked(StylerEvent* event);
    void updateOkSensitivity(StylerItem* item);

    /// Stores the object chosen in a copy mode.
    void writeChosenObject();
    void fillFileList();
    /// The base directory of the current "FILTER" entry.
    boost::filesystem::path currentBaseDirectory() const;
    boost::filesystem::path chosenPath() const;

    int m_mode;
    std::vector<boost::filesystem::path> m_candidates;
    /// Indexed by the "FILTER" entry: installation, common configuration, configuration.
    std::vector<boost::filesystem::path> m_baseDirectories;
    bool m_hasCommonConfiguration = false;

    boost::filesystem::path m_selectedPath;
    std::vector<boost::shared_ptr<const QorBorder::BlockLayout>> m_blockLayouts;
    std::vector<boost::shared_ptr<const QorBorder::BorderLayout>> m_borderLayouts;
    boost::shared_ptr<const QorBorder::BlockLayout> m_selectedBlockLayout;
    boost::shared_ptr<const QorBorder::BorderLayout> m_selectedBorderLayout;

    boost::shared_ptr<KivNX::UI::OptionMenu> m_filter;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_fileList;
    boost::shared_ptr<KivNX::UI::WideString> m_fileSelection;
    boost::shared_ptr<NXOpen::UIStyler::GroupBox> m_objectGroup;
    boost::shared_ptr<NXOpen::UIStyler::LabelItem> m_objectLabel;
    boost::shared_ptr<KivNX::UI::SingleSelectList> m_objectList;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_locFilter;
};

} // namespace QorBorderConf
