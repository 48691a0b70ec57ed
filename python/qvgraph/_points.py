"""Points read back."""
from typing import Any, NamedTuple

import numpy


class Points(NamedTuple):
    """Columns of a data set's points; error and extra columns are empty where no point has them."""

    x: "numpy.ndarray[Any, numpy.dtype[numpy.float64]]"
    y: "numpy.ndarray[Any, numpy.dtype[numpy.float64]]"
    error: "numpy.ndarray[Any, numpy.dtype[numpy.float64]]"
    extra: "tuple[numpy.ndarray[Any, numpy.dtype[numpy.float64]], ...]"
