#include "nxsim_test_support.h"

#include <nxsim/error_codes.h>
#include <nxsim/runtime.h>

#include <NXOpen/NXException.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/UIStyler_Dialog.hxx>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace NXOpen;
using namespace NXOpen::UIStyler;

class StylerItems : public NxsimTest::Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        dialog.reset(UI::GetUI()->Styler()->CreateStylerDialog("nxsim_test_all.dlg"));
    }
    void TearDown() override {
        dialog.reset();
        Fixture::TearDown();
    }
    std::unique_ptr<Dialog> dialog;
};

std::vector<NXString> nx(std::initializer_list<const char*> items) {
    return std::vector<NXString>(items.begin(), items.end());
}

std::vector<std::string> texts(const std::vector<NXString>& items) {
    std::vector<std::string> out;
    for (const auto& i : items) {
        out.emplace_back(i.GetText());
    }
    return out;
}

TEST_F(StylerItems, ItemsStartWithTheValuesOfTheResourceFile) {
    EXPECT_EQ(std::string(dialog->GetStringItem("NAME")->ItemValue().GetText()), "start");
    EXPECT_EQ(dialog->GetIntegerItem("COUNT")->ItemValue(), 7);
    EXPECT_DOUBLE_EQ(dialog->GetRealItem("SCALE")->ItemValue(), 1.5);
    EXPECT_TRUE(dialog->GetToggle("ENABLED")->ItemValue());
    EXPECT_EQ(dialog->GetColorTool("COLOUR")->ItemValue(), 186);
    EXPECT_EQ(dialog->GetOptionMenu("UNITS")->ItemValue(), 1);
    EXPECT_EQ(dialog->GetRadioBox("CORNER")->ItemValue(), 0);
    EXPECT_EQ(texts(dialog->GetMultiTextBox("NOTES")->GetItemValues()),
              (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(texts(dialog->GetSingleSelectList("ROWS")->GetListItems()),
              (std::vector<std::string>{"alpha", "beta", "gamma"}));
    EXPECT_EQ(dialog->GetSingleSelectList("ROWS")->GetSelectedIndexValue(), -1);
    EXPECT_FALSE(dialog->GetPushButton("DISABLED_BUTTON")->Sensitivity());
    EXPECT_FALSE(dialog->GetPushButton("HIDDEN_BUTTON")->Visibility());
}

TEST_F(StylerItems, SingleSelectListOperations) {
    SingleSelectList* list = dialog->GetSingleSelectList("ROWS");
    std::vector<NXString> rows = nx({"a", "b", "c", "d"});
    list->SetListItems(rows);
    list->SetSelected(2);
    EXPECT_EQ(list->GetSelectedIndexValue(), 2);
    EXPECT_EQ(std::string(list->GetSelectedString().GetText()), "c");
    list->DeleteSubItem(0);
    EXPECT_EQ(list->GetSelectedIndexValue(), 1) << "the selection moves up with its row";
    list->DeleteSubItem(1);
    EXPECT_EQ(list->GetSelectedIndexValue(), -1) << "deleting the selected row clears it";
    EXPECT_EQ(std::string(list->GetSelectedString().GetText()), "");
    std::vector<NXString> more = nx({"e"});
    list->Append(more);
    EXPECT_EQ(texts(list->GetListItems()), (std::vector<std::string>{"b", "d", "e"}));
    list->SetSelected(0);
    list->DeselectSubItem(1);
    EXPECT_EQ(list->GetSelectedIndexValue(), 0) << "deselecting another row changes nothing";
    list->DeselectSubItem(0);
    EXPECT_EQ(list->GetSelectedIndexValue(), -1);
    list->SetSelected(1);
    list->SetSelected(-1);
    EXPECT_EQ(list->GetSelectedIndexValue(), -1);
    EXPECT_THROW(list->SetSelected(3), NXException);
    EXPECT_THROW(list->DeleteSubItem(-1), NXException);
    EXPECT_THROW(list->DeselectSubItem(9), NXException);
    list->SetSelected(0);
    list->SetListItems(rows);
    EXPECT_EQ(list->GetSelectedIndexValue(), -1) << "new rows clear the selection";
}

TEST_F(StylerItems, OptionMenuOperationsWithPerEntrySensitivity) {
    OptionMenu* menu = dialog->GetOptionMenu("UNITS");
    nxsim::RuntimeItem* item = nxsim::itemForHandle(menu->GetHandle()).get();
    EXPECT_FALSE(item->entrySensitive(2)) << "from the resource file";
    menu->SetSensitivity(2, true);
    menu->SetSensitivity(0, false);
    EXPECT_FALSE(item->entrySensitive(0));
    EXPECT_TRUE(item->entrySensitive(2));
    EXPECT_TRUE(menu->GetSensitivity()) << "one entry does not change the whole menu";
    menu->SetSensitivity(-1, false);
    EXPECT_FALSE(menu->GetSensitivity());
    EXPECT_THROW(menu->SetSensitivity(3, false), NXException);
    menu->SetItemValue(2);
    EXPECT_EQ(menu->ItemValue(), 2);
    EXPECT_THROW(menu->SetItemValue(3), NXException);
    std::vector<NXString> entries = nx({"x", "y"});
    menu->SetItems(entries);
    EXPECT_EQ(texts(menu->GetItems()), (std::vector<std::string>{"x", "y"}));
    EXPECT_EQ(menu->ItemValue(), 0);
    EXPECT_TRUE(item->entrySensitive(0)) << "new entries are sensitive";
    menu->SetLabel("Unit");
    EXPECT_EQ(item->label(), "Unit");
    menu->SetVisibility(false);
    EXPECT_FALSE(item->visible());
}

TEST_F(StylerItems, TextNumberToggleColourAndRadioOperations) {
    StringItem* name = dialog->GetStringItem("NAME");
    name->SetItemValue("Frame A");
    EXPECT_EQ(std::string(name->ItemValue().GetText()), "Frame A");
    WideString* wide = dialog->GetWideString("WIDE");
    wide->SetItemValue("Größe");
    wide->SetLabel("Wide label");
    EXPECT_EQ(std::string(wide->ItemValue().GetText()), "Größe");
    MultiTextBox* notes = dialog->GetMultiTextBox("NOTES");
    std::vector<NXString> lines = nx({"a", "", "c"});
    notes->SetItemValues(lines);
    EXPECT_EQ(texts(notes->GetItemValues()), (std::vector<std::string>{"a", "", "c"}));
    IntegerItem* count = dialog->GetIntegerItem("COUNT");
    count->SetItemValue(-4);
    EXPECT_EQ(count->ItemValue(), -4);
    RealItem* scale = dialog->GetRealItem("SCALE");
    scale->SetItemValue(0.1);
    EXPECT_DOUBLE_EQ(scale->ItemValue(), 0.1);
    Toggle* enabled = dialog->GetToggle("ENABLED");
    enabled->SetItemValue(false);
    EXPECT_FALSE(enabled->ItemValue());
    enabled->SetSensitivity(-1, false);
    EXPECT_FALSE(nxsim::itemForHandle(enabled->GetHandle())->sensitive());
    EXPECT_THROW(enabled->SetSensitivity(1, true), NXException);
    ColorTool* colour = dialog->GetColorTool("COLOUR");
    colour->SetItemValue(3);
    EXPECT_EQ(colour->ItemValue(), 3);
    RadioBox* corner = dialog->GetRadioBox("CORNER");
    corner->SetItemValue(1);
    EXPECT_EQ(corner->ItemValue(), 1);
    corner->SetSensitivity(0, false);
    EXPECT_FALSE(nxsim::itemForHandle(corner->GetHandle())->entrySensitive(0));
    EXPECT_THROW(corner->SetItemValue(2), NXException);
}

TEST_F(StylerItems, LabelsGroupsFocusTitleAndNavigation) {
    dialog->GetLabelItem("STATUS")->SetLabel("Busy");
    GroupBox* group = dialog->GetGroupBox("MAIN_GROUP");
    group->SetSensitivity(false);
    group->SetLabel("Everything");
    auto* rt = static_cast<nxsim::RuntimeItem*>(dialog->GetPushButton("PRESS_ME")->GetHandle());
    EXPECT_TRUE(rt->sensitive());
    EXPECT_FALSE(rt->effectivelySensitive()) << "an insensitive group disables its items";
    group->SetVisibility(false);
    EXPECT_FALSE(rt->effectivelyVisible());
    dialog->GetStringItem("NAME")->SetFocus();
    nxsim::RuntimeDialog& runtime = rt->dialog();
    ASSERT_NE(runtime.focus(), nullptr);
    EXPECT_EQ(runtime.focus()->name(), "NAME");
    dialog->GetIntegerItem("COUNT")->SetFocus();
    EXPECT_EQ(runtime.focus()->name(), "COUNT");
    EXPECT_EQ(runtime.item("STATUS")->label(), "Busy");
    DialogItem* self = dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX");
    self->SetTitle("Renamed");
    self->SetNavigationSensitivity(DialogItem::DialogItemIndexOk, false);
    EXPECT_EQ(runtime.title(), "Renamed");
    EXPECT_FALSE(runtime.navigationSensitive(0));
    EXPECT_TRUE(runtime.navigationSensitive(3));
    EXPECT_EQ(dialog->GetDialogIndex("nxsim_test_all"), self);
}

TEST_F(StylerItems, LabelSensitivityVisibilityAndFocusOfEveryKind) {
    auto rt = [](StylerItem* item) { return static_cast<nxsim::RuntimeItem*>(item->GetHandle()); };
    auto dialogOf = [&](StylerItem* item) -> nxsim::RuntimeDialog& { return rt(item)->dialog(); };

    PushButton* button = dialog->GetPushButton("PRESS_ME");
    button->SetLabel("Go");
    button->SetVisibility(false);
    button->SetFocus();
    EXPECT_EQ(rt(button)->label(), "Go");
    EXPECT_FALSE(button->Visibility());
    EXPECT_EQ(dialogOf(button).focus(), rt(button));

    SingleSelectList* list = dialog->GetSingleSelectList("ROWS");
    list->SetSensitivity(false);
    list->SetVisibility(false);
    list->SetFocus();
    EXPECT_FALSE(rt(list)->sensitive());
    EXPECT_FALSE(rt(list)->visible());
    EXPECT_TRUE(rt(list)->focused());

    for (StylerItem* item : std::initializer_list<StylerItem*>{
             dialog->GetStringItem("NAME"), dialog->GetWideString("WIDE"),
             dialog->GetMultiTextBox("NOTES"), dialog->GetIntegerItem("COUNT"),
             dialog->GetRealItem("SCALE")}) {
        const std::string name = rt(item)->name();
        if (auto* s = dynamic_cast<StringItem*>(item)) {
            s->SetLabel("L");
            s->SetSensitivity(false);
            s->SetVisibility(false);
            s->SetFocus();
        } else if (auto* w = dynamic_cast<WideString*>(item)) {
            w->SetLabel("L");
            w->SetSensitivity(false);
            w->SetVisibility(false);
            w->SetFocus();
        } else if (auto* m = dynamic_cast<MultiTextBox*>(item)) {
            m->SetLabel("L");
            m->SetSensitivity(false);
            m->SetVisibility(false);
            m->SetFocus();
        } else if (auto* i = dynamic_cast<IntegerItem*>(item)) {
            i->SetLabel("L");
            i->SetSensitivity(false);
            i->SetVisibility(false);
            i->SetFocus();
        } else if (auto* r = dynamic_cast<RealItem*>(item)) {
            r->SetLabel("L");
            r->SetSensitivity(false);
            r->SetVisibility(false);
            r->SetFocus();
        }
        EXPECT_EQ(rt(item)->label(), "L") << name;
        EXPECT_FALSE(rt(item)->sensitive()) << name;
        EXPECT_FALSE(rt(item)->visible()) << name;
        EXPECT_TRUE(rt(item)->focused()) << name;
    }

    RadioBox* corner = dialog->GetRadioBox("CORNER");
    corner->SetSensitivity(-1, false);
    corner->SetVisibility(false);
    EXPECT_FALSE(rt(corner)->sensitive());
    EXPECT_FALSE(rt(corner)->visible());

    Toggle* toggle = dialog->GetToggle("ENABLED");
    toggle->SetSensitivity(0, false);
    toggle->SetVisibility(false);
    toggle->SetFocus();
    EXPECT_FALSE(rt(toggle)->sensitive());
    EXPECT_FALSE(rt(toggle)->visible());
    EXPECT_TRUE(rt(toggle)->focused());

    ColorTool* colour = dialog->GetColorTool("COLOUR");
    colour->SetSensitivity(false);
    colour->SetVisibility(false);
    EXPECT_FALSE(rt(colour)->sensitive());
    EXPECT_FALSE(rt(colour)->visible());

    LabelItem* label = dialog->GetLabelItem("STATUS");
    label->SetSensitivity(false);
    label->SetVisibility(false);
    EXPECT_FALSE(rt(label)->sensitive());
    EXPECT_FALSE(rt(label)->visible());
}

TEST_F(StylerItems, CopiesAndHandleObjectsActOnTheSameItem) {
    SingleSelectList* list = dialog->GetSingleSelectList("ROWS");
    SingleSelectList copy(*list);
    SingleSelectList fromHandle(list->GetHandle());
    copy.SetSelected(1);
    EXPECT_EQ(list->GetSelectedIndexValue(), 1);
    EXPECT_EQ(fromHandle.GetSelectedIndexValue(), 1);
    EXPECT_EQ(dialog->GetSingleSelectList("ROWS"), list) << "the getter returns the same item";
}

TEST_F(StylerItems, MissingOrOtherKindNamesRaiseNamingDialogItemAndKind) {
    try {
        dialog->GetPushButton("NO_SUCH");
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::NoSuchItem);
        EXPECT_EQ(std::string(e.what()),
                  "The dialog has no such item: dialog nxsim_test_all (nxsim_test_all.dlg) has "
                  "no push button named NO_SUCH");
    }
    try {
        dialog->GetOptionMenu("ROWS");
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::WrongItemKind);
        EXPECT_EQ(std::string(e.what()),
                  "The dialog item is of another kind: item ROWS of dialog nxsim_test_all "
                  "(nxsim_test_all.dlg) is a single select list, not an option menu");
    }
    EXPECT_THROW(dialog->GetDialogIndex("SOMETHING"), NXException);
    EXPECT_THROW(PushButton(dialog->GetSingleSelectList("ROWS")->GetHandle()), NXException);
}

