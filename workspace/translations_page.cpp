#include "workspace/translations_page.h"

#include "model/definition_document.h"
#include "ui/sensitivity.h"
#include "ui/single_select_list.h"
#include "workspace/main_dialog.h"
#include "workspace/main_dialog_names.h"

using namespace NXOpen::UIStyler;
namespace Names = QorBorderConf::MainDialogNames;

namespace QorBorderConf {

void TranslationsPage::bindControls() {
    m_list = m_main.getControl<KivNX::UI::SingleSelectList>(Names::TRANSLATION_LIST);
    m_list->AddActivateHandler(m_main.registerStylerCB(Base::makeFunctor(
                                   this, &TranslationsPage::onTranslationListActivated)),
                               false);
    m_main.addUpdateHandler(m_list.get(),
                            Base::makeFunctor(this, &TranslationsPage::updateListSensitivity));
    m_newTranslation = m_main.getControl<PushButton>(Names::NEW_TRANSLATION);
    m_editTranslation = m_main.getControl<PushButton>(Names::EDIT_TRANSLATION);
    m_deleteTranslation = m_main.getControl<PushButton>(Names::DELETE_TRANSLATION);
    m_deleteTranslation->AddActivateHandler(
        m_main.registerStylerCB(
            Base::makeFunctor(this, &TranslationsPage::onDeleteTranslationActivated)),
        false);
    m_main.addUpdateHandler(
        m_deleteTranslation.get(),
        Base::makeFunctor(this, &TranslationsPage::updateDeleteTranslationSensitivity));
}

void TranslationsPage::refreshList() {
    m_list->ClearList();
    std::vector<std::string> keys;
    for (const auto& entry : m_main.m_translations) {
        keys.push_back(entry.first);
    }
    if (!keys.empty()) {
        m_list->SetListItems(keys);
    }
}

DialogState TranslationsPage::onTranslationListActivated(StylerEvent* /*event*/) {
    m_main.deselectListsOtherThan(m_list.get());
    return DialogStateContinueDialog;
}

DialogState TranslationsPage::onDeleteTranslationActivated(StylerEvent* /*event*/) {
    if (!m_main.m_activeDocument || !m_list->HasSelection()) {
        return DialogStateContinueDialog;
    }
    m_main.m_translations.erase(m_list->SelectedString());
    refreshList();
    m_main.m_activeDocument->setFieldTranslations(m_main.m_translations);
    return DialogStateContinueDialog;
}

void TranslationsPage::updateListSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument != nullptr);
}

void TranslationsPage::updateDeleteTranslationSensitivity(StylerItem* item) {
    KivNX::UI::setSensitivity(item, m_main.m_activeDocument && m_list->HasSelection());
}

} // namespace QorBorderConf
