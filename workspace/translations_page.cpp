#include "workspace/translations_page.h"

#include "model/definition_document.h"
#include "ui/dialog_binder.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog_names.h"
#include "workspace/translation_dialog.h"

using namespace NXOpen::UIStyler;
using KivNX::UI::OpensDialog;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

void TranslationsPage::bindControls(KivNX::UI::NXDialogBase& dialog) {
    KivNX::UI::DialogBinder bind(dialog, *this);
    m_list = bind.control<KivNX::UI::SingleSelectList>(Names::TRANSLATION_LIST);
    bind.onActivate(*m_list, &TranslationsPage::onTranslationListActivated, OpensDialog::No);
    bind.update(*m_list, &TranslationsPage::updateListSensitivity);
    m_newTranslation = bind.control<PushButton>(Names::NEW_TRANSLATION);
    bind.update(*m_newTranslation, &TranslationsPage::updateListSensitivity);
    bind.onActivate(*m_newTranslation, &TranslationsPage::onNewTranslationActivated,
                    OpensDialog::Yes);
    m_editTranslation = bind.control<PushButton>(Names::EDIT_TRANSLATION);
    bind.onActivate(*m_editTranslation, &TranslationsPage::onEditTranslationActivated,
                    OpensDialog::Yes);
    bind.update(*m_editTranslation, &TranslationsPage::updateSelectedTranslationSensitivity);
    m_deleteTranslation = bind.control<PushButton>(Names::DELETE_TRANSLATION);
    bind.update(*m_deleteTranslation, &TranslationsPage::updateSelectedTranslationSensitivity);
    bind.onActivate(*m_deleteTranslation, &TranslationsPage::onDeleteTranslationActivated,
                    OpensDialog::No);
}

void TranslationsPage::reload() {
    m_translations.clear();
    if (const auto& document = m_host.activeDocument()) {
        document->fieldTranslations(m_translations);
    }
    refreshList();
}

void TranslationsPage::refreshList() {
    m_list->ClearList();
    std::vector<std::string> keys;
    for (const auto& entry : m_translations) {
        keys.push_back(entry.first);
    }
    if (!keys.empty()) {
        m_list->SetListItems(keys);
    }
}

void TranslationsPage::eraseTranslation(const std::string& key) {
    m_translations.erase(key);
    refreshList();
    if (const auto& document = m_host.activeDocument()) {
        document->setFieldTranslations(m_translations);
    }
}

DialogState TranslationsPage::onTranslationListActivated(StylerEvent* /*event*/) {
    m_host.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

DialogState TranslationsPage::onNewTranslationActivated(StylerEvent* /*event*/) {
    if (m_host.activeDocument()) {
        storeThroughDialog("", "", false);
    }
    return DialogStateContinueDialog;
}

DialogState TranslationsPage::onEditTranslationActivated(StylerEvent* /*event*/) {
    if (!m_host.activeDocument() || !m_list->HasSelection()) {
        return DialogStateContinueDialog;
    }
    const std::string key = m_list->SelectedString();
    const auto found = m_translations.find(key);
    storeThroughDialog(key, found != m_translations.end() ? found->second : std::string(), true);
    return DialogStateContinueDialog;
}

void TranslationsPage::storeThroughDialog(const std::string& key, const std::string& text,
                                          bool editMode) {
    TranslationDialog dialog(key, text, editMode);
    if (dialog.show() != DialogResponseOk) {
        return;
    }
    // The old key of an edited entry stays on purpose: an edit that changed a part of the key
    // adds a second entry.
    m_translations[dialog.key()] = dialog.translation();
    refreshList();
    if (const auto& document = m_host.activeDocument()) {
        document->setFieldTranslations(m_translations);
    }
}

DialogState TranslationsPage::onDeleteTranslationActivated(StylerEvent* /*event*/) {
    if (m_host.activeDocument() && m_list->HasSelection()) {
        eraseTranslation(m_list->SelectedString());
    }
    return DialogStateContinueDialog;
}

void TranslationsPage::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() != nullptr);
}

void TranslationsPage::updateSelectedTranslationSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_host.activeDocument() && m_list->HasSelection());
}

} // namespace QorBorderConf
