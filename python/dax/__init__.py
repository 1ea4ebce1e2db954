"""Machine vision on NumPy arrays: the functions of the DAX library, called through its C interface.

    import dax
    parts = dax.select_blobs(dax.label(dax.otsu(image)), image, area=(50, 5000))

Arrays of points are (n, 2) or (n, 3), images (height, width), results named tuples or small classes of arrays.

Every call checks its arguments; what the library refuses is raised as dax.Error with the clause of the contract. Work
memory is handled inside, and the interpreter lock is released while the library works. Results do not depend on the
machine, the instruction set or the number of threads.

What there is, by module; help(dax.otsu) tells about one of them, help(dax.measure.blobs) about a module:
"""
# make_package.py adds the list, and the imports of what each module has in its __all__.
from ._library import version

__version__ = version()
