#pragma once

#include "workspace/layout_list_page.h"

namespace QorBorder {
class BorderLayout;
}

namespace QorBorderConf {

/// The main dialog's page of border layouts.
class BordersPage : public LayoutListPage<QorBorder::BorderLayout> {
public:
    explicit BordersPage(MainDialog& mainDialog);

private:
    Rows documentRows(const QorBorder::DefinitionDocument& document) const override;
    void deleteLayout(QorBorder::DefinitionDocument& document, const std::string& id) override;
};

} // namespace QorBorderConf
