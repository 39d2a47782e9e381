"""Rectangular N-dimensional arrays of eleven element types, stored column by column."""

from quarnamultidimarrayforpython import (
    ShapeError,
    SizeError,
    double,
    int8,
    int16,
    int32,
    int64,
    logical,
    single,
    uint8,
    uint16,
    uint32,
    uint64,
)

__version__ = "0.1.0"

__all__ = [
    "double",
    "single",
    "int8",
    "uint8",
    "int16",
    "uint16",
    "int32",
    "uint32",
    "int64",
    "uint64",
    "logical",
    "ShapeError",
    "SizeError",
    "__version__",
]
