#include "nxsim_test_support.h"
#include "testutil/test_presenter.h"

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
using NxsimTest::handler;

class DialogShow : public NxsimTest::Fixture {
protected:
    std::unique_ptr<Dialog> create(const char* file = "nxsim_test_all.dlg") {
        return std::unique_ptr<Dialog>(UI::GetUI()->Styler()->CreateStylerDialog(file));
    }
    DialogResponse showWith(Dialog& dialog, std::function<void(nxsim::RuntimeDialog&)> fn) {
        TestUtil::TestPresenter presenter;
        presenter.dialog = std::move(fn);
        nxsim::ScopedPresenter scoped(&presenter);
        return dialog.Show();
    }
};

TEST_F(DialogShow, OkWithoutHandlerEndsWithResponse2) {
    auto dialog = create();
    EXPECT_EQ(showWith(*dialog, [](nxsim::RuntimeDialog& d) { d.ok(); }), DialogResponseOk);
    EXPECT_EQ(static_cast<int>(DialogResponseOk), 2);
}

TEST_F(DialogShow, CancelAndCloseEndWithResponse3AndRunTheCancelHandler) {
    auto dialog = create();
    int cancels = 0;
    dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")
        ->AddCancelHandler(handler([&](StylerEvent*) {
                               ++cancels;
                               return DialogStateContinueDialog;
                           }),
                           false);
    EXPECT_EQ(showWith(*dialog, [](nxsim::RuntimeDialog& d) { d.cancel(); }), 3);
    EXPECT_EQ(showWith(*dialog, [](nxsim::RuntimeDialog& d) { d.close(); }), 3);
    EXPECT_EQ(cancels, 2);
}

TEST_F(DialogShow, OkHandlerDecidesWhetherTheDialogEnds) {
    auto dialog = create();
    int calls = 0;
    dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")
        ->AddOkayHandler(handler([&](StylerEvent* e) {
                             EXPECT_EQ(e->GetReason(), StylerEvent::ReasonOkay);
                             EXPECT_NE(dynamic_cast<DialogItem*>(e->GetStylerItem()), nullptr);
                             return ++calls == 1 ? DialogStateContinueDialog
                                                 : DialogStateExitDialog;
                         }),
                         false);
    DialogResponse r = showWith(*dialog, [&](nxsim::RuntimeDialog& d) {
        d.ok();
        EXPECT_FALSE(d.ended()) << "the handler kept it open";
        d.ok();
        EXPECT_TRUE(d.ended());
    });
    EXPECT_EQ(r, DialogResponseOk);
    EXPECT_EQ(calls, 2);
}

TEST_F(DialogShow, OtherHandlerReturningExitEndsWithResponse9) {
    auto dialog = create();
    SingleSelectList* rows = dialog->GetSingleSelectList("ROWS");
    std::string chosen;
    rows->AddDoubleClickHandler(handler([&](StylerEvent* e) {
                                    auto* list =
                                        dynamic_cast<SingleSelectList*>(e->GetStylerItem());
                                    EXPECT_NE(list, nullptr);
                                    EXPECT_EQ(e->GetReason(), StylerEvent::ReasonDoubleClick);
                                    chosen = list->GetSelectedString().GetText();
                                    return DialogStateExitDialog;
                                }),
                                false);
    EXPECT_EQ(showWith(*dialog, [](nxsim::RuntimeDialog& d) { d.doubleClick("ROWS", 1); }), 9);
    EXPECT_EQ(chosen, "beta");
}

TEST_F(DialogShow, ConstructHandlerRunsBeforeThePresenterSeesTheDialog) {
    auto dialog = create();
    dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")
        ->AddConstructHandler(handler([&](StylerEvent*) {
                                  dialog->GetStringItem("NAME")->SetItemValue("filled");
                                  return DialogStateContinueDialog;
                              }),
                              false);
    std::string seen;
    showWith(*dialog, [&](nxsim::RuntimeDialog& d) {
        seen = d.item("NAME")->text();
        d.ok();
    });
    EXPECT_EQ(seen, "filled");
}

