// A small user function for the tests of the platform stand-in: it uses the NX Open calls the
// program uses, the way the program uses them, and reports what it got in the RESULT label.

#include <NXOpen/NXException.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/UIStyler_Dialog.hxx>
#include <nxsim/presenter.h>
#include <uf.h>
#include <uf_disp.h>
#include <uf_draw.h>
#include <uf_modl.h>
#include <uf_ui.h>

#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

using namespace NXOpen;
using namespace NXOpen::UIStyler;

namespace {

void check(int code) {
    if (code != 0) {
        throw NXException::Create(code);
    }
}

class SessionGuard {
public:
    SessionGuard() { check(UF_initialize()); }
    ~SessionGuard() noexcept(false) { check(UF_terminate()); }
};

class ChildDialog {
public:
    DialogResponse show() {
        std::unique_ptr<Dialog> dialog(
            UI::GetUI()->Styler()->CreateStylerDialog("nxsim_test_child.dlg"));
        m_files = dialog->GetSingleSelectList("FILES");
        m_text = dialog->GetStringItem("TEXT");
        m_files->AddDoubleClickHandler(make_callback(this, &ChildDialog::onDoubleClick), false);
        dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX")
            ->AddOkayHandler(make_callback(this, &ChildDialog::onOk), false);
        DialogResponse response = dialog->Show();
        return response;
    }
    std::string chosen;

private:
    DialogState onDoubleClick(StylerEvent*) {
        chosen = m_files->GetSelectedString().GetText();
        return DialogStateExitDialog;
    }
    DialogState onOk(StylerEvent*) {
        chosen = m_text->ItemValue().GetText();
        return DialogStateExitDialog;
    }
    SingleSelectList* m_files = nullptr;
    StringItem* m_text = nullptr;
};

class MainDialog {
public:
    void show() {
        std::unique_ptr<Dialog> dialog(
            UI::GetUI()->Styler()->CreateStylerDialog("nxsim_test_main.dlg"));
        m_result = dialog->GetLabelItem("RESULT");
        m_name = dialog->GetStringItem("NAME");
        m_partFile = dialog->GetStringItem("PART_FILE");
        m_code = dialog->GetIntegerItem("CODE");
        bind(*dialog, "OPEN_CHILD", &MainDialog::onOpenChild, true);
        bind(*dialog, "SHOW_INFO", &MainDialog::onShowInfo, true);
        bind(*dialog, "PICK", &MainDialog::onPick, true);
        bind(*dialog, "POINT", &MainDialog::onPoint, true);
        bind(*dialog, "OPEN_PART", &MainDialog::onOpenPart, false);
        bind(*dialog, "MEASURE", &MainDialog::onMeasure, true);
        bind(*dialog, "LISTING", &MainDialog::onListing, false);
        bind(*dialog, "SAVE", &MainDialog::onSave, false);
        bind(*dialog, "FAIL", &MainDialog::onFail, false);
        bind(*dialog, "QUIT", &MainDialog::onQuit, false);
        bind(*dialog, "ENV", &MainDialog::onEnvironment, false);
        DialogItem* self = dialog->GetDialogIndex("UF_STYLER_DIALOG_INDEX");
        self->AddConstructHandler(make_callback(this, &MainDialog::onConstruct), false);
        self->AddOkayHandler(make_callback(this, &MainDialog::onOk), true);
        dialog->Show();
    }

private:
    void bind(Dialog& dialog, const char* name, DialogState (MainDialog::*fn)(StylerEvent*),
              bool launches) {
        dialog.GetPushButton(name)->AddActivateHandler(make_callback(this, fn), launches);
    }
    void report(const std::string& text) { m_result->SetLabel(text); }

