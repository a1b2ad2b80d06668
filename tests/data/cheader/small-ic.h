/* KIV2M1 registers, version 1.4. Generated from its product file by kivtool test; do not edit. */
#ifndef KIV2M1_H
#define KIV2M1_H

#include <stdint.h>

/* Access flags: read, write, clear on read, ... as the product file names them */
#define KIV2M1_ACCESS_R                                 0x01U
#define KIV2M1_ACCESS_W                                 0x02U
#define KIV2M1_ACCESS_E                                 0x04U
#define KIV2M1_ACCESS_X                                 0x08U
#define KIV2M1_ACCESS_C                                 0x10U
#define KIV2M1_ACCESS_I                                 0x20U
#define KIV2M1_ACCESS_D                                 0x40U
#define KIV2M1_ACCESS_A                                 0x80U

/* Field helpers: msk and pos are a field's _Msk and _Pos. SET returns reg with the field set to value
   (bits of value beyond the field are dropped); GET returns the field's value. */
static inline uint32_t KIV2M1_FIELD_SET(uint32_t reg, uint32_t msk, uint32_t pos, uint32_t value)
{
    return (reg & ~msk) | ((value << pos) & msk);
}

static inline uint32_t KIV2M1_FIELD_GET(uint32_t reg, uint32_t msk, uint32_t pos)
{
    return (reg & msk) >> pos;
}

/* ---- CTRL at 0x10, 16 bits, RW: Control word; switches the layout of TUNE */
#define KIV2M1_CTRL_ADDR                                0x10U
#define KIV2M1_CTRL_WIDTH                               16U
#define KIV2M1_CTRL_ACCESS                              (KIV2M1_ACCESS_R | KIV2M1_ACCESS_W)
#define KIV2M1_CTRL_RESET                               0x0021U

/* enable: Output stage (RW) */
#define KIV2M1_CTRL_ENABLE_Pos                          0U
#define KIV2M1_CTRL_ENABLE_Msk                          0x0001U
#define KIV2M1_CTRL_ENABLE_Width                        1U
#define KIV2M1_CTRL_ENABLE_Reset                        1U
#define KIV2M1_CTRL_ENABLE_OFF                          0U
#define KIV2M1_CTRL_ENABLE_ON                           1U

/* mode: Tuning scheme * / kept ? ?/ on one line (RW) */
#define KIV2M1_CTRL_MODE_Pos                            4U
#define KIV2M1_CTRL_MODE_Msk                            0x0030U
#define KIV2M1_CTRL_MODE_Width                          2U
#define KIV2M1_CTRL_MODE_Reset                          2U
#define KIV2M1_CTRL_MODE_COARSE                         0U
#define KIV2M1_CTRL_MODE_FINE                           1U
#define KIV2M1_CTRL_MODE_AUTO_HOLD                      2U

/* ---- TUNE at 0x11, 8 bits, RW, 2 layouts */
#define KIV2M1_TUNE_ADDR                                0x11U
#define KIV2M1_TUNE_WIDTH                               8U
#define KIV2M1_TUNE_ACCESS                              (KIV2M1_ACCESS_R | KIV2M1_ACCESS_W)
#define KIV2M1_TUNE_RESET                               0x1EU
/* _RESET is that of the layout Fine or auto, which applies after a reset */

/* Layout Coarse */
#define KIV2M1_TUNE_COARSE_RESET                        0x03U
/* Applies while (CTRL & 0x30) >> 4 lies in 0..0 */
#define KIV2M1_TUNE_COARSE_SEL_ADDR                     0x10U
#define KIV2M1_TUNE_COARSE_SEL_Msk                      0x30U
#define KIV2M1_TUNE_COARSE_SEL_Pos                      4U
#define KIV2M1_TUNE_COARSE_SEL_MIN                      0U
#define KIV2M1_TUNE_COARSE_SEL_MAX                      0U

/* step: Coarse step (RW) */
#define KIV2M1_TUNE_COARSE_STEP_Pos                     0U
#define KIV2M1_TUNE_COARSE_STEP_Msk                     0x0FU
#define KIV2M1_TUNE_COARSE_STEP_Width                   4U
#define KIV2M1_TUNE_COARSE_STEP_Reset                   3U

/* Layout Fine or auto */
#define KIV2M1_TUNE_FINE_OR_AUTO_RESET                  0x1EU
/* Applies while (CTRL & 0x30) >> 4 lies in 1..2 */
#define KIV2M1_TUNE_FINE_OR_AUTO_SEL_ADDR               0x10U
#define KIV2M1_TUNE_FINE_OR_AUTO_SEL_Msk                0x30U
#define KIV2M1_TUNE_FINE_OR_AUTO_SEL_Pos                4U
#define KIV2M1_TUNE_FINE_OR_AUTO_SEL_MIN                1U
#define KIV2M1_TUNE_FINE_OR_AUTO_SEL_MAX                2U

/* trim: Trim, signed (RW) */
#define KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Pos               0U
#define KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk               0x1FU
#define KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Width             5U
#define KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Reset             30U

/* hold: Hold the trim (R) */
#define KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Pos               7U
#define KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Msk               0x80U
#define KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Width             1U
#define KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Reset             0U
#define KIV2M1_TUNE_FINE_OR_AUTO_HOLD_FALSE             0U
#define KIV2M1_TUNE_FINE_OR_AUTO_HOLD_TRUE              1U

/* ---- SPARE at 0x12, 32 bits */
#define KIV2M1_SPARE_ADDR                               0x12U
#define KIV2M1_SPARE_WIDTH                              32U
#define KIV2M1_SPARE_ACCESS                             0U
#define KIV2M1_SPARE_RESET                              0x00000000U

/* Compile-time checks: C11 and C++11 or later; C99 has no static assertion */
#if (defined(__cplusplus) && __cplusplus >= 201103L) \
    || (defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L)
#ifdef __cplusplus
#define KIV2M1_STATIC_ASSERT static_assert
#else
#define KIV2M1_STATIC_ASSERT _Static_assert
#endif
KIV2M1_STATIC_ASSERT((KIV2M1_CTRL_ENABLE_Msk & ~0xFFFFULL) == 0U, "KIV2M1_CTRL_ENABLE_Msk lies outside its register");
KIV2M1_STATIC_ASSERT((KIV2M1_CTRL_MODE_Msk & ~0xFFFFULL) == 0U, "KIV2M1_CTRL_MODE_Msk lies outside its register");
KIV2M1_STATIC_ASSERT((0ULL + KIV2M1_CTRL_ENABLE_Msk + KIV2M1_CTRL_MODE_Msk) == (0ULL | KIV2M1_CTRL_ENABLE_Msk | KIV2M1_CTRL_MODE_Msk), "KIV2M1_CTRL_ENABLE_Msk and the fields beside it overlap");
KIV2M1_STATIC_ASSERT((KIV2M1_TUNE_COARSE_STEP_Msk & ~0xFFULL) == 0U, "KIV2M1_TUNE_COARSE_STEP_Msk lies outside its register");
KIV2M1_STATIC_ASSERT((KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk & ~0xFFULL) == 0U, "KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk lies outside its register");
KIV2M1_STATIC_ASSERT((KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Msk & ~0xFFULL) == 0U, "KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Msk lies outside its register");
KIV2M1_STATIC_ASSERT((0ULL + KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk + KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Msk) == (0ULL | KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk | KIV2M1_TUNE_FINE_OR_AUTO_HOLD_Msk), "KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk and the fields beside it overlap");
#undef KIV2M1_STATIC_ASSERT
#endif

#endif /* KIV2M1_H */
