#pragma once

#include <uf_ui.h>

namespace QorBorderConf {

/// NX's busy indicator, on for the object's lifetime: it goes off again even when the work
/// throws.
class BusyIndicator {
public:
    BusyIndicator() { UF_UI_toggle_stoplight(1); }
    ~BusyIndicator() { UF_UI_toggle_stoplight(0); }
    BusyIndicator(const BusyIndicator&) = delete;
    BusyIndicator& operator=(const BusyIndicator&) = delete;
};

} // namespace QorBorderConf
