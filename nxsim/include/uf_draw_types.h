#pragma once
/* Stand-in for the NX Open SDK header of the same name; it declares only what the program calls. */

#include <uf_defs.h>

typedef enum UF_DRAW_size_state_e {
    UF_DRAW_METRIC_SIZE = 0,
    UF_DRAW_ENGLISH_SIZE = 1,
    UF_DRAW_CUSTOM_SIZE = 2
} UF_DRAW_size_state_t;

typedef enum UF_DRAW_metric_size_e {
    UF_DRAW_A0 = 1,
    UF_DRAW_A1,
    UF_DRAW_A2,
    UF_DRAW_A3,
    UF_DRAW_A4
} UF_DRAW_metric_size_t;

typedef enum UF_DRAW_english_size_e {
    UF_DRAW_A = 1,
    UF_DRAW_B,
    UF_DRAW_C,
    UF_DRAW_D,
    UF_DRAW_E,
    UF_DRAW_F,
    UF_DRAW_H,
    UF_DRAW_J
} UF_DRAW_english_size_t;

#define UF_PART_METRIC 1
#define UF_PART_ENGLISH 2

#define UF_DRAW_THIRD_ANGLE_PROJECTION 1
#define UF_DRAW_FIRST_ANGLE_PROJECTION 2

typedef struct UF_DRAW_info_s {
    UF_DRAW_size_state_t size_state;
    union {
        UF_DRAW_metric_size_t metric_size_code;
        UF_DRAW_english_size_t english_size_code;
        double custom_size[2]; /* [0] height, [1] length */
    } size;
    double drawing_scale;
    int units; /* UF_PART_METRIC or UF_PART_ENGLISH */
    int projection_angle;
} UF_DRAW_info_t, *UF_DRAW_info_p_t;
