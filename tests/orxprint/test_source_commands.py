"""Drives what leads from the paper back to the source: trace with its options, find, info, diff.

The program under test is named by the environment variable ORXPRINT.
"""

import base64
import json
import os
import pathlib
import struct
import unittest
import xml.etree.ElementTree as ElementTree

import jsonschema

from test_command_line import BOX, ENDLESS, HALF, HEADER, SQUARE, THREE_PAGES, CommandLine

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Line 4 draws a stroke through a procedure of line 3, line 5 a fill, line 6 shows an image.
DRAWN = (
    HEADER
    + BOX
    + "/bar {moveto 36 0 rlineto stroke} bind def\n"
    + "0 10 bar\r"
    + "10 20 moveto 60 20 lineto 60 70 lineto closepath fill\r\n"
    + "100 100 translate 40 20 scale << /Width 2 /Height 1 /BitsPerComponent 8 /DataSource "
    + "currentfile /ASCII85Decode filter >> image\n!!~>\n"
)


class Tracing(CommandLine):
    def lines(self, *arguments, **options):
        return self.expect(0, "trace", *arguments, **options).decode().splitlines()

    def objects(self, *arguments, **options):
        return [json.loads(line) for line in self.lines(*arguments, "--json", **options)]

    def test_where_names_the_line_and_byte_of_the_token_that_drew(self):
        self.write("a.eps", DRAWN)
        plain = self.lines("a.eps")
        placed = self.lines("a.eps", "--where")
        self.assertEqual([line.split("  # ")[0] for line in placed], plain)
        places = dict.fromkeys(line.split("  # ")[1] for line in placed)
        tokens = [DRAWN.index("bar\r"), DRAWN.index("fill"), DRAWN.index("image\n")]
        self.assertEqual(
            list(places), [f"line {4 + i}, byte {token}" for i, token in enumerate(tokens)]
        )
        stroke = self.objects("a.eps", "--where", "--only", "MoveTo")[1]
        self.assertEqual([stroke["page"], stroke["line"], stroke["byte"]], [1, 4, tokens[0]])
        self.assertEqual(stroke["procedure"], {"line": 3, "byte": DRAWN.index("{")})

    def test_places_behind_a_preview_count_from_the_start_of_the_file(self):
        document = DRAWN.encode()
        header = b"\xc5\xd0\xd3\xc6" + struct.pack("<6IH", 40, len(document), 0, 0, 0, 0, 0xFFFF)
        self.write("a.eps", header + b"\n" * 10 + document)
        stroke = self.objects("a.eps", "--where", "--only", "MoveTo")[1]
        self.assertEqual([stroke["line"], stroke["byte"]], [4, 40 + DRAWN.index("bar\r")])

    def test_only_and_pages_select_lines(self):
        self.write("a.eps", THREE_PAGES)
        moves = ["a.eps", "--units", "pt", "--only", "MoveTo,NewPage"]
        self.assertEqual(
            self.lines(*moves),
            ["MoveTo(0, 10)", "NewPage()", "MoveTo(0, 20)", "NewPage()", "MoveTo(0, 30)"],
        )
        self.assertEqual(self.lines(*moves, "--page", "2"), ["MoveTo(0, 20)"])
        self.assertEqual(
            self.lines(*moves, "--pages", "3,1"), ["MoveTo(0, 30)", "NewPage()", "MoveTo(0, 10)"]
        )
        pages = [call["page"] for call in self.objects(*moves, "--pages", "3,1")[1:]]
        self.assertEqual(pages, [3, 1, 1])
        self.expect(1, "trace", "a.eps", "--pages", "2,4", message="has 3 pages")

    def test_several_files_begin_with_their_names(self):
        self.write("a.eps", HALF)
        self.write("\x1b.eps", HALF)
        text = self.expect(
            1, "trace", "a.eps", "missing.eps", "\x1b.eps", message="missing.eps: no such"
        )
        plain = self.expect(0, "trace", "a.eps")
        self.assertEqual(text, b"# file a.eps\n" + plain + b"# file \\x1b.eps\n" + plain)
        self.assertEqual(self.objects("-", stdin=HALF.encode())[0], {"file": "-"})

    def test_rows_that_were_turned_are_told_with_the_samples(self):
        filters = "{currentfile /ASCII85Decode filter /RunLengthDecode filter}"
        row = base64.a85encode(b"\xff\x00\x80").decode() + "~>\n"
        for name, height in [("a.eps", 20), ("b.eps", -20)]:
            draw = f"40 {height} scale 2 1 8 matrix {filters} false 1 colorimage\n"
            self.write(name, HEADER + draw + row)
        image = ["--samples", "--only", "DrawImage"]
        self.assertTrue(self.lines("a.eps", *image)[0].endswith("samples: 0000})"))
        self.assertTrue(self.lines("b.eps", *image)[0].endswith("samples: 0000, rows: up})"))
        self.assertNotIn("rows", self.lines("b.eps")[-1])
        rows = [self.objects(name, *image)[1]["arguments"][3]["rows"] for name in ("a.eps", "b.eps")]
        self.assertEqual(rows, ["down", "up"])

    def test_summaries_tell_each_page_in_numbers(self):
        self.write("a.eps", DRAWN.replace("0 10 bar", "72 0 0 setrgbcolor 0 10 bar 0 setgray"))
        expected = (
            "Page 1: 1 stroke, 1 fill, 1 image, 6 points\n"
            "  Extent: -0.05 3.478 to 49.389 42.333 mm\n"
            "  Widths: 0.1 mm (1)\n  Colours: #000000 (1), #ff0000 (1)\n"
        )
        self.assertEqual(self.expect(0, "trace", "a.eps", "--summary").decode(), expected)
        self.write("b.eps", THREE_PAGES)
        summaries = self.objects("b.eps", "--summary", "--pages", "3,1")[1:]
        self.assertEqual([(page["page"], page["strokes"]) for page in summaries], [(3, 1), (1, 1)])
        self.assertEqual(summaries[0]["widths"], [{"widthMm": 0.1, "shapes": 1}])

    def test_numbers_that_are_not_finite_are_texts_in_json(self):
        self.write("a.eps", HEADER + "1e39 0 moveto 1 1 lineto stroke\n")
        self.assertEqual(self.objects("a.eps", "--only", "MoveTo")[1]["arguments"][0], "inf")
        (summary,) = self.objects("a.eps", "--summary")[1:]
        self.assertEqual(summary["points"], 2)

    def test_wrong_usage(self):
        for arguments, message in [
            (["--only", "moveto"], "'moveto' is not a call: NewPage,"),
            (["--summary", "--where"], "--summary"),
            (["--page", "1", "--pages", "1"], "--page"),
            (["--pages", "0"], "'0' is not a list of pages"),
        ]:
            self.assertEqual(self.expect(2, "trace", "a.eps", *arguments, message=message), b"")


