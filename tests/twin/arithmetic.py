"""Numbers as the program computes and prints them: doubles, 64-bit mantissas, stream notations."""
import ctypes
import math
import re
from fractions import Fraction
from functools import lru_cache

LIBC = ctypes.CDLL(None)
LIBC.strtod.restype = ctypes.c_double
LIBC.strtod.argtypes = [ctypes.c_char_p, ctypes.c_void_p]
LIBC.strtol.restype = ctypes.c_long
LIBC.strtol.argtypes = [ctypes.c_char_p, ctypes.c_void_p, ctypes.c_int]

EXTENDED_BITS = 64
CELL_UNITS = 2 ** 53            # a cell of two values in [0, 1] is a multiple of 1 / CELL_UNITS
EXACT_COLUMNS = 255             # up to here every sum of such cells is exact in 64 bits


def strtod(text):
    """The double that the C library reads at the start of the text, 0 if there is none."""
    return LIBC.strtod(text.encode("latin-1"), None)


def strtol(text):
    """The decimal integer that the C library reads at the start of the text, 0 if there is none."""
    return LIBC.strtol(text.encode("latin-1"), None, 10)


def divide(x, y):
    """x / y as the processor does it: a zero divisor gives an infinity or a negative not-a-number."""
    if y != 0:
        return x / y
    if x != x:
        return x
    if x == 0:
        return math.copysign(math.nan, -1.0)
    return math.copysign(math.inf, x) * math.copysign(1.0, y)


def special(value, template):
    """The text of a double by a printf template; Python alone drops the sign of not-a-number."""
    if value != value:
        return "-nan" if math.copysign(1.0, value) < 0 else "nan"
    return template % value


def general(value):
    """A double as a new stream prints it: six significant digits."""
    return special(value, "%.6g")


def fixed(value):
    """A double in fixed notation with six decimals."""
    return special(value, "%.6f")


def round_to_bits(value, bits):
    """The fraction rounded to that many bits of mantissa, ties to even."""
    if value == 0:
        return value
    size = abs(value)
    exponent = size.numerator.bit_length() - size.denominator.bit_length()
    if Fraction(2) ** exponent > size:
        exponent -= 1
    unit = Fraction(2) ** (exponent - bits + 1)
    return round(value / unit) * unit           # round() of a fraction takes ties to even


def extended(value):
    """The fraction rounded to the mantissa of the widest type."""
    return round_to_bits(value, EXTENDED_BITS)


@lru_cache(maxsize=None)
def mean_of_units(units, count):
    """units / CELL_UNITS / count, first rounded to the widest type and then to double."""
    return float(extended(Fraction(units, CELL_UNITS * count)))


def mean_in_order(cells, count):
    """The cells added up one by one in the widest type, divided there, rounded to double."""
    if not all(math.isfinite(cell) for cell in cells):
        return sum(cells) / count
    total = Fraction(0)
    for cell in cells:
        total = extended(total + Fraction(cell))
    return float(extended(total / count))


def is_numeric(text):
    """Digits and points only; the empty text passes."""
    return re.fullmatch(r"[0-9.]*", text) is not None


def is_double(text):
    """Digits and exactly one point."""
    return re.fullmatch(r"[0-9]*\.[0-9]*", text) is not None
