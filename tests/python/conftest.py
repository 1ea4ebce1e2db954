import numpy as np
import pytest

import dax


@pytest.fixture
def rng():
    return np.random.default_rng(7)


@pytest.fixture
def pool():
    with dax.Pool(2) as pool:
        yield pool
