#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>

#define UF_UI_BACK 4
#define UF_UI_CANCEL 3
#define UF_UI_OK 2
#define UF_UI_OBJECT_SELECTED 7
#define UF_UI_OBJECT_SELECTED_BY_NAME 8

#define UF_UI_CB_CONTINUE_DIALOG 0
#define UF_UI_CB_EXIT_DIALOG 1

#define UF_UI_SEL_SCOPE_WORK_PART 1

#define UF_UI_SEL_SUCCESS 0
#define UF_UI_SEL_FAILURE 1

typedef void* UF_UI_selection_p_t;
typedef int (*UF_UI_sel_init_fn_t)(UF_UI_selection_p_t select, void* user_data);
