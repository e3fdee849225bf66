#!/usr/bin/env python3
"""Draws the PNG files that are compiled in from their SVG sources.

usage: housekeeping/resources/render.py

Every SVG file below a folder resources/drawings gives the PNG file of the same name and sub-folder below resources, in
the size that the drawing states. Needs the Debian packages librsvg2-2 and libcairo2, which every desktop has.
"""

import ctypes
import pathlib
import struct
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
FORMAT_ARGB32 = 0


class Rectangle(ctypes.Structure):
    _fields_ = [(name, ctypes.c_double) for name in ("x", "y", "width", "height")]


def load(name, pointers):
    """The library of this name; those functions of it return a pointer."""
    library = ctypes.CDLL(name)
    for function in pointers:
        getattr(library, function).restype = ctypes.c_void_p
    return library


cairo = load("libcairo.so.2", ["cairo_image_surface_create", "cairo_create", "cairo_image_surface_get_data"])
rsvg = load("librsvg-2.so.2", ["rsvg_handle_new_from_file"])


def draw(drawing):
    """Width, height and the RGBA bytes of the picture, line by line."""
    handle = ctypes.c_void_p(rsvg.rsvg_handle_new_from_file(str(drawing).encode(), None))
    if not handle:
        raise SystemExit(f"{drawing} is no SVG drawing")
    width, height = ctypes.c_double(), ctypes.c_double()
    if not rsvg.rsvg_handle_get_intrinsic_size_in_pixels(handle, ctypes.byref(width), ctypes.byref(height)):
        raise SystemExit(f"{drawing} does not state its size in pixels")
    size = int(width.value), int(height.value)
    surface = ctypes.c_void_p(cairo.cairo_image_surface_create(FORMAT_ARGB32, *size))
    context = ctypes.c_void_p(cairo.cairo_create(surface))
    if not rsvg.rsvg_handle_render_document(handle, context, ctypes.byref(Rectangle(0, 0, *size)), None):
        raise SystemExit(f"{drawing} cannot be drawn")
    cairo.cairo_surface_flush(surface)
    data = ctypes.string_at(cairo.cairo_image_surface_get_data(surface), 4 * size[0] * size[1])
    pixels = struct.unpack(f"={size[0] * size[1]}I", data)
    lines = [b"".join(map(straight, pixels[y * size[0]:(y + 1) * size[0]])) for y in range(size[1])]
    return size[0], size[1], lines


def straight(pixel):
    """RGBA bytes of a pixel whose colours are premultiplied by its opacity."""
    alpha = pixel >> 24
    colours = (pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255)
    return bytes(min(255, (c * 255 + alpha // 2) // alpha) if alpha else 0 for c in colours) + bytes([alpha])


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def encode(width, height, lines):
    """The smaller of two PNG files: true colour, or a palette where the colours are few."""
    def png(colour_type, depth_chunks, rows):
        header = struct.pack(">IIBBBBB", width, height, 8, colour_type, 0, 0, 0)
        packed = zlib.compress(b"".join(rows), 9)
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + depth_chunks + chunk(b"IDAT", packed)
                + chunk(b"IEND", b""))

    files = [png(6, b"", [filtered(kind, line, above) for line, above in zip(lines, [bytes(4 * width)] + lines)])
             for kind in range(3)]
    colours = sorted({line[i:i + 4] for line in lines for i in range(0, 4 * width, 4)}, key=lambda c: (c[3], c))
    if len(colours) <= 256:
        index = {colour: bytes([i]) for i, colour in enumerate(colours)}
        tables = (chunk(b"PLTE", b"".join(c[:3] for c in colours))
                  + chunk(b"tRNS", bytes(c[3] for c in colours if c[3] < 255)))
        rows = [b"\0" + b"".join(index[line[i:i + 4]] for i in range(0, 4 * width, 4)) for line in lines]
        files.append(png(3, tables, rows))
    return min(files, key=len)


def filtered(kind, line, above):
    """One line after the PNG filter none (0), left (1) or up (2)."""
    before = [bytes(len(line)), bytes(4) + line[:-4], above][kind]
    return bytes([kind]) + bytes((a - b) & 255 for a, b in zip(line, before))


def main():
    for drawing in sorted([*ROOT.glob("*/resources/drawings/**/*.svg"),
                           *ROOT.glob("examples/*/resources/drawings/**/*.svg")]):
        folder = next(parent for parent in drawing.parents if parent.name == "drawings")
        picture = folder.parent / drawing.relative_to(folder).with_suffix(".png")
        picture.parent.mkdir(exist_ok=True)
        data = encode(*draw(drawing))
        picture.write_bytes(data)
        print(f"{len(data):5} bytes  {picture.relative_to(ROOT)}")


if __name__ == "__main__":
    main()
