#include "daxi/caliper_pair.h"

#include "measure/caliper/caliper_call.h"

DAX_CALIPER_ANY_REGION(DAXI_CalipEdgePairDetect, CaliperBox, CaliperEdgePairCfg, CaliperEdgePairResult)
DAX_CALIPER_BOX_ONLY(DAXI_CalipEdgePairDetect, CaliperEdgePairCfg, CaliperEdgePairResult)
DAX_CALIPER_ANY_REGION(DAXI_CalipEdgePairDetectRhomboid, CaliperRhomboid, CaliperEdgePairCfg, CaliperEdgePairResult)
DAX_CALIPER_ANY_REGION(DAXI_CalipEdgePairDetectAnnulus, CaliperAnnulus, CaliperEdgePairCfg, CaliperEdgePairResult)
