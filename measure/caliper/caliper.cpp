#include "daxi/caliper.h"

#include "measure/caliper/caliper_call.h"

DAX_CALIPER_ANY_REGION(DAXI_CalipEdgeDetect, CaliperBox, CaliperEdgeCfg, CaliperEdgeResult)
DAX_CALIPER_BOX_ONLY(DAXI_CalipEdgeDetect, CaliperEdgeCfg, CaliperEdgeResult)
DAX_CALIPER_ANY_REGION(DAXI_CalipEdgeDetectRhomboid, CaliperRhomboid, CaliperEdgeCfg, CaliperEdgeResult)
DAX_CALIPER_ANY_REGION(DAXI_CalipEdgeDetectAnnulus, CaliperAnnulus, CaliperEdgeCfg, CaliperEdgeResult)
