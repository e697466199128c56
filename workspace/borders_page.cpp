#include "workspace/borders_page.h"

#include "border/border_layout_dialog.h"

namespace QorBorderConf {

int BorderPageTraits::showDialog(const boost::shared_ptr<Layout>& layout, bool existingLayout) {
    return BorderLayoutDialog(layout, existingLayout).show();
}

} // namespace QorBorderConf
