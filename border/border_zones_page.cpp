// The zones page of the border layout dialog: how the zones along the frame are numbered and at
// which corner the numbering starts. The menus' item indexes are what the layout stores.

#include "border/border_layout_dialog.h"
#include "border/border_layout_dialog_names.h"
#include "model/border_layout.h"
#include "ui/dialog_binder.h"
#include "ui/option_menu.h"

#include <cassert>

namespace Names = QorBorderConf::BorderLayoutDialogNames;

namespace QorBorderConf {

void BorderLayoutDialog::bindZonesPage() {
    KivNX::UI::DialogBinder bind(*this, *this);
    m_horizontalZoneType = bind.control<KivNX::UI::OptionMenu>(Names::HORZ_TYPE);
    m_verticalZoneType = bind.control<KivNX::UI::OptionMenu>(Names::VERT_TYPE);
    m_zoneStart = bind.control<KivNX::UI::OptionMenu>(Names::ZONE_START);
}

void BorderLayoutDialog::fillZonesPage() {
    assert(m_horizontalZoneType && m_verticalZoneType && m_zoneStart);
    m_horizontalZoneType->SetItemValue(m_layout->horizontalZoneType);
    m_verticalZoneType->SetItemValue(m_layout->verticalZoneType);
    m_zoneStart->SetItemValue(m_layout->zoneStart);
}

void BorderLayoutDialog::commitZonesPage() {
    assert(m_horizontalZoneType && m_verticalZoneType && m_zoneStart);
    m_layout->horizontalZoneType = m_horizontalZoneType->ItemValue();
    m_layout->verticalZoneType = m_verticalZoneType->ItemValue();
    m_layout->zoneStart = m_zoneStart->ItemValue();
}

} // namespace QorBorderConf