class Describing(CommandLine):
    schema = json.loads((ROOT / "docs/info.schema.json").read_text())

    def described(self, status, *arguments, **options):
        objects = json.loads(self.expect(status, "info", "--json", *arguments, **options))
        jsonschema.validate(objects, self.schema)
        return objects

    def test_comments_come_with_their_lines(self):
        document = (
            "%!PS-Adobe-3.0 EPSF-3.0\r\n%%Title: (A (b) c)\r\n%%Creator:  maker 1.0 \r\n%%For: Ada\r\n"
            "%%CreationDate: today\r\n%%LanguageLevel: 2\r\n%%BoundingBox: (atend)\r\n"
            "%%HiResBoundingBox: 9.5 20.25 110 69.5\r\n%%DocumentNeededFonts: (atend)\r\n"
            "%%DocumentNeededResources: font Courier Times\r\n%%+ procset Basics 1.0 0\r\n"
            "%%BeginDocument: other\r\n%%BoundingBox: 1 2 3 4\r\n%%EndDocument\r\n"
            + SQUARE
            + "%%DocumentNeededFonts: Courier Helvetica\r\n%%+ Symbol\r\n%%BoundingBox: 10 20 110 70\r\n%%EOF\r\n"
            + "%%Title: late"
        )
        self.write("a.eps", document)
        (info,) = self.described(0, "a.eps")
        self.assertEqual(
            [info[key] for key in ("title", "creator", "for", "date", "languageLevel")],
            ["A (b) c", "maker 1.0", "Ada", "today", "2"],
        )
        self.assertEqual([info["dscVersion"], info["epsfVersion"]], ["3.0", "3.0"])
        self.assertEqual(info["fontsWanted"], ["Courier", "Times", "Helvetica", "Symbol"])
        self.assertEqual(info["resourcesWanted"], ["procset Basics"])
        box = {"leftPt": 10, "bottomPt": 20, "rightPt": 110, "topPt": 70}
        self.assertEqual(
            info["boxes"],
            {
                "document": {**box, "line": 18},
                "hiRes": {"leftPt": 9.5, "bottomPt": 20.25, "rightPt": 110, "topPt": 69.5, "line": 8},
                "drawn": box,
            },
        )
        self.assertEqual(info["pageSizeFrom"], {"comment": "%%BoundingBox", "line": 13})
        self.assertEqual([warning["name"] for warning in info["warnings"]], ["hiResBoxOutside"])

    def test_pages_say_where_their_sizes_come_from_and_what_they_draw(self):
        self.write("a.eps", THREE_PAGES)
        for options, drawn in [([], 19.858), (["--quick"], None)]:
            (info,) = self.described(0, "a.eps", *options)
            sources = [page["sizeFrom"] for page in info["pageDetails"]]
            self.assertEqual([source["line"] for source in sources], [3, 8, 3])
            self.assertEqual(info["pageDetails"][1]["box"]["rightPt"], 144)
            found = info["pageDetails"][1]["drawn"]
            self.assertEqual(found and found["bottomPt"], drawn)
            self.assertEqual(info["statistics"] is None, drawn is None)

    def test_previews_are_named(self):
        document = HALF.encode()
        for lengths, kind in [((0, 9), "tiff"), ((9, 0), "wmf"), ((0, 0), None)]:
            header = struct.pack("<6IH", 30, len(document), 0, lengths[0], 0, lengths[1], 0xFFFF)
            self.write("a.eps", b"\xc5\xd0\xd3\xc6" + header + document)
            self.assertEqual(self.described(0, "a.eps", "--quick")[0]["preview"], kind)
        self.write("b.eps", HALF.replace(BOX, BOX + "%%BeginPreview: 1 1 1 1\n% 00\n%%EndPreview\n"))
        self.assertEqual(self.described(0, "b.eps", "--quick")[0]["preview"], "bitmap")

    def test_warnings_have_stable_names(self):
        for document, expected in [
            (HALF, []),
            (HALF.replace(BOX, ""), ["noBoundingBox"]),
            (HALF.replace(BOX, "%%BoundingBox: 1 2 3\n" + BOX), ["badBox"]),
            (HALF.replace(BOX, BOX + "%%BoundingBox: 0 0 9 9\n"), ["severalBoxes"]),
            (HALF.replace("45", "95"), ["drawingOutsideBox"]),
            (HEADER + BOX, ["nothingDrawn"]),
            (THREE_PAGES.replace("Pages: 3", "Pages: 2"), ["pageCountDiffers"]),
            ("\x04\r\n " + HALF, []),
        ]:
            self.write("a.eps", document)
            (info,) = self.described(0, "a.eps")
            self.assertEqual([warning["name"] for warning in info["warnings"]], expected, document)

    def test_a_file_that_is_no_postscript_says_so(self):
        self.write("a.png", b"\x89PNG\r\n\x1a\n" + bytes(range(256)))
        self.write("empty.eps", "")
        self.write("good.eps", HALF)
        infos = self.described(1, "a.png", "empty.eps", "good.eps", "missing.eps", "--quick")
        self.assertEqual(
            [info.get("isPostScript") for info in infos], [False, False, True, None]
        )
        self.assertIn("notPostScript", [warning["name"] for warning in infos[0]["warnings"]])
        self.assertIn(b"Kind: no PostScript\n", self.expect(1, "info", "a.png"))

    def test_hostile_comments_give_bounded_escaped_answers(self):
        pages = "".join(f"%%Page: {i} {i}\n%%PageBoundingBox: 0 0 {i} {i}\n" for i in range(1, 12_001))
        fonts = "%%DocumentNeededFonts:" + "".join(f" f{i}" for i in range(2000)) + "\n"
        title = "%%Title: \x1b[2J" + "x" * 1_000_000 + "\n"
        self.write("a.eps", HEADER + title + fonts + "%%Pages: 12000\n" + pages)
        (info,) = self.described(0, "a.eps", message="only the first 1000 fonts")
        self.assertEqual([len(info["pageDetails"]), len(info["fontsWanted"])], [10_000, 1000])
        self.assertEqual([len(info["title"]), info["title"][:4]], [1000, "\x1b[2J"])
        self.write("b.eps", HEADER + "%%Pages: 1\n%%Page: " + "\xc3\xa9" * 500_000 + " 1\n")
        (label,) = self.described(0, "b.eps", "--quick")[0]["labels"]
        self.assertEqual(label, "\xc3\xa9" * 250)
        self.assertEqual(info["pageDetails"][9999]["sizeFrom"]["comment"], "%%PageBoundingBox")
        self.assertIn(b"Title: \\x1b[2Jxxx", self.expect(0, "info", "a.eps", "--quick"))

    def test_quick_runs_nothing(self):
        self.write("a.eps", ENDLESS)
        (info,) = self.described(0, "-", "--quick", stdin=ENDLESS.encode())
        self.assertEqual([info["isPostScript"], info["statistics"]], [True, None])
        self.assertNotIn("stopped", info)


