"""Machine vision on NumPy arrays: the functions of the DAX library, called through its C interface.

    import dax
    parts = dax.select_blobs(dax.label(dax.otsu(image)), image, area=(50, 5000))

Arrays of points are (n, 2) or (n, 3), images (height, width), results named tuples or small classes of arrays.

Every call checks its arguments; what the library refuses is raised as dax.Error with the clause of the contract. Work
memory is handled inside, and the interpreter lock is released while the library works. Results do not depend on the
machine, the instruction set or the number of threads.

What there is, by module; help(dax.otsu) tells about one of them, help(dax.blobs) about a module:

    blobs        Blobs, Labelling, RotatedBox, draw_contours, draw_labels, enclosing_box, label, select_blobs
    calipers     Annulus, Box, EdgePairs, Edges, Profile, Ramp, Rhomboid, find_edge_pairs, find_edge_pairs_in,
                 find_edges, find_edges_in
    checks       check_box, check_camera_matrix, check_motion, check_normal, check_quaternion
    chessboards  Board, Corners, arrange_corners, find_checkerboards, find_checkerboards_by_symmetry,
                 find_chessboard, locate_corners, refine_corners
    clouds       KdTree, Neighbours, Normals, estimate_normals, face_viewpoint, normal_of, voxel_grid
    errors       Error
    filters      Thresholded, add, box_sum, clipped_mean, copy_border, erode3x3, invert, mean, median3x3, otsu,
                 relative_soft_weights, soft_weights, threshold
    lie          se3_compose, se3_exp, se3_inverse, se3_log, se3_update, so3_compose, so3_exp, so3_inverse,
                 so3_log, so3_log_jacobian, so3_update
    lines        Line, fit_line
    pool         Pool
    ranges       Calibration, Camera, RangeImage, depth_to_xyz, range_from_rgbd, range_to_xyz, read_range,
                 remove_speckles, write_range
    solvers      Blocks, BlockShape, Minimum, Settings, Solution, least_squares, least_squares_blocks,
                 minimize_blocks, minimize_normal, numeric_jacobian
    sparse       SparseMatrix
"""
from ._library import version
from .blobs import Blobs, Labelling, RotatedBox, draw_contours, draw_labels, enclosing_box, label, select_blobs
from .calipers import (
    Annulus,
    Box,
    EdgePairs,
    Edges,
    Profile,
    Ramp,
    Rhomboid,
    find_edge_pairs,
    find_edge_pairs_in,
    find_edges,
    find_edges_in,
)
from .checks import check_box, check_camera_matrix, check_motion, check_normal, check_quaternion
from .chessboards import (
    Board,
    Corners,
    arrange_corners,
    find_checkerboards,
    find_checkerboards_by_symmetry,
    find_chessboard,
    locate_corners,
    refine_corners,
)
from .clouds import KdTree, Neighbours, Normals, estimate_normals, face_viewpoint, normal_of, voxel_grid
from .errors import Error
from .filters import (
    Thresholded,
    add,
    box_sum,
    clipped_mean,
    copy_border,
    erode3x3,
    invert,
    mean,
    median3x3,
    otsu,
    relative_soft_weights,
    soft_weights,
    threshold,
)
from .lie import (
    se3_compose,
    se3_exp,
    se3_inverse,
    se3_log,
    se3_update,
    so3_compose,
    so3_exp,
    so3_inverse,
    so3_log,
    so3_log_jacobian,
    so3_update,
)
from .lines import Line, fit_line
from .pool import Pool
from .ranges import (
    Calibration,
    Camera,
    RangeImage,
    depth_to_xyz,
    range_from_rgbd,
    range_to_xyz,
    read_range,
    remove_speckles,
    write_range,
)
from .solvers import (
    Blocks,
    BlockShape,
    Minimum,
    Settings,
    Solution,
    least_squares,
    least_squares_blocks,
    minimize_blocks,
    minimize_normal,
    numeric_jacobian,
)
from .sparse import SparseMatrix

__all__ = [
    "add",
    "Annulus",
    "arrange_corners",
    "Blobs",
    "Blocks",
    "BlockShape",
    "Board",
    "Box",
    "box_sum",
    "Calibration",
    "Camera",
    "check_box",
    "check_camera_matrix",
    "check_motion",
    "check_normal",
    "check_quaternion",
    "clipped_mean",
    "copy_border",
    "Corners",
    "depth_to_xyz",
    "draw_contours",
    "draw_labels",
    "EdgePairs",
    "Edges",
    "enclosing_box",
    "erode3x3",
    "Error",
    "estimate_normals",
    "face_viewpoint",
    "find_checkerboards",
    "find_checkerboards_by_symmetry",
    "find_chessboard",
    "find_edge_pairs",
    "find_edge_pairs_in",
    "find_edges",
    "find_edges_in",
    "fit_line",
    "invert",
    "KdTree",
    "label",
    "Labelling",
    "least_squares",
    "least_squares_blocks",
    "Line",
    "locate_corners",
    "mean",
    "median3x3",
    "minimize_blocks",
    "minimize_normal",
    "Minimum",
    "Neighbours",
    "normal_of",
    "Normals",
    "numeric_jacobian",
    "otsu",
    "Pool",
    "Profile",
    "Ramp",
    "range_from_rgbd",
    "range_to_xyz",
    "RangeImage",
    "read_range",
    "refine_corners",
    "relative_soft_weights",
    "remove_speckles",
    "Rhomboid",
    "RotatedBox",
    "se3_compose",
    "se3_exp",
    "se3_inverse",
    "se3_log",
    "se3_update",
    "select_blobs",
    "Settings",
    "so3_compose",
    "so3_exp",
    "so3_inverse",
    "so3_log",
    "so3_log_jacobian",
    "so3_update",
    "soft_weights",
    "Solution",
    "SparseMatrix",
    "threshold",
    "Thresholded",
    "version",
    "voxel_grid",
    "write_range",
]
__version__ = version()
