#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Highlights an object (1) or removes its highlight (0). */
int UF_DISP_set_highlight(tag_t object, int on_off);

#ifdef __cplusplus
}
#endif