class Finding(CommandLine):
    def shapes(self, *arguments, **options):
        return json.loads(self.expect(0, "find", *arguments, "--json", **options))["shapes"]

    def test_the_topmost_shape_comes_first_with_the_line_that_drew_it(self):
        self.write("a.eps", DRAWN.replace("fill", "fill 1 0 0 setrgbcolor 20 40 bar"))
        printed = self.expect(0, "find", "a.eps", "--at", "50,40pt").decode()
        byte = DRAWN.index("fill") + len("fill 1 0 0 setrgbcolor 20 40 ")
        self.assertEqual(
            printed,
            f"page 1, line 5, byte {byte} (procedure in line 3): "
            "stroke of 0.1 mm, #ff0000, 7.006 14.061 to 19.806 14.161 mm\n"
            f"page 1, line 5, byte {DRAWN.index('fill')}: "
            "fill, #000000, 3.528 7.056 to 21.167 24.694 mm\n",
        )
        (image,) = self.shapes("a.eps", "--at", "120,110", "--units", "pt")
        self.assertEqual([image["kind"], image["line"], image["columns"]], ["image", 6, 2])
        self.assertEqual(image["extent"]["leftMm"], 35.278)

    def test_units_reach_and_pages(self):
        self.write("a.eps", THREE_PAGES)
        for at, options, pages in [
            ("10,20pt", [], [2]),
            ("10,20", ["--units", "pt"], [2]),
            ("3.528,7.056", [], [2]),
            ("3.528,7.056mm", ["--units", "pt"], [2]),
            ("10,25pt", ["--within", "1.75"], [2, 3]),
            ("10,25pt", ["--within", "1.75", "--pages", "3,2"], [3, 2]),
        ]:
            found = self.shapes("a.eps", "--at", at, *options)
            self.assertEqual([shape["page"] for shape in found], pages, (at, options))
        nothing = "a.eps: warning: nothing was drawn there"
        self.assertEqual(self.expect(0, "find", "a.eps", "--at", "-5,1e3", message=nothing), b"")
        self.assertEqual(len(self.shapes("-", "--at", "5,5", stdin=HALF.encode())), 0)
        self.assertEqual(len(self.shapes("-", "--at", "5,8", stdin=HALF.encode())), 1)

    def test_a_document_that_piles_up_shapes_is_told_from_its_top(self):
        pile = "/a {0 0 moveto 9 9 lineto stroke} def\n" + "a\n" * 10_007
        self.write("a.eps", HEADER + pile)
        left = "a.eps: warning: of the shapes drawn first 7 are left out"
        printed = self.expect(0, "find", "a.eps", "--at", "1,1", message=left).splitlines()
        self.assertEqual(len(printed), 10_000)
        self.assertTrue(printed[0].startswith(b"page 1, line 10009,"))
        limit = ["--time-limit", "1"]
        self.write("endless.eps", ENDLESS)
        message = "endless.eps: stopped by the time limit"
        self.expect(4, "find", "endless.eps", "--at", "1,1", *limit, message=message)

    def test_wrong_usage(self):
        for arguments in [["--at", "5"], ["--at", "5,6in"], ["--at", "nan,1"], ["--at", "1,2,3"], []]:
            self.expect(2, "find", "a.eps", *arguments, message="--at")
        self.expect(1, "find", "missing.eps", "--at", "1,1", message="missing.eps: no such file")


