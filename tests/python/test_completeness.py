"""Every exported function is called by the tests of this folder, or listed here with the reason why not."""
import os
import pathlib
import re

import pytest

from dax import _library

# Pattern of names: why the package does without.
WITHOUT = {
    r".*_IS": "an instruction-set code; results are the same, and members without choose well",
    r".*_NEON|.*0to255_8u_C1IR_NEON": "the same, as a name",
    r".*_C1IR": "in place, or with a pointer that is not const: a form of the member with two images",
    r".*_Inner": "a tree's compact form; covered where a tree has one",
    r"DAX_.*Mem.*|ZUR_(Malloc|AllocMemTab|FreeMemTab|CheckMemTab)|DAXCUDA_.*": "memory is NumPy's",
    r".*GetCpu(Clocks|Frequency)": "Python has clocks",
    r"DAXI_CheckData_.*|(DAX|ZUR)_CheckImage|DAX_ZurImgToDaxImg|.*Check_Cloud3D_32f": "records that arrays replace",
    r"DAXI_(ThresholdBin|ThresholdSoftBin|ThresholdRelativeSoft|AdpThresholdOtsu)_8u_C1R": "the second version has all",
    r"DAXI_FilterMeanBufferSize_8u(_V2)?|DAXI_FilterMean_8u_C1R": "the form for pools, which does without one",
    r"DAXI_BlobFind(ModelSize|BufferSize)?_8u.*|DAXI_BlobFindV3.*": "the second version owns its memory",
    r"DAXI_(Fast)?BlobSelect(V[234])?(BufferSize)?_8u(_C1R)?": "the pool forms do without a pool",
    r"DAXI_BlobSelect(BufferSize_8u|_8u_C1R)_MT": "the third version does more",
    r"DAXI_BlobSort": "NumPy sorts",
    r"DAXI_.*GetSubpixBufferSize_8u(_v2)?": "the call needs no buffer",
    r"DAX3DPCL_SEARCH_KDTREE_(KNearestSearch|HandleRerange)": "the second generation; the first one serves normals",
    r"DAX3DPCL_SEARCH_KDTREE_[KR]NearestSearch_V2(_BufferSize)?": "the pool forms, which do without one",
    r"DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4|DAX3DPCL_UTILS_Extract_.*": "fields of a Python object",
    r"PRMT_LM_print_iter_info": "printing is Python's",
}
EXPORTS = pathlib.Path(os.environ.get("DAX_LIBRARY", "")).with_name("exports.txt")


def test_every_export_is_reachable(request, called):
    if not EXPORTS.exists() or _library.host is None:
        pytest.skip("no list of exports beside the library, or no pool that all could run on")
    folder = pathlib.Path(__file__).parent
    if [pathlib.Path(each).resolve() for each in request.config.args] != [folder] or request.config.option.keyword:
        pytest.skip("only some of the tests are run")
    exports = set(EXPORTS.read_text().split())
    excused = {name for name in exports if any(re.fullmatch(pattern, name) for pattern in WITHOUT)}
    assert exports - called - excused == set()
    for pattern in WITHOUT:
        assert any(re.fullmatch(pattern, name) for name in exports - called), f"{pattern}: needed no more"
