"""Decodes the pictures that the outside tools draw, far enough to see whether something is drawn."""
import struct
import subprocess
import tempfile
import zlib
from pathlib import Path

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
PNG_SAMPLES = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}       # colour type: samples a pixel
JPEG_FRAMES = {0xC0, 0xC1, 0xC2}                   # markers that carry the size
WHITE_FROM = 250                                   # JPEG may leave white a little grey

# Ghostscript, which the logos need anyway, has a decoder for JPEG.
DECODE_ALL = """/buffer 65000 string def
{ counttomark 2 lt { exit } if
  (w) file /to exch def (r) file /DCTDecode filter /from exch def
  { from buffer readstring exch to exch writestring not { exit } if } loop
  to closefile } loop
"""


def postscript_string(path):
    """`path` as a string of a PostScript program."""
    return "<" + str(path).encode().hex() + ">"


def jpeg_size(data):
    """Width, height and samples a pixel of a JPEG file; an error where it is none."""
    if data[:3] != b"\xff\xd8\xff":
        raise ValueError("not a JPEG file")
    place = 2
    while True:
        mark, kind, length = struct.unpack(">BBH", data[place:place + 4])
        if mark != 0xFF:
            raise ValueError("broken JPEG file")
        if kind in JPEG_FRAMES:
            height, width, samples = struct.unpack(">HHB", data[place + 5:place + 10])
            return width, height, samples
        place += 2 + length


def jpeg_samples(paths):
    """The decoded samples of each JPEG file, all by one ghostscript."""
    with tempfile.TemporaryDirectory(prefix="varnolix-jpeg-") as folder:
        raw = [Path(folder) / str(number) for number in range(len(paths))]
        pairs = "\n".join(f"{postscript_string(path)} {postscript_string(to)}" for path, to in zip(paths, raw))
        program = Path(folder) / "decode.ps"
        program.write_text(f"[ {pairs}\n{DECODE_ALL}")
        subprocess.run(["gs", "-q", "-dBATCH", "-dNOPAUSE", "-dNODISPLAY", "-dNOSAFER", program], check=True,
                       capture_output=True, timeout=60, stdin=subprocess.DEVNULL)
        return [path.read_bytes() for path in raw]


def dark_share(samples):
    """The share of samples that are not white."""
    return sum(sample < WHITE_FROM for sample in samples) / len(samples)


def png_chunks(data):
    """Kind and content of each chunk of a PNG file, with its check sum tested."""
    if data[:8] != PNG_SIGNATURE:
        raise ValueError("not a PNG file")
    place = 8
    while place < len(data):
        length, kind = struct.unpack(">I4s", data[place:place + 8])
        content = data[place + 8:place + 8 + length]
        if struct.unpack(">I", data[place + 8 + length:place + 12 + length])[0] != zlib.crc32(kind + content):
            raise ValueError("broken PNG file")
        yield kind, content
        place += 12 + length


def nearest(left, above, corner):
    """The neighbour that is nearest to left + above - corner (the Paeth predictor)."""
    guess = left + above - corner
    return min((left, above, corner), key=lambda value: abs(guess - value))


def unfilter(kind, line, above, step):
    """The samples of one line of a PNG file; `step` bytes make a pixel."""
    line = bytearray(line)
    for place, value in enumerate(line):
        left = line[place - step] if place >= step else 0
        corner = above[place - step] if place >= step else 0
        up = above[place]
        line[place] = (value + (0, left, up, (left + up) // 2, nearest(left, up, corner))[kind]) & 255
    return line


def png_picture(data):
    """Width, height and the lines of a PNG file, each a list of pixels (bytes)."""
    chunks = list(png_chunks(data))
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", dict(chunks)[b"IHDR"])
    if interlace:
        raise ValueError("interlaced PNG files are not read here")
    bits = depth * PNG_SAMPLES[colour]
    step, stride = max(1, bits // 8), (width * bits + 7) // 8
    packed = zlib.decompress(b"".join(content for kind, content in chunks if kind == b"IDAT"))
    lines, above = [], bytes(stride)
    for place in range(0, height * (stride + 1), stride + 1):
        above = unfilter(packed[place], packed[place + 1:place + 1 + stride], above, step)
        lines.append(above)
    pixels = [[bytes(line[place:place + step]) for place in range(0, stride, step)] for line in lines]
    return width, height, pixels
