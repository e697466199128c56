#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Opens the Open API for the calling program: 0 on success, else an error code. */
int UF_initialize(void);
/** Closes what UF_initialize opened: 0 on success, else an error code. */
int UF_terminate(void);
/** Frees memory that an UF_ function allocated for the caller. */
void UF_free(void* data);

#ifdef __cplusplus
}
#endif
