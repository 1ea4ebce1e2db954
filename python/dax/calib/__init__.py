"""Boards for the calibration of cameras."""
