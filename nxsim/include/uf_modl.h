#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The minimum distance between two objects and the two closest points; guesses are ignored. */
int UF_MODL_ask_minimum_dist(tag_t object1, tag_t object2, int guess1_given, double guess1[3],
                             int guess2_given, double guess2[3], double* min_dist,
                             double pt_on_obj1[3], double pt_on_obj2[3]);

#ifdef __cplusplus
}
#endif
