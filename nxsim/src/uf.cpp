#include <uf.h>
#include <uf_disp.h>
#include <uf_draw.h>
#include <uf_modl.h>
#include <uf_ui.h>

#include "internal.h"
#include "platform_state.h"

#include <nxsim/error_codes.h>
#include <nxsim/presenter.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

using nxsim::detail::state;
namespace ErrorCode = nxsim::ErrorCode;

namespace {

// The common start of every UF_ function: logs the call, applies an injected fault and checks
// that the Open API is initialized.
int enter(const char* call) {
    if (int code = nxsim::detail::enterCall(call)) {
        return code;
    }
    return state().initializeDepth > 0 ? 0 : ErrorCode::NotInitialized;
}

double dot(const double a[3], const double b[3]) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// Closest points of segments p1-q1 and p2-q2 (a point is a segment of length zero).
void closestPoints(const double p1[3], const double q1[3], const double p2[3], const double q2[3],
                   double c1[3], double c2[3]) {
    double d1[3], d2[3], r[3];
    for (int i = 0; i < 3; ++i) {
        d1[i] = q1[i] - p1[i];
        d2[i] = q2[i] - p2[i];
        r[i] = p1[i] - p2[i];
    }
    const double a = dot(d1, d1);
    const double e = dot(d2, d2);
    const double f = dot(d2, r);
    const double eps = 1e-300;
    double s = 0.0;
    double t = 0.0;
    if (a <= eps && e <= eps) {
        s = t = 0.0;
    } else if (a <= eps) {
        t = std::clamp(f / e, 0.0, 1.0);
    } else {
        const double c = dot(d1, r);
        if (e <= eps) {
            s = std::clamp(-c / a, 0.0, 1.0);
        } else {
            const double b = dot(d1, d2);
            const double denom = a * e - b * b;
            s = denom > eps ? std::clamp((b * f - c * e) / denom, 0.0, 1.0) : 0.0;
            t = (b * s + f) / e;
            if (t < 0.0) {
                t = 0.0;
                s = std::clamp(-c / a, 0.0, 1.0);
            } else if (t > 1.0) {
                t = 1.0;
                s = std::clamp((b - c) / a, 0.0, 1.0);
            }
        }
    }
    for (int i = 0; i < 3; ++i) {
        c1[i] = p1[i] + d1[i] * s;
        c2[i] = p2[i] + d2[i] * t;
    }
}

} // namespace

