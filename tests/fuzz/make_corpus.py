#!/usr/bin/env python3
"""Writes the inputs in the folder "corpus" that fuzzing begins with: make_corpus.py [FOLDER]

Inputs that were found by fuzzing are no part of it; they stand beside these and begin with "found-".
"""

import pathlib
import struct
import sys

FOLDER = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent / "corpus")


def write(target, name, content):
    folder = FOLDER / target
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(content if isinstance(content, bytes) else content.encode())


# --- data sources

write("data_source", "url", "file:///data/a.dat\nkept\n2\ncomma\n%C3%A4%20b\n")
write("data_source", "path", "/data/a b.dat\nkept\n0\n")
write("data_source", "drive", "C:/data/a.dat\nkept\n1\n\n")
write("data_source", "relative", "a.dat\nkept\n")
write("data_source", "unknown-kind", "file:///a\nraster\n1\n")
write("data_source", "no-kind", "file:///a")
write("data_source", "empty", "")
write("data_source", "line-feeds", "\n\n\n\n\n")
for sign in ("depth", "elevation", "Depth"):
    for unit in ("metres", "Kms", "millisecond", "yards"):
        write("data_source", f"list-{sign}-{unit}", f"file:///a\nkept\n{sign}\n{unit}\ncomma\n\nb\vc")
write("data_source", "list-of-two", "a\nkept")
write("data_source", "list-of-three", "a\nkept\ndepth")
write("data_source", "no-text", b"file:///\xff\xfe\0\nkept\n\xc3\x28\nKM\n\xed\xa0\x80\0\n")

# --- recent documents


def recent(entries):
    lines = [f"recently_viewed_doc{number}={entry}" for number, entry in entries]
    return "[RecentFileList]\n" + "\n".join(lines) + "\n"


def entry(url, rest="kept, elevation, metres"):
    return f"{url}, {rest}"


write("recent_documents", "empty", "")
write("recent_documents", "two", recent([(0, entry("file:///")), (1, entry("file:///tmp", "kept, depth, feet, 1, b"))]))
write("recent_documents", "same-twice", recent([(0, entry("file:///")), (1, entry("/")), (2, entry("file:///"))]))
write("recent_documents", "gap", recent([(0, entry("/")), (2, entry("."))]))
write("recent_documents", "missing-file", recent([(0, entry("file:///no/such/file")), (1, entry("."))]))
write("recent_documents", "unknown-kind", recent([(0, entry("/", "x, depth, miles")), (1, entry(".", "kept, depth, yards"))]))
write("recent_documents", "single-entries", recent([(0, "/"), (1, "@Invalid()"), (2, "."), (3, "")]))
write("recent_documents", "types", recent([(0, "@ByteArray(/)"), (1, "@Size(3 4)"), (2, "@@, kept"), (3, "5")]))
write("recent_documents", "escapes", recent([(0, '"/", kept, "de\\x70th", metres, "a\\tb\\\\, c", \\xd800, "\\x0"')]))
write("recent_documents", "too-many", recent([(i, entry("/" + "./" * i)) for i in range(25)]))
write("recent_documents", "no-settings", b"\x00\xff[\n=\n\\\x80")

# --- preferences

PREFERENCES = {
    "application": {"useEyeVisibilityIndicator": "true", "industry_sector": "7", "mouse_mode": "2",
                    "useSystemProxySettings": "false", "useExternalHelpViewer": "true", "showEntityIds2": "false",
                    "showHiddenAttributes": "true", "create_unique_object_names": "false",
                    "useToolboxAutoSelect": "true", "useOptimizedFlowpaths": "true"},
    "performance_options": {"use_multithreading": "false", "use_multithreaded_rendering": "false",
                            "seismicRenderQuality": "1"},
    "viewer_options": {"animate_jumps": "false", "hq_image_downsample": "false", "background_color": "#12ab9f",
                       "highlight_color": "red", "use_highlight_color_for_selection": "false",
                       "apply_transparancy_to_highlight": "false", "use_metric_symbol_size": "true",
                       "use_label_metric_size": "false", "shader_rendering": "false", "useTriPanelViewFrame": "false",
                       "use3DViewByDefault": "false", "use_metric_symbol_size_3dview": "false"},
    "animation_tool": {"pathToFFmpegExecutable": "/usr/bin/ffmpeg"},
}


