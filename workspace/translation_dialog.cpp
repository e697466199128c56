#include "workspace/translation_dialog.h"

#include "model/def_document_manager.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/multi_text_box.h"
#include "ui/option_menu.h"
#include "ui/string_item.h"
#include "workspace/translation_dialog_names.h"

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::TranslationDialogNames;

namespace QorBorderConf {

TranslationDialog::TranslationDialog(const std::string& key, const std::string& translation,
                                     bool editMode)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_key(key),
      m_translation(translation), m_editMode(editMode) {}

std::vector<std::string> TranslationDialog::splitKey(const std::string& key) {
    std::vector<std::string> parts(1);
    for (const char c : key) {
        if (c == '_') {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

void TranslationDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&TranslationDialog::onConstruct);
    bind.onOkay(&TranslationDialog::onOk);

    m_language = bind.control<KivNX::UI::StringItem>(Names::LANGUAGE);
    m_blockId = bind.control<KivNX::UI::OptionMenu>(Names::BLOCK_ID);
    bind.onActivate(*m_blockId, &TranslationDialog::onBlockIdActivated, OpensDialog::No);
    m_fieldId = bind.control<KivNX::UI::OptionMenu>(Names::FIELD_ID);
    m_lookupKey = bind.control<KivNX::UI::StringItem>(Names::LOOKUP_KEY);
    m_text = bind.control<KivNX::UI::MultiTextBox>(Names::TRANSLATION);
}

DialogState TranslationDialog::onConstruct(StylerEvent* /*event*/) {
    std::vector<std::string> blockIds;
    for (const auto& layout : QorBorder::DefDocumentManager().blockLayouts(QorBorder::AllUnits)) {
        blockIds.push_back(layout->id);
    }
    m_blockId->SetItems(blockIds);
    // The text and the typed parts come before the menus: a block or field that the menus do not
    // offer stops the fill there (the dialog framework tells the user), and OK must not then
    // write an empty text over the stored one.
    m_text->SetItemValue(m_translation);
    fillFieldMenu();

    const std::vector<std::string> parts = splitKey(m_key);
    if (parts.size() == 4) {
        m_language->SetItemValue(parts[0]);
        m_lookupKey->SetItemValue(parts[3]);
        m_blockId->SetItemValue(parts[1]);
        fillFieldMenu();
        m_fieldId->SetItemValue(parts[2]);
    }
    return DialogStateContinueDialog;
}

void TranslationDialog::fillFieldMenu() {
    std::vector<std::string> fieldIds;
    if (const auto layout =
            QorBorder::DefDocumentManager().getBlockLayout(m_blockId->ItemValueString())) {
        for (const auto& field : layout->fields()) {
            fieldIds.push_back(field->id);
        }
    }
    m_fieldId->SetItems(fieldIds);
}

DialogState TranslationDialog::onBlockIdActivated(StylerEvent* /*event*/) {
    fillFieldMenu();
    return DialogStateContinueDialog;
}

DialogState TranslationDialog::onOk(StylerEvent* /*event*/) {
    const std::string language = m_language->ItemValue();
    const std::string blockId = m_blockId->ItemValueString();
    const std::string fieldId = m_fieldId->ItemValueString();
    const std::string lookupKey = m_lookupKey->ItemValue();

    // Only a new entry is checked: an edit may change its key to one that exists already.
    if (!m_editMode &&
        QorBorder::DefDocumentManager().fieldTranslation(language, blockId, fieldId, lookupKey) !=
            QorBorder::kNoTranslationFound) {
        return KivNX::UI::refuse(*m_language, KivNX::UI::kDuplicateError,
                                 "A duplicate translation was found.");
    }

    m_key = language + "_" + blockId + "_" + fieldId + "_" + lookupKey;
    m_translation = m_text->ItemValue();
    return DialogStateExitDialog;
}

} // namespace QorBorderConf