TEST_F(DialogShow, EventsReachTheirHandlersAndSetDoesNot) {
    auto dialog = create();
    std::vector<std::string> events;
    auto record = [&](const char* what) {
        return handler([&events, what](StylerEvent*) {
            events.emplace_back(what);
            return DialogStateContinueDialog;
        });
    };
    dialog->GetPushButton("PRESS_ME")->AddActivateHandler(record("press"), false);
    dialog->GetSingleSelectList("ROWS")->AddActivateHandler(record("select"), false);
    dialog->GetOptionMenu("UNITS")->AddActivateHandler(record("units"), false);
    dialog->GetRadioBox("CORNER")->AddValueChangedHandler(record("corner"), false);
    dialog->GetStringItem("NAME")->AddActivateHandler(record("enter"), false);
    dialog->GetToggle("ENABLED")->AddValueChangedHandler(record("toggle"), false);
    dialog->GetIntegerItem("COUNT")->AddActivateHandler(record("count"), false);
    showWith(*dialog, [](nxsim::RuntimeDialog& d) {
        d.press("PRESS_ME");
        d.select("ROWS", 2);
        d.deselect("ROWS");
        d.choose("UNITS", 0);
        d.choose("CORNER", std::string("Top right"));
        d.setValue("NAME", "typed");
        d.setValue("COUNT", "12");
        d.setValue("SCALE", "2.25");
        d.setValue("NOTES", "a\nb");
        d.setValue("ENABLED", "off");
        d.setValue("COLOUR", "5");
        d.enter("NAME");
        d.toggle("ENABLED", true);
        d.ok();
    });
    EXPECT_EQ(events,
              (std::vector<std::string>{"press", "select", "units", "corner", "enter", "toggle"}));
    EXPECT_EQ(dialog->GetSingleSelectList("ROWS")->GetSelectedIndexValue(), -1);
    EXPECT_EQ(dialog->GetOptionMenu("UNITS")->ItemValue(), 0);
    EXPECT_EQ(dialog->GetRadioBox("CORNER")->ItemValue(), 1);
    EXPECT_EQ(std::string(dialog->GetStringItem("NAME")->ItemValue().GetText()), "typed");
    EXPECT_EQ(dialog->GetIntegerItem("COUNT")->ItemValue(), 12);
    EXPECT_DOUBLE_EQ(dialog->GetRealItem("SCALE")->ItemValue(), 2.25);
    EXPECT_EQ(dialog->GetMultiTextBox("NOTES")->GetItemValues().size(), 2u);
    EXPECT_TRUE(dialog->GetToggle("ENABLED")->ItemValue());
    EXPECT_EQ(dialog->GetColorTool("COLOUR")->ItemValue(), 5);
}

TEST_F(DialogShow, ActionsOnInsensitiveHiddenOrUnfitItemsAreRefused) {
    auto dialog = create();
    std::vector<std::string> errors;
    auto attempt = [&](const std::function<void()>& action) {
        try {
            action();
            errors.emplace_back("accepted");
        } catch (const nxsim::ActionRefused& e) {
            errors.emplace_back(e.what());
        }
    };
    showWith(*dialog, [&](nxsim::RuntimeDialog& d) {
        attempt([&] { d.press("DISABLED_BUTTON"); });
        attempt([&] { d.press("HIDDEN_BUTTON"); });
        attempt([&] { d.press("INNER_BUTTON"); });
        attempt([&] { d.press("NOTHING"); });
        attempt([&] { d.press("ROWS"); });
        attempt([&] { d.select("ROWS", 3); });
        attempt([&] { d.choose("UNITS", 2); });
        attempt([&] { d.choose("UNITS", std::string("Furlongs")); });
        attempt([&] { d.setValue("COUNT", "many"); });
        attempt([&] { d.setValue("ENABLED", "yes"); });
        attempt([&] { d.press("PRESS_ME"); });
        d.ok();
    });
    EXPECT_EQ(errors,
              (std::vector<std::string>{
                  "cannot press DISABLED_BUTTON of dialog nxsim_test_all: it is insensitive",
                  "cannot press HIDDEN_BUTTON of dialog nxsim_test_all: it is hidden",
                  "cannot press INNER_BUTTON of dialog nxsim_test_all: it is insensitive",
                  "dialog nxsim_test_all has no item NOTHING",
                  "cannot press ROWS of dialog nxsim_test_all: it is a single select list, not "
                  "a push button",
                  "cannot select row 3 of ROWS of dialog nxsim_test_all: it has 3 rows",
                  "cannot choose entry 2 (\"Points\") of UNITS of dialog nxsim_test_all: the "
                  "entry is insensitive",
                  "cannot choose \"Furlongs\" in UNITS of dialog nxsim_test_all: there is no "
                  "such entry",
                  "cannot set COUNT of dialog nxsim_test_all to \"many\": not an integer",
                  "cannot set ENABLED of dialog nxsim_test_all to \"yes\": a toggle is on or off",
                  "accepted"}));
}