def preferences(value_of):
    return "".join(
        f"[{group}]\n" + "".join(f"{key}={value_of(value)}\n" for key, value in keys.items()) + "\n"
        for group, keys in PREFERENCES.items())


write("settings", "changed", preferences(lambda value: value))
for name, value in {"of-nothing": "", "zero": "0", "large": "99999999999", "negative": "-1", "list": "a, b",
                    "invalid": "@Invalid()", "bytes": "@ByteArray(2)", "size": "@Size(3 4)", "nan": "nan",
                    "quoted": '"true"', "escapes": '"\\x0\\xd800\\t@"', "at": "@@a", "truth": "TRUE"}.items():
    write("settings", name, preferences(lambda _, value=value: value))
write("settings", "others", "[General]\nlone=1\n\n[application]\nown=@Rect(1 2 3 4)\nmouse_mode=1\n\n[%General]\na\\b=x, y\n")
write("settings", "cut", "[viewer_options]\nanimate_jumps=false\nshader_rend")
write("settings", "twice", "[viewer_options]\nshader_rendering=false\nshader_rendering=true\n[viewer_options]\nshader_rendering=0\n")
write("settings", "line-ends", "[viewer_options]\r\nanimate_jumps=false\r\nbackground_color=#f0a\r\n; remark\r\n")
write("settings", "empty", "")
write("settings", "no-settings", bytes(range(256)))

# --- panels


def geometry(version=3, frame=(100, 120, 299, 259), normal=(104, 140, 295, 255), screen=0, maximised=0, full=0, width=800):
    """What QWidget::saveGeometry() gives."""
    content = struct.pack(">IHH", 0x1D9D0CB, version, 0) + struct.pack(">4i4i", *frame, *normal)
    content += struct.pack(">iBBi", screen, maximised, full, width) + struct.pack(">4i", *normal)
    return "@ByteArray(" + "".join(f"\\x{byte:x}" for byte in content) + ")"


def panels(**entries):
    group = "[Q4DAbstractControlPanel]\n"
    return group + "".join(f"{key.replace('__', chr(92))}={value}\n" for key, value in entries.items())


write("panels", "empty", "")
write("panels", "order", panels(tabOrder="Alpha, Home, Ghost, H\\xf6he"))
write("panels", "order-of-one", panels(tabOrder="Alpha"))
write("panels", "order-twice", panels(tabOrder="Alpha, Home, Alpha, Ghost, Ghost"))
write("panels", "order-of-a-size", panels(tabOrder="@Size(3 4)"))
write("panels", "floating", panels(Alpha__floating="true", Home__floating="1", tabOrder="Home, Alpha"))
write("panels", "floating-title", "[Q4DAbstractControlPanel]\nA%20%26%26%20B\\floating=true\n%U5730\\floating=true\nH%F6he\\floating=x\n")
write("panels", "all-floating", "[Q4DAbstractControlPanel]\n" + "".join(
    f"{title}\\floating=true\n" for title in (
        "Home", "Alpha", "Beta%202", "A%20%26%26%20B", "H%F6he", "tabOrder", "%251%3D%5Bx%5D%2C%20%22y%22%3B%20z")))
GEOMETRIES = {
    "ordinary": geometry(),
    "maximised": geometry(maximised=1),
    "full-screen": geometry(full=1),
    "far-away": geometry(frame=(90000, -90000, 90100, -89900), normal=(90000, -90000, 90100, -89900)),
    "other-screen": geometry(screen=7),
    "largest": geometry(frame=(-2**31, -2**31, 2**31 - 1, 2**31 - 1), normal=(-2**31, -2**31, 2**31 - 1, 2**31 - 1)),
    "inside-out": geometry(frame=(300, 300, 100, 100), normal=(300, 300, 100, 100)),
    "next-version": geometry(version=9),
    "cut": geometry()[:60] + ")",
    "text": "nonsense",
    "rectangle": "@Rect(1 2 3 4)",
    "nothing": "@ByteArray()",
}
for name, value in GEOMETRIES.items():
    write("panels", "geometry-" + name, panels(Alpha__floating="true", Alpha__dockSize=value))

# --- batch scripts

