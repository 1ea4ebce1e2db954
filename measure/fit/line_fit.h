// The check of a line fit's configuration.
#pragma once

#include "daxi/line_fit.h"

extern "C" DaxStatus DAXI_LineFitRegre_check_cfg(const LineFitCfg* cfg);
