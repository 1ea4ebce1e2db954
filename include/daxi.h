/* Image families. */
#ifndef DAXI_H
#define DAXI_H

#include "daxi/add.h"
#include "daxi/blob_draw.h"
#include "daxi/blob_find.h"
#include "daxi/blob_select.h"
#include "daxi/blob_select_v4.h"
#include "daxi/caliper.h"
#include "daxi/caliper_pair.h"
#include "daxi/check_data.h"
#include "daxi/chessboard.h"
#include "daxi/chessboard_hessian.h"
#include "daxi/chessboard_subpix.h"
#include "daxi/chessboard_sym.h"
#include "daxi/copy_border.h"
#include "daxi/erode3x3.h"
#include "daxi/filter_box.h"
#include "daxi/filter_mean.h"
#include "daxi/filter_median3x3.h"
#include "daxi/line_fit.h"
#include "daxi/point.h"
#include "daxi/region.h"
#include "daxi/threshold.h"

#endif