write("batch_script", "empty", "")
write("batch_script", "all", "info\nsmooth 1\nfill-sinks\nclamp 0 4\nscale 0.5\nclean-up\nraise 2.5 2.5 2 3\n"
      "lower 1 1 1.5 1\nflatten 3 0 0 5 0 5 5\nflatten mean 0 0 5 0 5 5\nundo 3\nredo\ncrop 1 4 0 3\nresample 2 average\n"
      "resample 0.5\nresample 1.5 nearest\ninfo\nundo 20\nredo 20\n")
write("batch_script", "exports", "export a.tif\nopen a.tif\nexport b.asc\nopen b.asc\nexport c.gpkg 25\nexport c.gpkg\n"
      "triangulate 1\nexport d.ply\nexport d.obj\nexport d.off\nexport d.stl\ninfo\nopen d.ply\n")
write("batch_script", "words", "# remark\n\tsmooth\t\"1\" # remark\n\ninfo\r\nfill-\"sinks\"\nsmooth \"1\n")
write("batch_script", "large-numbers", "smooth 2147483647\nscale 1e308\nscale 1e308\n")
write("batch_script", "small-numbers", "scale 1e-300\nscale 1e-300\ntriangulate 1e-300\ninfo\nclamp -1e308 1e308\n")
write("batch_script", "places", "raise 1e300 -1e300 1e300 1e300\n")
write("batch_script", "polygon", "flatten 1e3 -1e9 -1e9 1e9 -1e9 1e9 1e9 -1e9 1e9\nundo\ninfo\n")
write("batch_script", "grow", "resample 0.1\nresample 0.1\n")
write("batch_script", "shrink", "resample 10 average\ninfo\ntriangulate 0\nundo 5\nundo\n")
write("batch_script", "crop-to-nothing", "crop 0 0 0 0\ninfo\ncrop 5 1 0 0\n")
for name, line in {"number": "scale 0x10", "comma": "scale 1,5", "inf": "scale inf", "nan": "clamp nan 1",
                   "unknown": "sharpen 1", "too-few": "clamp 1", "no-extension": "export a", "interval": "export a.gpkg 1e-9",
                   "interval-of-tif": "export a.tif 5", "folder": "open .", "missing": "open b.tif",
                   "no-mesh": "export a.ply", "corner": "flatten 1 2 3 4 5 6 7 8", "undo-none": "undo 0"}.items():
    write("batch_script", "refused-" + name, "fill-sinks\n" + line + "\ninfo\n")

# --- rasters


def grid(cells, columns, rows, extra="", size="cellsize 30"):
    return f"ncols {columns}\nnrows {rows}\nxllcorner 440000\nyllcorner 5400000\n{size}\n{extra}{cells}\n"


def tiff(columns, rows, cells, kind="<f", more=(), compression=1, columns_told=None, rows_told=None):
    """A strip of numbers and its directory, in the order of tags that TIFF wants."""
    code = {"<f": (32, 3), "<d": (64, 3), "<h": (16, 2), "<B": (8, 1)}[kind]
    data = b"".join(struct.pack(kind, cell) for cell in cells)
    tail = b""
    tags = [(256, 4, 1, columns_told or columns), (257, 4, 1, rows_told or rows), (258, 3, 1, code[0]),
            (259, 3, 1, compression), (262, 3, 1, 1), (273, 4, 1, 8), (277, 3, 1, 1), (278, 4, 1, rows),
            (279, 4, 1, len(data)), (339, 3, 1, code[1])]
    start = 8 + len(data) + 2 + 12 * (len(tags) + len(more)) + 4
    for tag, tag_type, values in more:
        packed = values if tag_type == 2 else b"".join(struct.pack("<d", value) for value in values)
        count = len(values)
        if len(packed) <= 4:
            packed += bytes(4 - len(packed))
            tags.append((tag, tag_type, count, struct.unpack("<I", packed)[0]))
        else:
            tags.append((tag, tag_type, count, start + len(tail)))
            tail += packed
    directory = struct.pack("<H", len(tags))
    directory += b"".join(struct.pack("<HHII", *tag) for tag in sorted(tags)) + bytes(4)
    return b"II*\0" + struct.pack("<I", 8 + len(data)) + data + directory + tail