TEST_F(StylerItems, ItemsOfADeletedDialogRefuseEveryOperation) {
    PushButton copy(*dialog->GetPushButton("PRESS_ME"));
    dialog.reset();
    try {
        copy.SetSensitivity(false);
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::DialogDeleted);
    }
}

TEST_F(StylerItems, MissingOrMalformedResourceFileRaisesNamingIt) {
    try {
        UI::GetUI()->Styler()->CreateStylerDialog("nowhere.dlg");
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::DialogResourceNotFound);
        EXPECT_NE(std::string(e.what()).find("nowhere.dlg"), std::string::npos);
    }
    try {
        UI::GetUI()->Styler()->CreateStylerDialog(std::string(NXSIM_TEST_DATA) +
                                                  "/parts/custom.prt");
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::InvalidDialogResource);
        EXPECT_NE(
            std::string(e.what()).find("custom.prt:4: malformed XML: No document element found"),
            std::string::npos)
            << e.what();
    }
}

TEST_F(StylerItems, ObserversHearOfChanges) {
    struct Recorder : nxsim::DialogObserver {
        std::vector<std::string> seen;
        void itemChanged(const nxsim::RuntimeItem& item) override { seen.push_back(item.name()); }
        void dialogChanged(const nxsim::RuntimeDialog& d) override { seen.push_back(d.title()); }
    } recorder;
    auto* rt = static_cast<nxsim::RuntimeItem*>(dialog->GetPushButton("PRESS_ME")->GetHandle());
    rt->dialog().addObserver(&recorder);
    dialog->GetPushButton("PRESS_ME")->SetSensitivity(false);
    dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")->SetTitle("T");
    rt->dialog().removeObserver(&recorder);
    dialog->GetPushButton("PRESS_ME")->SetSensitivity(true);
    EXPECT_EQ(recorder.seen, (std::vector<std::string>{"PRESS_ME", "T"}));
}

} // namespace

namespace {

// A real item shows the shortest text that reads back as its value, in plain notation where
// that is as short as it gets: a sheet length of 420 reads "420", not "4.2e+02".
TEST_F(StylerItems, ARealItemShowsItsValueWithoutAnExponentWhereNoneIsNeeded) {
    RealItem* scale = dialog->GetRealItem("SCALE");
    const auto shown = [&](double value) {
        scale->SetItemValue(value);
        return nxsim::itemForHandle(scale->GetHandle())->valueText();
    };
    EXPECT_EQ(shown(420), "420");
    EXPECT_EQ(shown(1189), "1189");
    EXPECT_EQ(shown(0.1), "0.1");
    EXPECT_EQ(shown(297.5), "297.5");
    EXPECT_EQ(shown(-8.5), "-8.5");
    EXPECT_EQ(shown(1e-7), "1e-07");
    EXPECT_EQ(shown(1e300), "1e+300");
}

} // namespace
