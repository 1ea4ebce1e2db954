"""Images: borders, filters, masks. An image is a two-dimensional array, row after row.

Inputs are read through any strides (rows whose pixels are not adjacent are copied first). `out` receives the result and
is returned; it is written where it lies, so its rows need adjacent pixels and one stride downwards, as slices of a
larger image have. Results are the same to the last bit on every machine.
"""
