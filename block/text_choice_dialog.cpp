#include "block/text_choice_dialog.h"

#include "block/text_choice_dialog_names.h"
#include "model/choice.h"
#include "ui/dialog_binder.h"
#include "ui/message_dialogs.h"
#include "ui/multi_text_box.h"
#include "ui/string_item.h"

#include <cassert>

using namespace NXOpen::UIStyler;
namespace Names = QorBorderConf::TextChoiceDialogNames;

namespace QorBorderConf {

TextChoiceDialog::TextChoiceDialog(QorBorder::Choice& choice)
    : NXDialogBase(Names::kResourceFile, Names::kDialogName), m_choice(&choice) {}

void TextChoiceDialog::initializeDialog() {
    KivNX::UI::DialogBinder bind(*this, *this);
    bind.onConstruct(&TextChoiceDialog::onConstruct);
    bind.onOkay(&TextChoiceDialog::onOk);

    m_shortValue = bind.control<KivNX::UI::StringItem>(Names::SHORT_VALUE);
    m_lookupKey = bind.control<KivNX::UI::StringItem>(Names::LOOKUP_KEY);
    m_fullValue = bind.control<KivNX::UI::MultiTextBox>(Names::FULL_VALUE);
}

DialogState TextChoiceDialog::onConstruct(StylerEvent* /*event*/) {
    assert(m_shortValue && m_lookupKey && m_fullValue);
    m_shortValue->SetItemValue(m_choice->shortValue);
    m_lookupKey->SetItemValue(m_choice->lookupKey);
    m_fullValue->SetItemValue(m_choice->fullValue);
    return DialogStateContinueDialog;
}

DialogState TextChoiceDialog::onOk(StylerEvent* /*event*/) {
    assert(m_shortValue && m_lookupKey && m_fullValue);
    const std::string shortValue = m_shortValue->ItemValue();
    if (shortValue.empty()) {
        return KivNX::UI::refuse(*m_shortValue, KivNX::UI::kValidationError,
                                 "Menu Text must not be empty.");
    }

    m_choice->shortValue = shortValue;
    m_choice->lookupKey = m_lookupKey->ItemValue();
    m_choice->fullValue = m_fullValue->ItemValue();

    return DialogStateExitDialog;
}

} // namespace QorBorderConf