class Comparing(CommandLine):
    def test_differences_come_with_the_lines_of_both_documents(self):
        self.write("a.eps", DRAWN)
        self.write("b.eps", DRAWN.replace("0 10 bar", "\n1 0 0 setrgbcolor 0 10 bar 0 setgray"))
        bar = DRAWN.index("bar\r")
        printed = self.expect(1, "diff", "a.eps", "b.eps").decode()
        place = "(procedure in line 3): stroke of 0.1 mm"
        extent = "-0.05 3.478 to 12.75 3.578 mm"
        self.assertEqual(
            printed,
            "! colour\n"
            f"  - page 1, line 4, byte {bar} {place}, #000000, {extent}\n"
            f"  + page 1, line 5, byte {bar + 19} {place}, #ff0000, {extent}\n"
            "0 added, 0 removed, 1 changed\n",
        )
        printed = self.expect(1, "diff", "a.eps", "-", "--json", stdin=HALF.encode())
        compared = json.loads(printed)
        self.assertEqual([compared["added"], compared["removed"]], [1, 3])
        self.assertEqual(compared["differences"][0]["after"]["line"], 3)
        self.assertIsNone(compared["differences"][0]["before"])

    def test_what_draws_the_same_is_the_same_however_it_is_written(self):
        self.write("a.eps", HALF)
        self.write("b.eps", HALF.replace("10 20 moveto", "/m {moveto} def 10.0001 20 m"))
        self.assertEqual(self.expect(0, "diff", "a.eps", "b.eps", "-o", "d.svg"), b"")
        self.write("c.eps", HALF.replace("110 45", "110 45.1"))
        self.expect(1, "diff", "a.eps", "c.eps")
        self.expect(0, "diff", "a.eps", "c.eps", "--tolerance", "0.05")
        self.assertEqual(self.files(), ["a.eps", "b.eps", "c.eps"])

    def test_the_picture_shows_the_pages_that_differ_in_two_colours(self):
        self.write("a.eps", THREE_PAGES)
        self.write("b.eps", THREE_PAGES.replace("0 20 bar", "0 25 bar"))
        self.write("c.eps", THREE_PAGES.replace("0 20 bar", "0 25 bar").replace("0 30", "0 35"))
        self.expect(1, "diff", "a.eps", "b.eps", "-o", "one.svg")
        self.expect(1, "diff", "a.eps", "c.eps", "-o", "two.svg")
        self.expect(1, "diff", "a.eps", "c.eps", "-o", "all.pdf")
        self.expect(1, "diff", "a.eps", "c.eps", "-o", "p%02d.png", "--pages", "3")
        made = ["all.pdf", "one.svg", "p03.png", "two-2.svg", "two-3.svg"]
        self.assertEqual(self.files(), ["a.eps", made[0], "b.eps", "c.eps", *made[1:]])
        self.assertEqual(self.read("one.svg"), self.read("two-2.svg"))
        root = ElementTree.fromstring(self.read("one.svg"))
        self.assertEqual([root.get("width"), root.get("height")], ["144pt", "72pt"])
        strokes = [path.get("stroke") for path in root.iter("{http://www.w3.org/2000/svg}path")]
        self.assertEqual(len(set(strokes)), 2)

    def test_trouble_ends_with_2(self):
        self.write("a.eps", HALF)
        self.write("endless.eps", ENDLESS)
        self.write("over.eps", HALF + "1 " * 2_000_000)
        limit = ["--time-limit", "1"]
        for arguments, message in [
            (["a.eps"], "AFTER"),
            (["a.eps", "missing.eps"], "missing.eps: no such file"),
            (["-", "-"], "only once"),
            (["a.eps", "endless.eps", *limit], "endless.eps: stopped by the time limit"),
            (["over.eps", "over.eps"], "over.eps: a limit of the interpreter was met"),
            (["a.eps", "endless.eps", "-o", "d.jpeg"], "says no format"),
            (["a.eps", "a.eps", "--pages", "2"], "has 1 page"),
        ]:
            self.assertEqual(self.expect(2, "diff", *arguments, message=message), b"")
        self.write("b.eps", HALF.replace("45", "50"))
        self.expect(2, "diff", "a.eps", "b.eps", "-o", "no/d.svg", message="cannot write no/d.svg")
        os.symlink("b.eps", self.folder / "b.svg")
        self.expect(2, "diff", "a.eps", "b.eps", "-o", "b.svg", message="replace the document")


if __name__ == "__main__":
    unittest.main()
