#include "ui/sensitivity.h"

#include <NXOpen/UIStyler_ColorTool.hxx>
#include <NXOpen/UIStyler_GroupBox.hxx>
#include <NXOpen/UIStyler_IntegerItem.hxx>
#include <NXOpen/UIStyler_LabelItem.hxx>
#include <NXOpen/UIStyler_MultiTextBox.hxx>
#include <NXOpen/UIStyler_OptionMenu.hxx>
#include <NXOpen/UIStyler_PushButton.hxx>
#include <NXOpen/UIStyler_RadioBox.hxx>
#include <NXOpen/UIStyler_RealItem.hxx>
#include <NXOpen/UIStyler_SingleSelectList.hxx>
#include <NXOpen/UIStyler_StringItem.hxx>
#include <NXOpen/UIStyler_Toggle.hxx>
#include <NXOpen/UIStyler_WideString.hxx>

#include <cassert>

using namespace NXOpen::UIStyler;

namespace KivNX {
namespace UI {

namespace {

template <class T>
bool trySet(StylerItem* item, bool sensitive) {
    if (auto* typed = dynamic_cast<T*>(item)) {
        typed->SetSensitivity(sensitive);
        return true;
    }
    return false;
}

// Option menus, radio boxes and toggles address their entries; -1 is the whole item.
template <class T>
bool trySetWhole(StylerItem* item, bool sensitive) {
    if (auto* typed = dynamic_cast<T*>(item)) {
        typed->SetSensitivity(-1, sensitive);
        return true;
    }
    return false;
}

} // namespace

void setSensitivity(StylerItem* item, bool sensitive) {
    const bool set = trySet<PushButton>(item, sensitive) ||
                     trySet<SingleSelectList>(item, sensitive) ||
                     trySet<GroupBox>(item, sensitive) || trySet<StringItem>(item, sensitive) ||
                     trySet<WideString>(item, sensitive) || trySet<MultiTextBox>(item, sensitive) ||
                     trySet<IntegerItem>(item, sensitive) || trySet<RealItem>(item, sensitive) ||
                     trySet<LabelItem>(item, sensitive) || trySet<ColorTool>(item, sensitive) ||
                     trySetWhole<OptionMenu>(item, sensitive) ||
                     trySetWhole<RadioBox>(item, sensitive) || trySetWhole<Toggle>(item, sensitive);
    assert(set && "setSensitivity: an item of a class it does not know");
    (void)set;
}

} // namespace UI
} // namespace KivNX
