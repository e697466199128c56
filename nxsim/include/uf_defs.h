#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

typedef unsigned int tag_t;
typedef tag_t* tag_p_t;
typedef int logical;

#define NULL_TAG ((tag_t)0)

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
