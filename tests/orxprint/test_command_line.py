"""Drives orxprint from outside: statuses, messages, formats and files.

The program under test is named by the environment variable ORXPRINT.
"""

import base64
import json
import os
import pathlib
import re
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree
import zlib

ORXPRINT = os.environ["ORXPRINT"]

HEADER = "%!PS-Adobe-3.0 EPSF-3.0\n"
BOX = "%%BoundingBox: 10 20 110 70\n"
SQUARE = "10 20 moveto 110 20 lineto 110 70 lineto 10 70 lineto closepath fill\n"
# A page of 100 x 50 points, its lower half black.
HALF = HEADER + BOX + "10 20 moveto 110 20 lineto 110 45 lineto 10 45 lineto closepath fill\n"
THREE_PAGES = (
    HEADER
    + "%%Pages: 3\n%%BoundingBox: 0 0 72 144\n/bar {moveto 36 0 rlineto stroke} bind def\n"
    + "%%Page: i 1\n0 10 bar showpage\n"
    + "%%Page: (two) 2\n%%PageBoundingBox: 0 0 144 72\n0 20 bar showpage\n"
    + "%%Page: iii 3\n0 30 bar showpage\n%%EOF\n"
)
# Doubles its calls with every level: no patience is long enough.
ENDLESS = (
    HEADER
    + BOX
    + "/a0 {10 20 moveto 50 50 lineto stroke} def\n"
    + "".join(f"/a{i} {{a{i - 1} a{i - 1}}} def\n" for i in range(1, 60))
    + "a59\n"
)


def png_size(data):
    return struct.unpack(">II", data[16:24])


