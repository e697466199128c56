#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace KivNX {
namespace UI {
class MultiTextBox;
class OptionMenu;
class StringItem;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one field translation: the four parts of its key (language, block ID, field ID, lookup
/// key) and the translated text. It changes nothing in the model; its opener stores the result.
class TranslationDialog : public KivNX::UI::NXDialogBase {
public:
    /// `key` is shown split into its four parts when it has exactly four; `editMode` false
    /// refuses a combination that an open document already translates.
    TranslationDialog(const std::string& key, const std::string& translation, bool editMode);

    /// The key composed from the four parts; valid after OK.
    const std::string& key() const { return m_key; }
    /// The translated text, lines separated by "\n"; valid after OK.
    const std::string& translation() const { return m_translation; }

    /// The parts of `key` between its "_" (one part for a key without any).
    static std::vector<std::string> splitKey(const std::string& key);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);
    DialogState onBlockIdActivated(StylerEvent* event);

    /// Offers the field IDs of the block "BLOCK_ID" shows.
    void fillFieldMenu();

    std::string m_key;
    std::string m_translation;
    bool m_editMode;

    boost::shared_ptr<KivNX::UI::StringItem> m_language;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_blockId;
    boost::shared_ptr<KivNX::UI::OptionMenu> m_fieldId;
    boost::shared_ptr<KivNX::UI::StringItem> m_lookupKey;
    boost::shared_ptr<KivNX::UI::MultiTextBox> m_text;
};

} // namespace QorBorderConf