    DialogState onConstruct(StylerEvent*) {
        report("constructed");
        return DialogStateContinueDialog;
    }
    DialogState onOpenChild(StylerEvent*) {
        ChildDialog child;
        int response = child.show();
        report("response " + std::to_string(response) + " " + child.chosen);
        return DialogStateContinueDialog;
    }
    DialogState onShowInfo(StylerEvent*) {
        UI::GetUI()->NXMessageBox()->Show("Info", NXMessageBox::DialogTypeInformation,
                                          "Hello " + std::string(m_name->ItemValue().GetText()));
        report("informed");
        return DialogStateContinueDialog;
    }
    DialogState onPick(StylerEvent*) {
        int row = nxsim::pickFromList("Frame Templates", "Select template from list",
                                      {"a3.prt", "a4.prt", "d.prt"}, -1);
        report("picked " + std::to_string(row));
        return DialogStateContinueDialog;
    }
    DialogState onPoint(StylerEvent*) {
        char cue[] = "Select corner point";
        int mode[2] = {0, 0};
        double point[3] = {0, 0, 0};
        int rc = uc1616(cue, mode, 0, point);
        std::ostringstream out;
        out << "point " << rc;
        if (rc == 5) {
            out << " " << point[0] << " " << point[1];
        }
        report(out.str());
        return DialogStateContinueDialog;
    }
    DialogState onOpenPart(StylerEvent*) {
        PartCollection* parts = Session::GetSession()->Parts();
        PartLoadStatus* status = nullptr;
        parts->OpenDisplay(m_partFile->ItemValue(), &status);
        delete status;
        int count = 0;
        check(UF_DRAW_ask_num_drawings(&count));
        std::ostringstream out;
        out << "drawings " << count;
        tag_t* drawings = nullptr;
        check(UF_DRAW_ask_drawings(&count, &drawings));
        for (int i = 0; i < count; ++i) {
            UF_DRAW_info_t info;
            check(UF_DRAW_ask_drawing_info(drawings[i], &info));
            out << " [" << info.size_state << " ";
            if (info.size_state == UF_DRAW_CUSTOM_SIZE) {
                out << info.size.custom_size[0] << "x" << info.size.custom_size[1];
            } else if (info.size_state == UF_DRAW_ENGLISH_SIZE) {
                out << info.size.english_size_code;
            } else {
                out << info.size.metric_size_code;
            }
            out << "]";
        }
        UF_free(drawings);
        Drawings::DrawingSheet* sheet = parts->Work()->DrawingSheets()->CurrentDrawingSheet();
        if (sheet) {
            out << " sheet " << sheet->Height() << "x" << sheet->Length();
        }
        report(out.str());
        return DialogStateContinueDialog;
    }
    DialogState onMeasure(StylerEvent*) {
        tag_t objects[2] = {NULL_TAG, NULL_TAG};
        const char* titles[2] = {"First object", "Second object"};
        for (int i = 0; i < 2; ++i) {
            char message[] = "Select an object";
            std::string title = titles[i];
            int response = 0;
            double cursor[3];
            tag_t view = NULL_TAG;
            check(UF_UI_select_with_single_dialog(message, title.data(), UF_UI_SEL_SCOPE_WORK_PART,
                                                  nullptr, nullptr, &response, &objects[i], cursor,
                                                  &view));
            if (response != UF_UI_OBJECT_SELECTED && response != UF_UI_OBJECT_SELECTED_BY_NAME) {
                report("measure cancelled");
                return DialogStateContinueDialog;
            }
            check(UF_DISP_set_highlight(objects[i], 0));
        }
        double distance = 0;
        double p1[3], p2[3];
        int rc = UF_MODL_ask_minimum_dist(objects[0], objects[1], 0, nullptr, 0, nullptr, &distance,
                                          p1, p2);
        std::ostringstream out;
        out << "distance " << rc << " " << distance;
        report(out.str());
        return DialogStateContinueDialog;
    }
    DialogState onListing(StylerEvent*) {
        ListingWindow* window = Session::GetSession()->ListingWindow();
        if (!window->IsOpen()) {
            window->Open();
        }
        window->WriteLine("Summary of " + std::string(m_name->ItemValue().GetText()));
        return DialogStateContinueDialog;
    }
    DialogState onSave(StylerEvent*) {
        check(UF_UI_toggle_stoplight(1));
        char prompt[] = "Saving";
        check(UF_UI_set_prompt(prompt));
        check(UF_UI_toggle_stoplight(0));
        return DialogStateContinueDialog;
    }
    DialogState onFail(StylerEvent*) { throw NXException::Create(m_code->ItemValue()); }
    DialogState onQuit(StylerEvent*) { return DialogStateExitDialog; }
    DialogState onEnvironment(StylerEvent*) {
        std::string text;
        for (const char* name : {"QORFMT_SITE", "QORFMT_CONFIGURATION", "QORFMT_SEARCH_PATH"}) {
            const char* value = std::getenv(name);
            text += std::string(text.empty() ? "" : "|") + (value ? value : "-");
        }
        report(text);
        return DialogStateContinueDialog;
    }
    DialogState onOk(StylerEvent*) {
        if (std::string(m_name->ItemValue().GetText()).empty()) {
            UI::GetUI()->NXMessageBox()->Show("Validation Error", NXMessageBox::DialogTypeError,
                                              "Name must not be empty.");
            m_name->SetFocus();
            return DialogStateContinueDialog;
        }
        return DialogStateExitDialog;
    }

    LabelItem* m_result = nullptr;
    StringItem* m_name = nullptr;
    StringItem* m_partFile = nullptr;
    IntegerItem* m_code = nullptr;
};

} // namespace

extern "C" __attribute__((visibility("default"))) void ufusr(char*, int*, int) {
    try {
        SessionGuard guard;
        MainDialog dialog;
        dialog.show();
    } catch (const NXException& e) {
        if (e.ErrorCode() != 1105003) {
            UI::GetUI()->NXMessageBox()->Show("Error", NXMessageBox::DialogTypeError, e.what());
        }
    } catch (const std::exception& e) {
        UI::GetUI()->NXMessageBox()->Show("Error", NXMessageBox::DialogTypeError, e.what());
    }
}