extern "C" {

int UF_initialize(void) {
    if (int code = nxsim::detail::enterCall("UF_initialize")) {
        return code;
    }
    ++state().initializeDepth;
    return 0;
}

int UF_terminate(void) {
    if (int code = nxsim::detail::enterCall("UF_terminate")) {
        return code;
    }
    if (state().initializeDepth > 0) {
        --state().initializeDepth;
    }
    return 0;
}

void UF_free(void* data) {
    nxsim::detail::enterCall("UF_free");
    std::free(data);
}

int UF_UI_toggle_stoplight(int on_off) {
    if (int code = enter("UF_UI_toggle_stoplight")) {
        return code;
    }
    state().toggles.push_back(on_off ? 1 : 0);
    if (const auto& listener = nxsim::detail::stoplightListener()) {
        listener(on_off != 0);
    }
    return 0;
}

int UF_UI_set_prompt(char* text) {
    if (int code = enter("UF_UI_set_prompt")) {
        return code;
    }
    if (!text) {
        return ErrorCode::InvalidArgument;
    }
    state().cue = text;
    ++state().cueSets;
    return 0;
}

int UF_UI_select_with_single_dialog(char* message, char* title, int scope,
                                    UF_UI_sel_init_fn_t init_proc, void* user_data, int* response,
                                    tag_t* object, double cursor[3], tag_t* view) {
    if (int code = enter("UF_UI_select_with_single_dialog")) {
        return code;
    }
    if (!response || !object) {
        return ErrorCode::InvalidArgument;
    }
    if (!state().display) {
        return ErrorCode::NoWorkPart;
    }
    if (init_proc) {
        int selection = 0;
        if (init_proc(&selection, user_data) != UF_UI_SEL_SUCCESS) {
            return ErrorCode::InvalidArgument;
        }
    }
    nxsim::Presenter* presenter = nxsim::presenter();
    if (!presenter) {
        return ErrorCode::NoPresenter;
    }
    nxsim::ObjectAnswer answer =
        presenter->selectObject(message ? message : "", title ? title : "", scope);
    *object = NULL_TAG;
    if (view) {
        *view = NULL_TAG;
    }
    switch (answer.status) {
    case nxsim::ObjectAnswer::Back:
        *response = UF_UI_BACK;
        return 0;
    case nxsim::ObjectAnswer::Cancel:
        *response = UF_UI_CANCEL;
        return 0;
    case nxsim::ObjectAnswer::Selected:
        break;
    }
    const nxsim::SimObject* selected = nxsim::detail::simPart(*state().display).object(answer.tag);
    if (!selected) {
        return ErrorCode::InvalidTag;
    }
    *response = UF_UI_OBJECT_SELECTED;
    *object = selected->tag;
    if (cursor) {
        std::copy(selected->start, selected->start + 3, cursor);
    }
    state().highlights.insert(selected->tag);
    return 0;
}

int uc1603(const char* title, int default_item, char items[][38], int num_items) {
    if (int code = enter("uc1603")) {
        return code;
    }
    // No entries shows the title and a way to cancel only.
    if (!title || !items || num_items < 0 || num_items > 14) {
        return 0;
    }
    if (!nxsim::presenter()) {
        return ErrorCode::NoPresenter;
    }
    std::vector<std::string> entries;
    for (int i = 0; i < num_items; ++i) {
        entries.emplace_back(items[i], ::strnlen(items[i], 37));
    }
    const int chosen = nxsim::pickFromList(title, state().cue, entries, default_item - 1);
    return chosen < 0 ? 2 : 5 + chosen;
}

int uc1616(char* cue, int mode[2], int display, double point[3]) {
    (void)mode;
    (void)display;
    if (int code = enter("uc1616")) {
        return code;
    }
    if (!point) {
        return ErrorCode::InvalidArgument;
    }
    if (!state().display) {
        return 7;
    }
    nxsim::Presenter* presenter = nxsim::presenter();
    if (!presenter) {
        return 8;
    }
    state().cue = cue ? cue : "";
    ++state().cueSets;
    nxsim::PointAnswer answer = presenter->indicatePoint(state().cue);
    switch (answer.status) {
    case nxsim::PointAnswer::Back:
        return 1;
    case nxsim::PointAnswer::Cancel:
        return 2;
    case nxsim::PointAnswer::Point:
        break;
    }
    std::copy(answer.point, answer.point + 3, point);
    return 5;
}

int UF_DISP_set_highlight(tag_t object, int on_off) {
    if (int code = enter("UF_DISP_set_highlight")) {
        return code;
    }
    if (!nxsim::detail::partWithTag(object)) {
        return ErrorCode::InvalidTag;
    }
    if (on_off) {
        state().highlights.insert(object);
    } else {
        state().highlights.erase(object);
    }
    return 0;
}

int UF_MODL_ask_minimum_dist(tag_t object1, tag_t object2, int guess1_given, double guess1[3],
                             int guess2_given, double guess2[3], double* min_dist,
                             double pt_on_obj1[3], double pt_on_obj2[3]) {
    (void)guess1_given;
    (void)guess1;
    (void)guess2_given;
    (void)guess2;
    if (int code = enter("UF_MODL_ask_minimum_dist")) {
        return code;
    }
    if (!min_dist) {
        return ErrorCode::InvalidArgument;
    }
    const nxsim::SimObject* a = nxsim::detail::objectWithTag(object1);
    const nxsim::SimObject* b = nxsim::detail::objectWithTag(object2);
    if (!a || !b) {
        return nxsim::detail::drawingWithTag(a ? object2 : object1) ? ErrorCode::NoDistance
                                                                    : ErrorCode::InvalidTag;
    }
    double c1[3], c2[3];
    closestPoints(a->start, a->end, b->start, b->end, c1, c2);
    double d[3] = {c1[0] - c2[0], c1[1] - c2[1], c1[2] - c2[2]};
    *min_dist = std::sqrt(dot(d, d));
    if (pt_on_obj1) {
        std::copy(c1, c1 + 3, pt_on_obj1);
    }
    if (pt_on_obj2) {
        std::copy(c2, c2 + 3, pt_on_obj2);
    }
    return 0;
}

int UF_DRAW_ask_num_drawings(int* num_drawings) {
    if (int code = enter("UF_DRAW_ask_num_drawings")) {
        return code;
    }
    if (!num_drawings) {
        return ErrorCode::InvalidArgument;
    }
    if (!state().work) {
        return ErrorCode::NoWorkPart;
    }
    *num_drawings = static_cast<int>(nxsim::detail::simPart(*state().work).drawings.size());
    return 0;
}

int UF_DRAW_ask_drawings(int* num_drawings, tag_t** drawings) {
    if (int code = enter("UF_DRAW_ask_drawings")) {
        return code;
    }
    if (!num_drawings || !drawings) {
        return ErrorCode::InvalidArgument;
    }
    if (!state().work) {
        return ErrorCode::NoWorkPart;
    }
    const auto& all = nxsim::detail::simPart(*state().work).drawings;
    *num_drawings = static_cast<int>(all.size());
    *drawings = nullptr;
    if (!all.empty()) {
        *drawings = static_cast<tag_t*>(std::malloc(all.size() * sizeof(tag_t)));
        for (std::size_t i = 0; i < all.size(); ++i) {
            (*drawings)[i] = all[i].tag;
        }
    }
    return 0;
}

int UF_DRAW_ask_drawing_info(tag_t drawing, UF_DRAW_info_t* info) {
    if (int code = enter("UF_DRAW_ask_drawing_info")) {
        return code;
    }
    if (!info) {
        return ErrorCode::InvalidArgument;
    }
    const nxsim::SimDrawing* d = nxsim::detail::drawingWithTag(drawing);
    if (!d) {
        return nxsim::detail::partWithTag(drawing) ? ErrorCode::NotADrawing : ErrorCode::InvalidTag;
    }
    *info = UF_DRAW_info_t{};
    info->size_state = static_cast<UF_DRAW_size_state_t>(d->sizeState);
    if (d->sizeState == UF_DRAW_METRIC_SIZE) {
        info->size.metric_size_code = static_cast<UF_DRAW_metric_size_t>(d->sizeCode);
    } else if (d->sizeState == UF_DRAW_ENGLISH_SIZE) {
        info->size.english_size_code = static_cast<UF_DRAW_english_size_t>(d->sizeCode);
    } else {
        info->size.custom_size[0] = d->height;
        info->size.custom_size[1] = d->length;
    }
    info->drawing_scale = d->scale;
    info->units = d->units;
    info->projection_angle = d->projection;
    return 0;
}

} // extern "C"
