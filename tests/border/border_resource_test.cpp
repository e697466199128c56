// The option menus of the border layout dialog's resource file carry the model's meanings: the
// stored values are the menus' item indexes (units from 1), so the entries must stay in the order
// the model defines.

#include "border/border_layout_dialog_names.h"
#include "model/frame_units_type.h"
#include "model/zone_scheme.h"
#include "testutil/journal.h"

#include <nxsim/dlg.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

namespace Names = QorBorderConf::BorderLayoutDialogNames;

std::vector<std::string> entriesOf(const char* name) {
    const nxsim::DialogLayout layout =
        nxsim::readDialogLayout(TestUtil::productResources() / Names::kResourceFile);
    const nxsim::DlgElement* menu = layout.find(name);
    EXPECT_NE(menu, nullptr) << name;
    return menu ? menu->entries : std::vector<std::string>{};
}

TEST(BorderLayoutResource, TheZoneMenusReadAsTheModelNamesTheZoneSchemes) {
    EXPECT_EQ(entriesOf(Names::HORZ_TYPE), QorBorder::zoneTypeTexts());
    EXPECT_EQ(entriesOf(Names::VERT_TYPE), QorBorder::zoneTypeTexts());
    EXPECT_EQ(entriesOf(Names::ZONE_START), QorBorder::zoneStartTexts());
}

TEST(BorderLayoutResource, TheUnitsMenuHasOneEntryPerUnitsValueInValueOrder) {
    const std::vector<std::string> units = entriesOf(Names::UNITS);
    ASSERT_EQ(units.size(), 2u);
    EXPECT_EQ(units[QorBorder::Inches - 1], "Inches");
    EXPECT_EQ(units[QorBorder::Millimeters - 1], "Millimeters");
}

} // namespace
