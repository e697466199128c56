#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>
#include <uf_draw_types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The number of drawings of the work part. */
int UF_DRAW_ask_num_drawings(int* num_drawings);
/** The drawings of the work part; free `drawings` with UF_free. */
int UF_DRAW_ask_drawings(int* num_drawings, tag_t** drawings);
/** The size, scale, units and projection of a drawing. */
int UF_DRAW_ask_drawing_info(tag_t drawing, UF_DRAW_info_t* info);

#ifdef __cplusplus
}
#endif
