#include "workspace/file_select_dialog.h"

#include "base/log.h"
#include "base/wildcard_filter.h"
#include "kiv/configuration_manager.h"
#include "kiv/system_information.h"
#include "kivug/search_file_list.h"
#include "model/def_document_manager.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/option_menu.h"
#include "ui/single_select_list.h"
#include "ui/wide_string.h"
#include "workspace/file_select_dialog_names.h"

#include <uf_ui.h>

#include <boost/regex.hpp>

#include <algorithm>
#include <cassert>

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace fs = boost::filesystem;
namespace Names = QorBorderConf::FileSelectDialogNames;

namespace QorBorderConf {

namespace {

struct ModeTexts {
    const char* title;
    const char* selectionLabel;
    const char* prompt;
    const char* objectLabel; ///< null: unchanged
};

/// Title, label of "FILE_SELECTION", cue line and object label of each mode.
const ModeTexts kModeTexts[] = {
    {"Open File", "File To Open", "Select file to open", nullptr},
    {"Save As File", "File To Save As", "Enter filename to save as", nullptr},
    {"Copy Block", "File To Open", "Select block to copy", "Blocks"},
    {"Copy Border", "File To Open", "Select border To copy", "Borders"},
    {"Copy Location", "File To Open", "Select location To copy", "Locations"},
};

const ModeTexts* textsOf(int mode) {
    if (mode < 0 || mode >= static_cast<int>(std::size(kModeTexts))) {
        return nullptr;
    }
    return &kModeTexts[mode];
}

} // namespace

FileSelectDialog::FileSelectDialog(const fs::path& startPath, int mode)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_mode(mode) {
    m_candidates =
        KivUg::NxSearchFileList("format_defs").filePaths(Base::WildcardFilter("*.fordef"));
    if (!startPath.empty()) {
        m_candidates.erase(std::remove(m_candidates.begin(), m_candidates.end(), startPath),
                           m_candidates.end());
    }

    const Kiv::SystemInformation system;
    const auto configuration = Kiv::ConfigurationManager().currentConfiguration();
    m_hasCommonConfiguration = configuration->hasCommonConfiguration();
    // A directory that does not exist is kept empty, so that it lists nothing rather than
    // matching every path.
    const auto below = [&system](const fs::path& directory) {
        return directory.empty() ? fs::path() : directory / system.configurationSubdirectory();
    };
    m_baseDirectories = {system.installPath(), below(configuration->commonConfigPath()),
                         below(configuration->path())};
}

fs::path FileSelectDialog::pathForName(const fs::path& baseDirectory, const std::string& name) {
    if (name.empty()) {
        return {};
    }
    static const boost::regex kFordefName("^[\\w\\-]+\\.fordef$", boost::regex::perl);
    const std::string fileName = boost::regex_match(name, kFordefName) ? name : name + ".fordef";
    return baseDirectory / "format_defs" / fileName;
}

bool FileSelectDialog::chooseFile() {
    const DialogResponse response = show();
    return response == DialogResponseOk || response == DialogResponseCbTerminate;
}

void FileSelectDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&FileSelectDialog::onConstruct);
    bind.onOkay(&FileSelectDialog::onOk);
    bind.updateDialog(&FileSelectDialog::updateOkSensitivity);

    m_filter = bind.control<KivNX::UI::OptionMenu>(Names::FILTER);
    bind.onActivate(*m_filter, &FileSelectDialog::onFilterActivated, OpensDialog::No);
    m_fileList = bind.control<KivNX::UI::SingleSelectList>(Names::FILE_LIST);
    if (m_mode == OpenMode) {
        bind.onDoubleClick(*m_fileList, &FileSelectDialog::onFileListDoubleClicked,
                           OpensDialog::No);
    }
    bind.onActivate(*m_fileList, &FileSelectDialog::onFileListActivated, OpensDialog::No);
    m_fileSelection = bind.control<KivNX::UI::WideString>(Names::FILE_SELECTION);
    m_objectGroup = bind.control<GroupBox>(Names::OBJECT_GROUP);
    m_objectLabel = bind.control<LabelItem>(Names::OBJECT_LABEL);
    m_objectList = bind.control<KivNX::UI::SingleSelectList>(Names::OBJECT_LIST);
    bind.onActivate(*m_objectList, &FileSelectDialog::onObjectListActivated, OpensDialog::No);
    bind.onDoubleClick(*m_objectList, &FileSelectDialog::onObjectListDoubleClicked,
                       OpensDialog::No);
    m_locFilter = bind.control<KivNX::UI::OptionMenu>(Names::LOC_FILTER);
}

