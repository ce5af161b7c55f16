/* The companion library of the editor: addressing of posts and the halving of elevation
 * grids, as a plain C interface. All coordinates count from 1; Y = 1 is the bottom row of
 * the map; a segment is 16 by 16 posts. No routine allocates, keeps state or fails. */
#ifndef VARDENIX_COMPANION_H
#define VARDENIX_COMPANION_H

#include <stdint.h>

#if defined(_WIN32)
#define VARDENIX_EXPORT __declspec(dllexport)
#else
#define VARDENIX_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The serial of post (X, Y) in a grid of Width posts a side: (Y - 1) * Width + X. */
VARDENIX_EXPORT int32_t XYToSerial(int32_t X, int32_t Y, int32_t Width);

/* The serial of post (I, J), each 1 to 16, of segment (SegX, SegY) in a grid of Width. */
VARDENIX_EXPORT int32_t SegToSerial(int32_t SegX, int32_t SegY, int32_t I, int32_t J,
                                    int32_t Width);

/* Halves a grid of elevations in feet: each 2 by 2 square of Source becomes one value of
 * Target. Source holds Count values in serial order, Width a row; Target has room for
 * (Width / 2) * (Count / Width / 2) values. Source and Target do not overlap.
 * Method: 1 RMS (the positive root), 2 Simple Mean, 3 Max; any other leaves Target alone.
 * Results are exact, then rounded half to even; an RMS of 32768 becomes 32767. */
VARDENIX_EXPORT void BreakElv(const int16_t* Source, int32_t Count, int32_t Width,
                              int32_t Method, int16_t* Target);

#ifdef __cplusplus
}
#endif

#endif