PLACE = [(33550, 12, [30.0, 30.0, 0.0]), (33922, 12, [0.0, 0.0, 0.0, 440000.0, 5400000.0, 0.0])]
SIX = [5, 2, -9999, 3.5, -0.0, 1000.25]
write("raster", "grid", grid("5 2 -9999\n3.5 -0.0 1000.25", 3, 2, "NODATA_value -9999\n"))
write("raster", "grid-without-no-data", grid("5 2 -9999\n3.5 1e300 1000.25", 3, 2))
write("raster", "grid-words", grid("nan inf -inf\n1e400 0x10 x", 3, 2, "NODATA_value nan\n"))
write("raster", "grid-cut", grid("5 2", 3, 2))
write("raster", "grid-too-large", grid("5 2", 100000, 100000))
write("raster", "grid-overview", grid("5 2", 3000, 2000))
write("raster", "grid-negative", grid("5 2", -3, 2))
write("raster", "grid-oblong", grid("5 2", 2, 1, "NODATA_value 5\n", "dx 10\ndy 20"))
write("raster", "grid-without-size", grid("5 2", 2, 1, "", "cellsize 0"))
write("raster", "tiff-float", tiff(3, 2, SIX, "<f", PLACE + [(42113, 2, b"-9999\0")]))
write("raster", "tiff-double", tiff(3, 2, SIX, "<d", PLACE))
write("raster", "tiff-short", tiff(3, 2, [5, 2, -9999, 3, 0, 1000], "<h", [(42113, 2, b"nan\0")]))
write("raster", "tiff-byte", tiff(3, 2, [5, 2, 255, 3, 0, 100], "<B", [(42113, 2, b"255\0")]))
write("raster", "tiff-odd-numbers", tiff(3, 2, [float("nan"), float("inf"), float("-inf"), -0.0, 3e38, 1e-45], "<f"))
SCALED = b'<GDALMetadata><Item name="OFFSET" sample="0" role="offset">100</Item>' \
         b'<Item name="SCALE" sample="0" role="scale">1e308</Item>' \
         b'<Item name="UNITTYPE" sample="0" role="unittype">ft</Item></GDALMetadata>\0'
write("raster", "tiff-scaled", tiff(3, 2, SIX, "<f", PLACE + [(42112, 2, SCALED)]))
write("raster", "tiff-place-of-nan", tiff(3, 2, SIX, "<f", [(33550, 12, [float("nan"), 1e308, 0.0]), PLACE[1]]))
write("raster", "tiff-cut", tiff(3, 2, SIX, "<f", PLACE)[:-60])
write("raster", "tiff-too-few-cells", tiff(3, 2, SIX, "<f", PLACE, rows_told=40))
write("raster", "tiff-too-large", tiff(3, 2, SIX, "<f", PLACE, columns_told=2**31 - 1, rows_told=2**31 - 1))
write("raster", "tiff-unknown-compression", tiff(3, 2, SIX, "<f", PLACE, compression=9999))
write("raster", "surfer-text", "DSAA\n3 2\n0 2\n0 1\n0 9\n5 2 9\n3 1.70141e38 4\n")
write("raster", "surfer-binary", b"DSBB" + struct.pack("<hh6d", 3, 2, 0, 2, 0, 1, 0, 9) + struct.pack("<6f", *[5, 2, 9, 3, 1.70141e38, 4]))
write("raster", "points", "0 0 5\n1 0 2\n2 0 9\n0 1 3\n1 1 1\n2 1 4\n")
write("raster", "portable-map", b"P5\n3 2\n255\n\x05\x02\xff\x03\x00\x64")
write("raster", "terragen", b"TERRAGENTERRAIN SIZE" + struct.pack("<HH", 1, 0) + b"XPTS" + struct.pack("<HH", 3, 0)
      + b"YPTS" + struct.pack("<HH", 2, 0) + b"ALTW" + struct.pack("<hh6h", 100, 0, 5, 2, 9, 3, 0, 4))
write("raster", "bt", b"binterr1.3" + struct.pack("<ii", 3, 2) + struct.pack("<hhhhh4dhf", 4, 1, 1, 32, -2, 0.0, 3.0, 0.0, 2.0, 0, 1.0)
      + bytes(190) + struct.pack("<6f", *SIX))
write("raster", "empty", "")
write("raster", "text", "no raster")
