#include "border/frame_template.h"

#include "kivug/search_file_list.h"
#include "ui/message_dialogs.h"

#include <NXOpen/BasePart.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/PartLoadStatus.hxx>
#include <NXOpen/Session.hxx>

#include <uf.h>
#include <uf_disp.h>
#include <uf_draw.h>
#include <uf_modl.h>
#include <uf_ui.h>

#include <memory>
#include <stdexcept>

namespace QorBorderConf {

namespace {

/// ANSI sheets A, B, C, D, E, F, H, J in inches, indexed by NX's English size code - 1.
const SheetSize kEnglishSheets[] = {{8.5, 11}, {11, 17}, {17, 22}, {22, 34},
                                    {34, 44},  {28, 40}, {28, 44}, {34, 55}};
/// ISO 216 sheets A0 to A4 in millimetres, indexed by NX's metric size code - 1.
const SheetSize kMetricSheets[] = {{841, 1189}, {594, 841}, {420, 594}, {297, 420}, {210, 297}};

template <std::size_t N>
SheetSize sheetOfCode(const SheetSize (&sheets)[N], int code, const char* kind) {
    if (code < 1 || code > static_cast<int>(N)) {
        throw std::runtime_error("Unknown " + std::string(kind) + " drawing size code " +
                                 std::to_string(code));
    }
    return sheets[code - 1];
}

/// Frees an array that NX allocated.
struct UfFree {
    void operator()(tag_t* data) const { UF_free(data); }
};

} // namespace

boost::filesystem::path findFrameTemplate(const std::string& name) {
    return KivUg::findFile(name, kFrameTemplateFolder, false);
}

void reportTemplateNotFound(const std::string& name) {
    KivNX::UI::errorDialog("Template Not Found", "Template file '" + name + "' was not found.");
}

OpenedTemplate openAsDisplayPart(const boost::filesystem::path& file) {
    NXOpen::PartCollection* parts = NXOpen::Session::GetSession()->Parts();
    OpenedTemplate result;
    result.previous = parts->Display();
    NXOpen::PartLoadStatus* status = nullptr;
    result.opened = parts->OpenDisplay(file.string(), &status);
    std::unique_ptr<NXOpen::PartLoadStatus> owned(status);
    return result;
}

void restoreDisplayPart(NXOpen::BasePart* previous, NXOpen::BasePart* opened) {
    if (previous) {
        NXOpen::PartLoadStatus* status = nullptr;
        NXOpen::Session::GetSession()->Parts()->SetDisplay(previous, false, false, &status);
        std::unique_ptr<NXOpen::PartLoadStatus> owned(status);
    }
    if (opened && opened != previous) {
        opened->Close(NXOpen::BasePart::CloseWholeTreeFalse,
                      NXOpen::BasePart::CloseModifiedDontCloseModified, nullptr);
    }
}

SheetSize sheetSizeOf(const UF_DRAW_info_t& info) {
    if (info.size_state == UF_DRAW_CUSTOM_SIZE) {
        return {info.size.custom_size[0], info.size.custom_size[1]};
    }
    if (info.size_state == UF_DRAW_ENGLISH_SIZE) {
        return sheetOfCode(kEnglishSheets, info.size.english_size_code, "English");
    }
    return sheetOfCode(kMetricSheets, info.size.metric_size_code, "metric");
}

std::optional<SheetSize> onlyDrawingSheetSize() {
    int count = 0;
    if (UF_DRAW_ask_num_drawings(&count) != 0 || count != 1) {
        return std::nullopt;
    }
    int listed = 0;
    tag_t* drawings = nullptr;
    if (const int code = UF_DRAW_ask_drawings(&listed, &drawings)) {
        throw NXOpen::NXException::Create(code);
    }
    const std::unique_ptr<tag_t, UfFree> ownedDrawings(drawings);
    if (listed < 1 || !drawings) {
        return std::nullopt;
    }
    UF_DRAW_info_t info{};
    if (const int code = UF_DRAW_ask_drawing_info(drawings[0], &info)) {
        throw NXOpen::NXException::Create(code);
    }
    return sheetSizeOf(info);
}

tag_t selectObject(const std::string& title) {
    std::string message = "Select an object";
    std::string titleText = title;
    int response = 0;
    tag_t object = NULL_TAG;
    double cursor[3] = {0.0, 0.0, 0.0};
    tag_t view = NULL_TAG;
    if (UF_UI_select_with_single_dialog(message.data(), titleText.data(), UF_UI_SEL_SCOPE_WORK_PART,
                                        nullptr, nullptr, &response, &object, cursor, &view) != 0) {
        return NULL_TAG;
    }
    if (response != UF_UI_OBJECT_SELECTED && response != UF_UI_OBJECT_SELECTED_BY_NAME) {
        return NULL_TAG;
    }
    UF_DISP_set_highlight(object, 0);
    return object;
}

std::optional<double> minimumDistance(tag_t first, tag_t second) {
    double distance = 0.0;
    double onFirst[3] = {0.0, 0.0, 0.0};
    double onSecond[3] = {0.0, 0.0, 0.0};
    if (UF_MODL_ask_minimum_dist(first, second, 0, nullptr, 0, nullptr, &distance, onFirst,
                                 onSecond) != 0) {
        return std::nullopt;
    }
    return distance;
}

} // namespace QorBorderConf
