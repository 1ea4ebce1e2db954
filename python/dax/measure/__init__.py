"""Blobs, edges, widths and lines."""
