#pragma once

#include "ui/nx_dialog_base.h"

#include <boost/shared_ptr.hpp>

namespace QorBorder {
class Choice;
}
namespace KivNX {
namespace UI {
class MultiTextBox;
class StringItem;
} // namespace UI
} // namespace KivNX

namespace QorBorderConf {

/// Edits one text choice of a field: its menu text, lookup key and full text. The choice is
/// written only on OK, so a caller may pass an element of its own working list.
class TextChoiceDialog : public KivNX::UI::NXDialogBase {
public:
    /// `choice` must outlive show(); the dialog neither copies nor owns it.
    explicit TextChoiceDialog(QorBorder::Choice& choice);

private:
    void initializeDialog() override;

    DialogState onConstruct(StylerEvent* event);
    DialogState onOk(StylerEvent* event);

    QorBorder::Choice* m_choice;

    boost::shared_ptr<KivNX::UI::StringItem> m_shortValue;
    boost::shared_ptr<KivNX::UI::StringItem> m_lookupKey;
    boost::shared_ptr<KivNX::UI::MultiTextBox> m_fullValue;
};

} // namespace QorBorderConf