DialogState FileSelectDialog::onConstruct(StylerEvent* /*event*/) {
    if (const ModeTexts* texts = textsOf(m_mode)) {
        dialogItem()->SetTitle(texts->title);
        m_fileSelection->SetLabel(texts->selectionLabel);
        std::string prompt = texts->prompt;
        UF_UI_set_prompt(prompt.data());
        if (texts->objectLabel) {
            m_objectLabel->SetLabel(texts->objectLabel);
        }
        if (m_mode == OpenMode || m_mode == SaveAsMode) {
            m_objectGroup->SetVisibility(false);
        } else if (m_mode != CopyLocationMode) {
            m_locFilter->SetVisibility(false);
        }
    }
    if (!m_hasCommonConfiguration) {
        m_filter->SetSensitivity(1, false);
    }
    fillFileList();
    return DialogStateContinueDialog;
}

void FileSelectDialog::fillFileList() {
    m_fileList->ClearList();
    const std::string base = currentBaseDirectory().string();
    std::vector<std::string> names;
    if (!base.empty()) {
        for (const fs::path& file : m_candidates) {
            // A plain substring test, on purpose: a base directory whose text occurs anywhere in
            // a file's folder lists that file too.
            if (file.parent_path().string().find(base) != std::string::npos) {
                names.push_back(file.filename().string());
            }
        }
    }
    m_fileList->SetListItems(names);
}

fs::path FileSelectDialog::currentBaseDirectory() const {
    const int entry = m_filter->ItemValue();
    if (entry < 0 || static_cast<std::size_t>(entry) >= m_baseDirectories.size()) {
        return {};
    }
    return m_baseDirectories[static_cast<std::size_t>(entry)];
}

fs::path FileSelectDialog::chosenPath() const {
    return pathForName(currentBaseDirectory(), m_fileSelection->ItemValue());
}

DialogState FileSelectDialog::onFilterActivated(StylerEvent* /*event*/) {
    fillFileList();
    return DialogStateContinueDialog;
}

DialogState FileSelectDialog::onFileListActivated(StylerEvent* /*event*/) {
    if (!m_fileList->HasSelection()) {
        return DialogStateContinueDialog;
    }
    m_fileSelection->SetItemValue(m_fileList->SelectedString());
    const fs::path path = chosenPath();
    std::vector<std::string> ids;
    if (m_mode == CopyBlockMode) {
        const auto document = QorBorder::DefDocumentManager().getDocument(path);
        assert(document);
        m_blockLayouts = document->blockLayouts(QorBorder::AllUnits);
        for (const auto& layout : m_blockLayouts) {
            ids.push_back(layout->id);
        }
        m_objectList->SetListItems(ids);
    } else if (m_mode == CopyBorderMode) {
        const auto document = QorBorder::DefDocumentManager().getDocument(path);
        assert(document);
        m_borderLayouts = document->borderLayoutTypes(QorBorder::AllUnits);
        for (const auto& layout : m_borderLayouts) {
            ids.push_back(layout->id);
        }
        m_objectList->SetListItems(ids);
    }
    return DialogStateContinueDialog;
}

DialogState FileSelectDialog::onFileListDoubleClicked(StylerEvent* event) {
    // The first click of a double-click has picked the file already where the platform sends
    // it; taking the row again makes the double-click complete on its own.
    onFileListActivated(event);
    return onOk(event);
}

DialogState FileSelectDialog::onObjectListActivated(StylerEvent* /*event*/) {
    return DialogStateContinueDialog;
}

DialogState FileSelectDialog::onObjectListDoubleClicked(StylerEvent* event) {
    return onOk(event);
}

DialogState FileSelectDialog::onOk(StylerEvent* /*event*/) {
    // The chosen path is stored and logged before it is checked: the log shows what the user
    // tried, refused or not.
    m_selectedPath = chosenPath();
    Base::log::Logger& log = QorBorder::info_log();
    if (log.enabled()) {
        Base::log::LoggerStream(log)
            << "Setting file cache to " << m_selectedPath.string() << std::endl;
    }

    if (m_selectedPath.empty()) {
        return KivNX::UI::refuse(*m_fileSelection, KivNX::UI::kValidationError,
                                 "File must not be empty.");
    }

    writeChosenObject();
    return DialogStateExitDialog;
}

void FileSelectDialog::writeChosenObject() {
    if (!m_objectList->HasSelection()) {
        return;
    }
    const auto row = static_cast<std::size_t>(m_objectList->SelectedIndexValue());
    if (m_mode == CopyBlockMode && row < m_blockLayouts.size()) {
        m_selectedBlockLayout = m_blockLayouts[row];
    } else if (m_mode == CopyBorderMode && row < m_borderLayouts.size()) {
        m_selectedBorderLayout = m_borderLayouts[row];
    }
}

void FileSelectDialog::updateOkSensitivity(StylerItem* item) {
    bool sensitive = false;
    switch (m_mode) {
    case OpenMode:
        sensitive = !m_fileSelection->ItemValue().empty();
        break;
    case SaveAsMode:
        sensitive = true;
        break;
    case CopyBlockMode:
    case CopyBorderMode:
    case CopyLocationMode:
        sensitive = m_objectList->HasSelection();
        break;
    default:
        break;
    }
    static_cast<DialogItem*>(item)->SetNavigationSensitivity(DialogItem::DialogItemIndexOk,
                                                             sensitive);
}

} // namespace QorBorderConf
