#pragma once

#include "workspace/layout_list_page.h"

namespace QorBorder {
class BlockLayout;
}

namespace QorBorderConf {

/// The main dialog's page of block layouts. A change of its blocks refills the locations page's
/// block filter.
class BlocksPage : public LayoutListPage<QorBorder::BlockLayout> {
public:
    explicit BlocksPage(MainDialog& mainDialog);

private:
    Rows documentRows(const QorBorder::DefinitionDocument& document) const override;
    void deleteLayout(QorBorder::DefinitionDocument& document, const std::string& id) override;
    void layoutDeleted() override;
};

} // namespace QorBorderConf
