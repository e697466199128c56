#include "workspace/blocks_page.h"

#include "block/block_layout_dialog.h"

namespace QorBorderConf {

int BlockPageTraits::showDialog(const boost::shared_ptr<Layout>& layout, bool existingLayout) {
    BlockLayoutDialog dialog(layout, existingLayout);
    return dialog.show();
}

} // namespace QorBorderConf