def png_rows(data):
    """The rows of a picture without interlacing, in bytes of red, green and blue."""
    width, height = png_size(data)
    depth, colour_type = data[24], data[25]
    chunks, position = {}, 8
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position : position + 8])
        chunks[kind] = chunks.get(kind, b"") + data[position + 8 : position + 8 + length]
        position += 12 + length
    channels = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}[colour_type]
    raw, stride = zlib.decompress(chunks[b"IDAT"]), (width * channels * depth + 7) // 8
    step = max(1, channels * depth // 8)
    rows, before = [], bytes(stride)
    for y in range(height):
        kind = raw[y * (stride + 1)]
        row = bytearray(raw[y * (stride + 1) + 1 : (y + 1) * (stride + 1)])
        for i in range(stride):
            left = row[i - step] if i >= step else 0
            corner = before[i - step] if i >= step else 0
            estimate = left + before[i] - corner
            paeth = min((left, before[i], corner), key=lambda value: abs(estimate - value))
            row[i] = (row[i] + (0, left, before[i], (left + before[i]) // 2, paeth)[kind]) & 255
        before = row
        rows.append(rgb_of(row, width, depth, colour_type, chunks.get(b"PLTE", b"")))
    return rows


def rgb_of(row, width, depth, colour_type, palette):
    if colour_type in (2, 6):
        channels = 3 if colour_type == 2 else 4
        return b"".join(bytes(row[i : i + 3]) for i in range(0, width * channels, channels))
    if colour_type == 4:
        return b"".join(bytes([row[i]]) * 3 for i in range(0, 2 * width, 2))
    samples = [row[i * depth // 8] >> (8 - depth - i * depth % 8) & (1 << depth) - 1 for i in range(width)]
    if colour_type == 3:
        return b"".join(palette[3 * sample : 3 * sample + 3] for sample in samples)
    return b"".join(bytes([sample * 255 // ((1 << depth) - 1)]) * 3 for sample in samples)


class CommandLine(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode("latin-1")
        (self.folder / name).write_bytes(data)
        return name

    def run_program(self, *arguments, stdin=b"", environment=None):
        return subprocess.run(
            [ORXPRINT, *arguments],
            cwd=self.folder,
            input=stdin,
            capture_output=True,
            timeout=120,
            env={**os.environ, **(environment or {})},
        )

    def expect(self, status, *arguments, message="", **options):
        """Runs, checks the status and that the message is told; returns standard output."""
        done = self.run_program(*arguments, **options)
        told = done.stderr.decode("utf-8", "replace")
        self.assertEqual(done.returncode, status, f"{arguments}: {told}")
        self.assertIn(message, told)
        return done.stdout

    def files(self):
        return sorted(path.name for path in self.folder.iterdir())

    def read(self, name):
        return (self.folder / name).read_bytes()


class Usage(CommandLine):
    def test_wrong_usage_ends_with_2_and_names_what_is_wrong(self):
        self.write("a.eps", HALF)
        self.write("b.eps", HALF)
        for arguments, message in [
            ([], "a command is required"),
            (["paint"], "paint"),
            (["--units", "pt", "view", "a.eps"], "do nothing here"),
            (["view", "-", "-"], "standard input"),
            (["render"], "FILE"),
            (["render", "a.eps", "-f", "jpeg"], "'jpeg' is not a format"),
            (["render", "a.eps", "-o", "a.jpeg"], "says no format"),
            (["render", "a.eps", "--pages", "3-1"], "'3-1' is not a list of pages"),
            (["render", "a.eps", "--area", "all"], "'all' is not box, hires, page or drawing"),
            (["render", "a.eps", "-o", "a.png", "--fit", "4x"], "'4x' is not a size in pixels"),
            (["render", "a.eps", "-o", "a.png", "--fit", "4x5", "--width", "4"], "excludes"),
            (["render", "a.eps", "-o", "a.png", "--background", "#12345"], "none, white or"),
            (["render", "a.eps", "--grey"], "is for PNG, and the format is svg"),
            (["render", "a.eps", "-r", "0"], "0"),
            (["render", "a.eps", "b.eps", "-o", "c.pdf"], "one output for several files"),
            (["trace", "a.eps", "--page", "-1"], "-1"),
            (["trace", "a.eps", "--units", "inch"], "inch"),
            (["info", "a.eps", "--time-limit", "soon"], "'soon' is not a number of seconds"),
            (["info", "a.eps", "--memory-limit", "1X"], "'1X' is not a size"),
            (["info", "a.eps", "--memory-limit", "99999999999G"], "is not a size"),
        ]:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.expect(2, *arguments, message=message), b"")
        self.assertEqual(self.files(), ["a.eps", "b.eps"])

    def test_help_and_version_are_answers(self):
        self.assertIn(b"Exit status", self.expect(0, "--help"))
        for command, word in [("render", b"--area"), ("info", b"--json"), ("trace", b"--samples")]:
            text = self.expect(0, command, "--help")
            self.assertIn(word, text)
            self.assertIn(b"--time-limit", text)
        self.assertRegex(self.expect(0, "--version"), rb"^orxprint \d+\.\d+\.\d+\nplug-in: .*\n$")

    def test_a_plugin_that_cannot_be_loaded_ends_with_5_and_says_what_was_tried(self):
        self.write("a.eps", HALF)
        self.write("text.so", "no library")
        for name in ["text.so", "missing.so"]:
            self.expect(5, "trace", "a.eps", "--plugin", name, message=name)

    def test_units_follow_the_environment_only_when_asked_to(self):
        self.write("a.eps", HALF)
        for value, options, expected in [
            ("0", [], b"[3.5277777, 7.0555553,"),
            ("0", ["--units", "env"], b"[10, 20,"),
            ("1", ["--units", "env"], b"[3.5277777, 7.0555553,"),
            ("0", ["--units", "mm"], b"[3.5277777, 7.0555553,"),
            ("1", ["--units", "pt"], b"[10, 20,"),
        ]:
            environment = {"ORXPrintOpenPSToMM": value}
            traced = self.expect(0, "trace", "a.eps", *options, environment=environment)
            self.assertIn(expected, traced)


class Reading(CommandLine):
    def test_unreadable_files_are_told_and_the_others_are_done(self):
        self.write("good.eps", HALF)
        os.mkdir(self.folder / "folder")
        for name, message in [("missing.eps", "no such file"), ("folder", "is a directory")]:
            told = f"orxprint: {name}: {message}"
            self.expect(1, "render", name, "good.eps", "-f", "png", message=told)
            self.assertEqual(png_size(self.read("good.png")), (208, 104))
            os.remove(self.folder / "good.png")
            self.expect(1, "trace", name, message=told)

    def test_what_does_not_begin_like_postscript_is_interpreted_with_a_warning(self):
        self.write("plain.txt", SQUARE)
        traced = self.expect(0, "trace", "plain.txt", message="plain.txt: warning: does not begin")
        self.assertIn(b"FillArea(1, [5], [", traced)
        self.write("empty.eps", "")
        self.assertEqual(self.expect(0, "trace", "empty.eps"), b"")

    def test_names_cannot_command_the_terminal(self):
        told = self.run_program("trace", "\x1b[31m\n").stderr
        self.assertIn(b"orxprint: \\x1b[31m\\x0a: no such file\n", told)

    def test_a_preview_in_front_is_skipped(self):
        document = HALF.encode()
        header = b"\xc5\xd0\xd3\xc6" + struct.pack("<6IH", 40, len(document), 0, 0, 0, 0, 0xFFFF)
        self.write("preview.eps", header + b"." * 10 + document + b"showpage garbage (")
        self.write("plain.eps", HALF)
        plain = self.expect(0, "trace", "plain.eps")
        self.assertEqual(self.expect(0, "trace", "preview.eps"), plain)
        whole = self.read("preview.eps")
        self.assertEqual(self.expect(0, "trace", "-", stdin=whole), plain)
        for offset, length in [(40, 2**32 - 1), (2**32 - 1, 40), (4, 8), (40, 0), (4000, 1)]:
            damaged = whole[:4] + struct.pack("<2I", offset, length) + whole[12:]
            self.write("damaged.eps", damaged)
            self.expect(1, "trace", "damaged.eps", message="its preview header is damaged")
        self.write("short.eps", header[:20])
        self.expect(1, "trace", "short.eps", message="its preview header is cut short")


class Tracing(CommandLine):
    def test_calls_are_lines_in_the_exact_form(self):
        expected = (
            b"DefineColor(255, 0, 0, 0)\nSetLineColor(255)\nSetLineCap(0)\nSetLineWidth(0.1)\n"
            b"MoveTo(0, 0)\nLineTo(3.5277777, 0)\nLineTo(3.5277777, 3.5277777)\nLineTo(0, 0)\n"
        )
        self.write("a.eps", HEADER + "0 0 moveto 10 0 lineto 10 10 lineto closepath stroke\n")
        self.assertEqual(self.expect(0, "trace", "a.eps"), expected)

    def test_a_page_is_selected_or_all_are(self):
        self.write("a.eps", THREE_PAGES)
        for options, expected in [
            ([], [b"10", b"20", b"30"]),
            (["--page", "2"], [b"20"]),
            (["--page", "0"], []),
            (["--page", "4294967295"], []),
        ]:
            traced = self.expect(0, "trace", "a.eps", "--units", "pt", *options)
            self.assertEqual(re.findall(rb"MoveTo\(0, (\d+)\)", traced), expected)
            self.assertEqual(traced.count(b"NewPage()"), 0 if options else 2)

    def test_images_are_named_by_their_samples(self):
        data = bytes(range(8))
        encoded = "".join(
            "".join(chr(33 + int.from_bytes(data[i : i + 4], "big") // 85**k % 85) for k in (4, 3, 2, 1, 0))
            for i in (0, 4)
        )
        self.write(
            "a.eps",
            HEADER
            + "40 20 scale\n<< /Width 4 /Height 2 /BitsPerComponent 8 /ImageMatrix [4 0 0 -2 0 2]\n"
            + "/DataSource currentfile /ASCII85Decode filter >> image\n"
            + encoded
            + "~>\n",
        )
        line = (
            "DrawImage(0, 0, 0, {width: 4, height: 2, format: 0, xPixelSize: 10, yPixelSize: 10, "
            f"bytes: 8, crc32: {zlib.crc32(data):08x}"
        )
        traced = self.expect(0, "trace", "a.eps", "--units", "pt").decode()
        self.assertEqual(traced, line + "})\n")
        traced = self.expect(0, "trace", "a.eps", "--units", "pt", "--samples").decode()
        self.assertEqual(traced, line + f", samples: {data.hex()}}})\n")

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_output_that_takes_no_more_is_told(self):
        self.write("a.eps", HALF)
        with open("/dev/full", "wb") as full:
            for command in ["trace", "info"]:
                done = subprocess.run(
                    [ORXPRINT, command, self.folder / "a.eps"], stdout=full, stderr=subprocess.PIPE
                )
                self.assertEqual(done.returncode, 1)
                self.assertIn(b"cannot write standard output", done.stderr)


class Describing(CommandLine):
    def test_json_has_an_object_for_each_file_in_order(self):
        self.write("three.eps", THREE_PAGES)
        self.write("bare.eps", HEADER + "0 0 moveto 1 1 lineto 0 0 1 0 90 arc closepath stroke\n")
        printed = self.expect(
            1, "info", "three.eps", "missing.eps", "bare.eps", "--json", message="missing.eps: no such"
        )
        three, missing, bare = json.loads(printed)
        self.assertEqual([three["version"], three["file"]], [1, "three.eps"])
        self.assertEqual(three["pages"], 3)
        self.assertEqual(three["pageSize"], {"width": 25.4, "height": 50.8})
        self.assertEqual(three["labels"], ["i", "(two)", "iii"])
        self.assertEqual(three["pageSizes"][1], {"width": 50.8, "height": 25.4})
        self.assertEqual(
            three["statistics"], {"curves": 0, "lines": 3, "arcs": 0, "images": 0, "closedPaths": 0}
        )
        self.assertEqual(missing["error"], "no such file")
        self.assertEqual([missing[key] for key in ("pages", "pageSize", "statistics")], [None] * 3)
        self.assertEqual([bare["pages"], bare["pageSize"], bare["labels"]], [None, None, []])
        self.assertEqual(
            bare["statistics"], {"curves": 0, "lines": 1, "arcs": 1, "images": 0, "closedPaths": 1}
        )

    def test_lines_for_people(self):
        self.write("a.eps", THREE_PAGES)
        self.assertEqual(
            self.expect(0, "info", "a.eps", "--units", "pt").decode(),
            "File: a.eps\nDSC version: 3.0, EPSF 3.0\nPages: 3\n"
            "Page size: 25.4 x 50.8 mm (72 x 144 pt), from %%BoundingBox in line 3\n"
            "Box: 0 0 to 72 144 pt, line 3\nDrawn: -0.05 9.95 to 36.05 30.05 pt\n"
            "Page 1 label: i\n"
            "Page 1 size: 25.4 x 50.8 mm (72 x 144 pt), from %%BoundingBox in line 3\n"
            "Page 1 drawn: -0.05 9.95 to 36.05 10.05 pt\n"
            "Page 2 label: (two)\n"
            "Page 2 size: 50.8 x 25.4 mm (144 x 72 pt), from %%PageBoundingBox in line 8\n"
            "Page 2 box: 0 0 to 144 72 pt, line 8\n"
            "Page 2 drawn: -0.05 19.95 to 36.05 20.05 pt\n"
            "Page 3 label: iii\n"
            "Page 3 size: 25.4 x 50.8 mm (72 x 144 pt), from %%BoundingBox in line 3\n"
            "Page 3 drawn: -0.05 29.95 to 36.05 30.05 pt\n"
            "Curve count: 0\nLine count: 3\nArc count: 0\nImage count: 0\nClosed Path count: 0\n",
        )

    def test_a_page_count_beyond_reason_is_not_asked_through(self):
        self.write("a.eps", HEADER + "%%Pages: 4000000000\n%%Page: one 1\n")
        (described,) = json.loads(self.expect(0, "info", "a.eps", "--json"))
        self.assertEqual(described["pages"], 2147483647)
        self.assertEqual(described["pagesAsked"], 10000)
        self.assertEqual([len(described["labels"]), described["labels"][:2]], [10000, ["one", None]])
        self.write("b.eps", HEADER + "%%Pages: 4000000000\n%%Page: " + "x" * 1_000_000 + " 1\n")
        (described,) = json.loads(self.expect(0, "info", "b.eps", "--json"))
        self.assertEqual([described["pagesAsked"], described["labels"][1]], [10000, None])

    def test_any_bytes_give_json(self):
        name = self.write("n\udcff.eps".encode("utf-8", "surrogateescape").decode("latin-1"), "")
        os.rename(self.folder / name, os.fsencode(self.folder) + b"/n\xff.eps")
        labels = HEADER + '%%Pages: 2\n%%Page: "\x01\xff\\ 1\n%%Page: \xc3\xa9 2\n'
        self.write("a.eps", labels)
        printed = self.expect(1, "info", b"n\xff.eps", "a.eps", "--json")
        unnamed, labelled = json.loads(printed.decode("utf-8"))
        self.assertEqual(unnamed["file"], "n\ufffd.eps")
        self.assertEqual(labelled["labels"][0], '"\x01\xff\\')


class Drawing(CommandLine):
    def test_formats_follow_the_option_or_the_ending(self):
        self.write("a.eps", HALF)
        for arguments, name, start in [
            (["-f", "pdf"], "a.pdf", b"%PDF-"),
            ([], "a.svg", b"<?xml"),
            (["-o", "b.png"], "b.png", b"\x89PNG"),
            (["-o", "c.dat", "-f", "svg"], "c.dat", b"<?xml"),
        ]:
            self.assertEqual(self.expect(0, "render", "a.eps", *arguments), b"")
            self.assertTrue(self.read(name).startswith(start), name)
        self.expect(0, "render", "a.eps", "-f", "none")
        self.assertEqual(self.files(), ["a.eps", "a.pdf", "a.svg", "b.png", "c.dat"])

    def test_areas(self):
        self.write("a.eps", HALF)
        self.write("late.eps", HALF.replace(BOX, "%%BoundingBox: (atend)\n") + BOX)
        self.write("none.eps", HALF.replace(BOX, ""))
        self.write("fine.eps", HALF.replace(BOX, BOX + "%%HiResBoundingBox: 20 35.0 70 55.0\n"))
        white, black = b"\xff" * 3, b"\x00" * 3
        for name, area, size, pixels in [
            ("a.eps", "box", (100, 50), {(0, 0): white, (0, 49): black, (99, 25): black}),
            ("late.eps", "box", (100, 50), {(0, 24): white, (0, 25): black}),
            ("a.eps", "page", (110, 70), {(9, 69): white, (10, 49): black, (10, 50): white}),
            ("a.eps", "drawing", (100, 25), {(0, 0): black, (99, 24): black}),
            ("none.eps", "box", (100, 25), {(0, 0): black, (99, 24): black}),
            ("fine.eps", "hires", (50, 20), {(0, 0): white, (0, 19): black}),
            ("fine.eps", "box", (100, 50), {(0, 24): white}),
            ("a.eps", "hires", (100, 50), {(0, 0): white, (0, 49): black}),
        ]:
            with self.subTest(name=name, area=area):
                self.expect(0, "render", name, "-o", "out.png", "-r", "72", "--area", area)
                data = self.read("out.png")
                self.assertEqual(png_size(data), size)
                rows = png_rows(data)
                for (x, y), pixel in pixels.items():
                    self.assertEqual(rows[y][3 * x : 3 * x + 3], pixel, (x, y))

    def test_pictures_for_previews(self):
        self.write("a.eps", HALF)
        for arguments, size, kind, corners in [
            (["--width", "30"], (30, 15), 0, (b"\xff" * 3, b"\x00" * 3)),
            (["--height", "30"], (60, 30), 0, (b"\xff" * 3, b"\x00" * 3)),
            (["--fit", "40x90", "--grey"], (40, 20), 0, (b"\xff" * 3, b"\x00" * 3)),
            (["--fit", "90x10", "--background", "none"], (20, 10), 4, (b"\x00" * 3, b"\x00" * 3)),
            (["-r", "72", "--background", "#10fF20"], (100, 50), 2, (b"\x10\xff\x20", b"\x00" * 3)),
        ]:
            with self.subTest(arguments=arguments):
                self.expect(0, "render", "a.eps", "-o", "out.png", *arguments)
                data = self.read("out.png")
                self.assertEqual((png_size(data), data[25]), (size, kind))
                rows = png_rows(data)
                self.assertEqual((rows[0][: len(corners[0])], rows[-1][: len(corners[1])]), corners)
        self.expect(4, "render", "a.eps", "-o", "b.png", "--width", "900000", message="would do")
        self.expect(0, "render", "a.eps", "--area", "hires", message="no high-resolution box")

    def test_a_document_without_size_that_draws_nothing_is_refused(self):
        self.write("a.eps", HEADER + "1 2 add\n")
        self.expect(1, "render", "a.eps", message="says no size and draws nothing")
        self.write("blank.eps", HEADER + BOX)
        self.expect(0, "render", "blank.eps", message="blank.eps: warning: nothing was drawn")
        self.assertEqual(self.files(), ["a.eps", "blank.eps", "blank.svg"])

    def test_pages_become_files_or_one_file(self):
        self.write("a.eps", THREE_PAGES)
        for arguments, names in [
            (["-f", "svg"], ["a-1.svg", "a-2.svg", "a-3.svg"]),
            (["-o", "p.png"], ["p-1.png", "p-2.png", "p-3.png"]),
            (["-o", "q%02d.svg", "--pages", "3,1"], ["q01.svg", "q03.svg"]),
            (["-o", "r.svg", "--page", "2"], ["r.svg"]),
            (["-o", "s.pdf"], ["s.pdf"]),
        ]:
            before = set(self.files())
            self.expect(0, "render", "a.eps", *arguments)
            self.assertEqual(sorted(set(self.files()) - before), names)
        self.assertEqual(
            [png_size(self.read(f"p-{page}.png")) for page in (1, 2, 3)],
            [(150, 300), (300, 150), (150, 300)],
        )
        told = subprocess.run(["pdfinfo", "-l", "9", self.folder / "s.pdf"], capture_output=True).stdout
        sizes = re.findall(rb"Page +\d size: +(\d+) x (\d+) pts", told)
        self.assertEqual(sizes, [(b"72", b"144"), (b"144", b"72"), (b"72", b"144")])
        self.assertEqual(self.read("r.svg"), self.read("a-2.svg"))

    def test_pages_that_are_not_there_are_refused_with_the_count(self):
        self.write("a.eps", THREE_PAGES)
        self.write("uncounted.eps", THREE_PAGES.replace("%%Pages: 3\n", ""))
        self.write("one.eps", HALF)
        for name, pages, count in [
            ("a.eps", "2,4", "has 3 pages"),
            ("uncounted.eps", "9-", "has 3 pages"),
            ("one.eps", "2", "has 1 page"),
        ]:
            self.expect(1, "render", name, "--pages", pages, message=count)
        self.assertEqual(self.files(), ["a.eps", "one.eps", "uncounted.eps"])

    def test_a_pdf_passes_its_checker_and_carries_what_the_comments_say(self):
        comments = "%%Title: (Grundri\xdf)\n%%Creator: a pen\n"
        self.write("a.eps", THREE_PAGES.replace(HEADER, HEADER + comments))
        self.write("b.eps", THREE_PAGES.replace("%%Page: i 1", "%%Page: 1 1"))
        for name in ("a", "b"):
            self.expect(0, "render", f"{name}.eps", "-f", "pdf")
            checked = subprocess.run(["qpdf", "--check", self.folder / f"{name}.pdf"], capture_output=True)
            self.assertEqual(checked.returncode, 0, checked)
        told = subprocess.run(["pdfinfo", self.folder / "a.pdf"], capture_output=True).stdout.decode()
        self.assertRegex(told, r"Title: +Grundri\xdf\n")
        self.assertRegex(told, r"Creator: +a pen\n")
        self.assertNotIn("CreationDate", told)
        shown = subprocess.run(
            ["qpdf", "--json", "--json-key=pagelabels", self.folder / "a.pdf"], capture_output=True
        )
        labels = [entry["label"]["/P"] for entry in json.loads(shown.stdout)["pagelabels"]]
        self.assertEqual(labels, ["u:i", "u:(two)", "u:iii"])

    def test_svg_and_pdf_show_what_png_shows(self):
        image = (
            "gsave 50 40 translate 24 24 scale << /Width 4 /Height 4 /BitsPerComponent 8\n"
            "/DataSource currentfile /ASCII85Decode filter >> image\n"
            "!!iQ)z!<<*\"#QOi)z~>\ngrestore\n"
        )
        rest = "2 setlinewidth 15 25 moveto 40 60 lineto 60 25 lineto closepath stroke\n"
        self.write("a.eps", HALF + rest + image)
        for form in ("png", "pdf", "svg"):
            self.expect(0, "render", "a.eps", "-f", form, "-r", "72")
        drawn = xml.etree.ElementTree.parse(self.folder / "a.svg").getroot()
        self.assertEqual([drawn.get("width"), drawn.get("viewBox")], ["100pt", "0 0 100 50"])
        name = "{http://www.w3.org/2000/svg}"
        self.assertEqual(
            [element.tag.replace(name, "") for element in drawn[0]], ["g", "path", "image"]
        )
        (picture,) = drawn.iter(name + "image")
        data = picture.get("{http://www.w3.org/1999/xlink}href")
        self.assertEqual(png_size(base64.b64decode(data.split(",")[1])), (4, 4))
        command = ["pdftocairo", "-png", "-singlefile", "-r", "72", "a.pdf", "pdf"]
        subprocess.run(command, cwd=self.folder, check=True)
        ours, theirs = b"".join(png_rows(self.read("a.png"))), b"".join(png_rows(self.read("pdf.png")))
        self.assertEqual(len(ours), len(theirs))
        differences = [abs(x - y) for x, y in zip(ours, theirs)]
        self.assertLess(sum(differences) / len(differences), 2)

    def test_standard_input_goes_to_standard_output(self):
        for document, arguments, start in [
            (HALF, [], b"<?xml"),
            (HALF, ["-f", "png"], b"\x89PNG"),
            (THREE_PAGES, ["-f", "pdf"], b"%PDF-"),
        ]:
            drawn = self.expect(0, "render", "-", *arguments, stdin=document.encode())
            self.assertTrue(drawn.startswith(start))
        message = "3 pages cannot go to standard output"
        self.assertEqual(self.expect(1, "render", "-", stdin=THREE_PAGES.encode(), message=message), b"")
        self.assertEqual(self.files(), [])

    def test_the_same_document_gives_the_same_bytes(self):
        image = (
            "20 20 scale << /Width 8 /Height 8 /BitsPerComponent 1 /DataSource currentfile\n"
            "/ASCII85Decode filter >> image\nzz~>\n"
        )
        self.write("a.eps", HALF + image)
        self.write("b.eps", HALF + image)
        for form in ["svg", "pdf", "png"]:
            self.expect(0, "render", "a.eps", "b.eps", "-f", form)
            self.assertEqual(self.read(f"b.{form}"), self.read(f"a.{form}"))
            self.assertNotIn(b"CreationDate", self.read(f"a.{form}"))

    def test_sizes_beyond_reason_are_refused(self):
        self.write("a.eps", HALF.replace(BOX, "%%BoundingBox: 0 0 2000000000 2000000000\n"))
        for form in ["svg", "pdf"]:
            self.expect(1, "render", "a.eps", "-f", form, message="is too large")
        self.write("b.eps", HALF.replace(BOX, "%%BoundingBox: 0 0 5000 5000\n"))
        self.expect(4, "render", "b.eps", "-f", "png", "-r", "9600", message="dots per inch")
        self.assertEqual(self.files(), ["a.eps", "b.eps"])


class Outputs(CommandLine):
    def test_nothing_half_written_stays_and_nothing_good_is_lost(self):
        self.write("a.eps", HALF)
        self.write("empty.eps", HEADER)
        self.write("old.svg", "precious")
        self.expect(1, "render", "empty.eps", "-o", "old.svg")
        self.expect(1, "render", "a.eps", "-o", "missing/a.svg", message="cannot write missing/a.svg")
        self.assertEqual(self.read("old.svg"), b"precious")
        self.expect(1, "render", "a.eps", "-o", "a.eps", "-f", "svg", message="replace the document")
        self.assertEqual(self.read("a.eps"), HALF.encode())
        self.assertEqual(self.files(), ["a.eps", "empty.eps", "old.svg"])
        self.expect(0, "render", "a.eps", "-o", "old.svg")
        self.assertTrue(self.read("old.svg").startswith(b"<?xml"))

    def test_a_link_stays_and_its_target_is_replaced(self):
        self.write("a.eps", HALF)
        self.write("target.svg", "old")
        os.symlink("target.svg", self.folder / "link.svg")
        self.expect(0, "render", "a.eps", "-o", "link.svg")
        self.assertTrue((self.folder / "link.svg").is_symlink())
        self.assertTrue(self.read("target.svg").startswith(b"<?xml"))

    def test_a_folder_takes_an_output_for_each_document(self):
        os.mkdir(self.folder / "out")
        os.mkdir(self.folder / "other")
        for name in ["a.eps", "b.eps", "other/a.eps"]:
            self.write(name, HALF)
        self.expect(0, "render", "a.eps", "b.eps", "-o", "out", "-f", "pdf")
        self.assertEqual(sorted(os.listdir(self.folder / "out")), ["a.pdf", "b.pdf"])
        message = "other/a.eps: the output out/a.pdf is that of another document"
        self.expect(1, "render", "a.eps", "other/a.eps", "-o", "out", "-f", "pdf", message=message)
        self.expect(1, "render", "a.eps", "./a.eps", message="a.svg is that of another document")


class Limits(CommandLine):
    def test_a_document_without_end_is_stopped_and_the_others_are_done(self):
        self.write("endless.eps", ENDLESS)
        self.write("a.eps", HALF)
        limit = ["--time-limit", "1"]
        message = "endless.eps: stopped by the time limit"
        self.expect(4, "render", "endless.eps", "a.eps", "-f", "png", *limit, message=message)
        self.assertEqual(self.files(), ["a.eps", "a.png", "endless.eps", "endless.png"])
        self.assertIn(b"\x00\x00\x00", b"".join(png_rows(self.read("endless.png"))))
        traced = self.expect(4, "trace", "endless.eps", *limit, message=message)
        self.assertTrue(traced.endswith(b")\n"))
        # Counting never calls the host, so nothing holds up the run that was left.
        printed = self.expect(4, "info", "endless.eps", "a.eps", "--json", *limit, message=message)
        endless, other = json.loads(printed)
        self.assertEqual(endless["stopped"], "stopped by the time limit")
        self.assertEqual(endless["pageSize"]["width"], other["pageSize"]["width"])
        self.assertEqual(other["statistics"]["closedPaths"], 1)

    def test_input_without_end_is_given_up(self):
        os.mkfifo(self.folder / "silent.eps")
        self.write("a.eps", HALF)
        limit = ["--time-limit", "1"]
        message = "silent.eps: stopped by the time limit"
        self.expect(4, "render", "silent.eps", "a.eps", *limit, message=message)
        self.assertEqual(self.files(), ["a.eps", "a.svg", "silent.eps"])
        message = "/dev/zero: stopped by the time limit"
        self.expect(4, "info", "/dev/zero", "--time-limit", "0.3", message=message)

    def test_between_tokens_a_run_stops_by_itself(self):
        self.write("long.eps", ENDLESS.replace("a59\n", "a9\n" * 1_000_000))
        printed = self.expect(4, "info", "long.eps", "--json", "--time-limit", "1")
        self.assertGreater(json.loads(printed)[0]["statistics"]["lines"], 0)

    def test_a_limit_of_the_interpreter_is_told_and_what_was_drawn_is_written(self):
        half = SQUARE.replace("70", "45")
        self.write("over.eps", HEADER + BOX + half + "1 " * 2_000_000)
        message = "over.eps: a limit of the interpreter was met (stackoverflow) at byte 20"
        self.expect(4, "render", "over.eps", "-f", "png", message=message)
        self.assertEqual(set(png_rows(self.read("over.png"))[-1]), {0})
        self.assertIn(b"FillArea", self.expect(4, "trace", "over.eps", message=message))
        (described,) = json.loads(self.expect(4, "info", "over.eps", "--json", message=message))
        self.assertEqual(described["limitMet"]["error"], "stackoverflow")

    def test_a_document_that_fills_memory_is_stopped(self):
        self.write("full.eps", HEADER + BOX + SQUARE + "1 2 3 4 5 6 7 8\n" * 1_500_000)
        limit = ["--memory-limit", "32M"]
        message = "full.eps: stopped: memory runs low"
        traced = self.expect(4, "trace", "full.eps", *limit, message=message)
        self.assertTrue(traced.endswith(b"report: ORXPrintCGM2Interpreter: Low Memory Error\n"))
        self.expect(4, "render", "full.eps", "-f", "png", *limit, message=message)
        self.assertEqual(set(png_rows(self.read("full.png"))[5]), {0})


if __name__ == "__main__":
    unittest.main()
