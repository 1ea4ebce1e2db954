// The Hessian detector with the arguments of its exports: the locator, then the sorter. Functions that return a number
// return that of the boards.
#pragma once

#include <cstdint>

#include "daxi/chessboard_hessian.h"

extern "C" {

int32_t _DAXI_CheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                             CheckerboardCorner* sorted, void* buffer,
                                             const CheckerboardHessianParam* param, CheckerboardGrid* result);
int32_t _DAXI_MulCheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                                CheckerboardCorner* sorted, void* buffer,
                                                const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                int32_t maxBoards);
void _DAXI_CheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f* points,
                                            CheckerboardCorner* corners, void* buffer,
                                            const CheckerboardHessianParam* param, CheckerboardGrid* result);
int32_t _DAXI_MulCheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                  DaxiPoint32f* points, CheckerboardCorner* corners, void* buffer,
                                                  const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                  int32_t maxBoards);
}
