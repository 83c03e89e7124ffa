"""Drives orxprint check, and what render says of content that is lost.

The program under test is named by the environment variable ORXPRINT.
"""

import json
import pathlib
import re
import shutil
import struct
import subprocess
import unittest

from test_command_line import CommandLine

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"

HEAD = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 72\n"
PLAIN = "0 0 moveto 72 0 lineto 72 72 lineto closepath fill\n"
TEXT = "%%Creator: <b>&\n" + PLAIN + "/t {(word) show} def\n t (x) show\n"


class Checking(CommandLine):
    def check_json(self, status, *arguments):
        printed = self.expect(status, "check", "--json", *arguments)
        reports = json.loads(printed.decode("utf-8"))
        try:
            import jsonschema
        except ImportError:
            self.skipTest("python3-jsonschema is not there")
        jsonschema.validate(reports, json.loads((DOCS / "check.schema.json").read_text()))
        return reports

    def test_one_line_for_a_faithful_file_and_a_list_for_any_other(self):
        self.write("good.eps", HEAD + PLAIN)
        self.write("text.eps", HEAD + TEXT)
        self.assertEqual(self.expect(0, "check", "good.eps"), b"good.eps: nothing is lost\n")
        line = HEAD.count("\n") + 4
        self.assertEqual(
            self.expect(3, "check", "good.eps", "text.eps").decode(),
            "good.eps: nothing is lost\n"
            "text.eps: 1 kind of loss\n"
            f"  text        show               2 x  line {line} (defined in {line - 1})"
            "     text is not drawn\n"
            "drawing: 0 strokes, 1 fill, 0 images, 0..25.4 x 0..25.4 mm\n",
        )

    def test_json_keeps_to_its_schema(self):
        self.write("text.eps", HEAD + TEXT)
        self.write("limit.eps", HEAD + "/f {f} def f\n" + PLAIN)
        preview = HEAD + TEXT
        self.write(
            "preview.eps",
            b"\xc5\xd0\xd3\xc6" + struct.pack("<IIIIIIH", 30, len(preview), 0, 0, 0, 0, 0xFFFF)
            + preview.encode(),
        )
        text, preview, limit, missing = self.check_json(
            1, "text.eps", "preview.eps", "limit.eps", "missing.eps"
        )
        (found,) = text["findings"]
        self.assertEqual(
            [text["producer"], text["severity"], found["kind"], found["name"], found["count"]],
            ["<b>&", "content missing", "text-lost", "show", 2],
        )
        place, other = found["places"]
        self.assertEqual(place["byte"], (HEAD + TEXT).index(" t (x)") + 1)
        self.assertEqual([place["column"], other["column"]], [2, 8])
        self.assertEqual(place["definition"]["byte"], (HEAD + TEXT).index("{(word)"))
        self.assertEqual(preview["findings"][0]["places"][0]["byte"], place["byte"] + 30)
        self.assertEqual(preview["findings"][0]["places"][0]["line"], place["line"])
        self.assertEqual([limit["findings"][0]["kind"], missing["error"]], ["limit-met", "no such file"])
        self.expect(4, "check", "limit.eps", message="a limit of the interpreter was met")

    def test_the_file_itself_is_checked(self):
        box = "%!PS\n%%BoundingBox: 0 0 72 72\n"
        for content, kinds in [
            (b"GIF89a", ["not-postscript", "nothing-drawn", "no-box"]),
            (box, ["nothing-drawn"]),
            ("%!PS\n" + PLAIN, ["no-box"]),
            ("%!PS\n%%BoundingBox: a b\n" + PLAIN, ["odd-box"]),
            (box + "2 2 scale " + PLAIN, ["outside-box"]),
            (box + "%%Pages: 3\n%%Page: 1 1\n" + PLAIN, ["page-count", "label-list"]),
            (box + "%%Pages: 1" + " " * 260 + "\n%%Page: 1 1\n" + PLAIN, ["long-line"]),
        ]:
            with self.subTest(content=content[:60]):
                self.write("a.eps", content)
                printed = self.run_program("check", "--json", "a.eps").stdout
                (report,) = json.loads(printed)
                found = [finding["kind"] for finding in report["findings"]]
                self.assertEqual([kind for kind in found if kind in kinds], kinds, found)
        self.write("a.eps", b"\xc5\xd0\xd3\xc6" + struct.pack("<IIIIIIH", 30, 200, 0, 0, 0, 0, 0xFFFF)
                   + b" " * 20 + (HEAD + PLAIN + " " * 200).encode())
        (report,) = json.loads(self.run_program("check", "--json", "a.eps").stdout)
        self.assertIn("odd-header", [finding["kind"] for finding in report["findings"]])

    def test_the_page_opens_in_a_browser_and_escapes_documents(self):
        self.write("good.eps", HEAD + PLAIN)
        self.write("text.eps", HEAD + "%%Creator: <script>document.title='x'</script>\n" + TEXT)
        self.write("no.eps", "")
        names = ["good.eps", "text.eps", "no.eps", "missing.eps"]
        self.assertEqual(self.expect(1, "check", *names, "--html", "a.html"), b"")
        page = self.read("a.html").decode()
        self.assertEqual(page.count("<script"), 1)
        self.assertEqual(page.count("data:image/png;base64,"), 2)
        self.assertNotIn("http", page)
        browser = shutil.which("chromium")
        if not browser:
            self.skipTest("chromium is not there")
        shown = subprocess.run(
            [browser, "--headless", "--no-sandbox", "--disable-gpu", "--dump-dom",
             f"--user-data-dir={self.folder}/profile", (self.folder / "a.html").as_uri()],
            capture_output=True, timeout=120,
        ).stdout.decode()
        self.assertIn("<title>What will be lost</title>", shown)
        self.assertEqual(shown.count("<tr data-severity"), 4)
        self.assertIn('<button>Severity</button>', shown)

    def test_single_pages_can_be_checked(self):
        two = HEAD + "%%Pages: 2\n%%Page: 1 1\n" + PLAIN + "%%Page: 2 2\n(x) show " + PLAIN
        self.write("a.eps", two)
        self.expect(0, "check", "a.eps", "--pages", "1")
        self.expect(3, "check", "a.eps", "--pages", "2")
        self.expect(1, "check", "a.eps", "--pages", "3", message="3")

    def test_render_warns_once_and_is_strict_when_asked(self):
        self.write("text.eps", HEAD + TEXT)
        warning = "text.eps: warning: 1 kind of content lost or different (orxprint check text.eps)"
        for status, options, told in [(0, [], 1), (3, ["--strict"], 1), (0, ["-q"], 0), (0, ["-v"], 2)]:
            with self.subTest(options=options):
                done = self.run_program("render", "text.eps", *options)
                lines = done.stderr.decode().splitlines()
                self.assertEqual([done.returncode, len(lines)], [status, told], lines)
                self.assertTrue(told == 0 or warning in lines[0], lines)

    def test_every_kind_is_in_the_documentation(self):
        listed = set(re.findall(r"^\| `([a-z-]+)` \|", (DOCS / "check.md").read_text(), re.MULTILINE))
        source = (DOCS.parent / "drawing/LossKinds.cpp").read_text()
        self.assertEqual(listed, set(re.findall(r'LossKind\{Loss::\w+, "([a-z-]+)"', source)))


if __name__ == "__main__":
    unittest.main()