TEST_F(DialogShow, InsensitiveOkButtonIsRefused) {
    auto dialog = create();
    dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")
        ->SetNavigationSensitivity(DialogItem::DialogItemIndexOk, false);
    showWith(*dialog, [](nxsim::RuntimeDialog& d) {
        EXPECT_THROW(d.ok(), nxsim::ActionRefused);
        d.cancel();
    });
}

TEST_F(DialogShow, HandlerExceptionsLeaveShowAndTheDialogIsNoLongerShown) {
    auto dialog = create();
    dialog->GetPushButton("PRESS_ME")
        ->AddActivateHandler(
            handler([](StylerEvent*) -> DialogState { throw NXException::Create(1105003); }),
            false);
    try {
        showWith(*dialog, [](nxsim::RuntimeDialog& d) { d.press("PRESS_ME"); });
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), 1105003);
    }
    EXPECT_TRUE(nxsim::shownDialogs().empty());
    EXPECT_EQ(showWith(*dialog, [](nxsim::RuntimeDialog& d) { d.ok(); }), 2)
        << "the dialog can be shown again";
}

TEST_F(DialogShow, ShowWithoutPresenterRaises) {
    auto dialog = create();
    try {
        dialog->Show();
        FAIL();
    } catch (const NXException& e) {
        EXPECT_EQ(e.ErrorCode(), nxsim::ErrorCode::NoPresenter);
    }
}

TEST_F(DialogShow, PresenterThatReturnsEarlyIsAnError) {
    auto dialog = create();
    EXPECT_THROW(showWith(*dialog, [](nxsim::RuntimeDialog&) {}), NXException);
}

TEST_F(DialogShow, NestedDialogsRunModallyInsideAHandler) {
    auto outer = create();
    std::vector<std::string> shownNames;
    DialogResponse innerResponse = DialogResponseCancel;
    outer->GetPushButton("PRESS_ME")
        ->AddActivateHandler(handler([&](StylerEvent*) {
                                 auto inner = create("nxsim_test_child.dlg");
                                 innerResponse = inner->Show();
                                 return DialogStateContinueDialog;
                             }),
                             true);
    EXPECT_TRUE(nxsim::itemForHandle(outer->GetPushButton("PRESS_ME")->GetHandle())
                    ->launchesDialog(nxsim::EventKind::Activate));
    DialogResponse outerResponse = showWith(*outer, [&](nxsim::RuntimeDialog& d) {
        for (auto* shown : nxsim::shownDialogs()) {
            shownNames.push_back(shown->journalName());
        }
        if (d.journalName() == "nxsim_test_all") {
            d.press("PRESS_ME");
            d.cancel();
        } else {
            d.ok();
        }
    });
    EXPECT_EQ(shownNames, (std::vector<std::string>{"nxsim_test_all", "nxsim_test_all",
                                                    "nxsim_test_child.dlg"}));
    EXPECT_EQ(innerResponse, DialogResponseOk);
    EXPECT_EQ(outerResponse, DialogResponseCancel);
}

TEST_F(DialogShow, UpdateStyleStateChangesInHandlersAreVisibleToThePresenter) {
    auto dialog = create();
    SingleSelectList* rows = dialog->GetSingleSelectList("ROWS");
    PushButton* press = dialog->GetPushButton("PRESS_ME");
    rows->AddActivateHandler(handler([&](StylerEvent*) {
                                 press->SetSensitivity(rows->GetSelectedIndexValue() >= 0);
                                 return DialogStateContinueDialog;
                             }),
                             false);
    press->SetSensitivity(false);
    showWith(*dialog, [](nxsim::RuntimeDialog& d) {
        EXPECT_FALSE(d.item("PRESS_ME")->effectivelySensitive());
        d.select("ROWS", 0);
        EXPECT_TRUE(d.item("PRESS_ME")->effectivelySensitive());
        d.ok();
    });
}

} // namespace
