#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>
#include <uf_ui_types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Switches the busy indicator on (1) or off (0). */
int UF_UI_toggle_stoplight(int on_off);
/** Shows `text` in the cue line. */
int UF_UI_set_prompt(char* text);
/** Asks the user for one object; `response` receives UF_UI_OBJECT_SELECTED,
 *  UF_UI_OBJECT_SELECTED_BY_NAME, UF_UI_BACK or UF_UI_CANCEL. The chosen object is highlighted. */
int UF_UI_select_with_single_dialog(char* message, char* title, int scope,
                                    UF_UI_sel_init_fn_t init_proc, void* user_data, int* response,
                                    tag_t* object, double cursor[3], tag_t* view);
/** A menu of `num_items` entries (1 to 14, each up to 37 characters) under `title`, entry
 *  `default_item` (from 1; 0 for none) preselected, the cue line as its prompt: returns 1 back,
 *  2 cancel, 5 to 18 for the entry chosen (5 is the first); 0 for a count out of range. */
int uc1603(const char* title, int default_item, char items[][38], int num_items);
/** The point dialog: returns 1 back, 2 cancel, 5 with `point` (absolute coordinates), 7 when no
 *  part is active, 8 when not allowed now. */
int uc1616(char* cue, int mode[2], int display, double point[3]);

#ifdef __cplusplus
}
#endif
