"""Least squares, sparse matrices, rotations and rigid motions."""
