#!/usr/bin/env python3
"""What the page for browsers shows is what the native program draws, compares and puts into a page.

  ORXPRINT_PAGE=FILE ORXPRINT=PROGRAM tests/web/test_program.py
"""
import base64
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import zlib

from page import CROSSING, ENDLESS, LOSSY, PROGRAM, TWO_PAGES, PageTest
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.select import Select

SAMPLES = pathlib.Path(__file__).resolve().parent.parent.parent / "samples"


class ProgramTest(PageTest):
    def test_drawings_are_those_of_the_program(self):
        samples = sorted(SAMPLES.glob("*.eps"))
        with tempfile.TemporaryDirectory() as folder:
            for sample in samples:
                with self.subTest(sample.name):
                    self.compare(sample, pathlib.Path(folder))

    def compare(self, sample, folder):
        content = sample.read_bytes()
        self.browser.execute_script("window.drawings = [];")
        self.open((sample.name, content))
        self.shoot(sample.stem)
        drawings = self.browser.execute_async_script(
            "const done = arguments[arguments.length - 1];"
            "Promise.all(window.drawings.map((blob) => blob.text())).then(done);")
        output = folder / (sample.stem + "-%d.svg")
        subprocess.run([PROGRAM, "render", "-q", str(sample), "-o", str(output)],
                       check=True)
        expected = sorted(folder.glob(sample.stem + "-*.svg"))
        self.assertEqual(len(drawings), len(expected))
        for drawing, file in zip(drawings, expected):
            # Images are not compressed in the page.
            if b"<image" not in drawing.encode():
                self.assertEqual(drawing, file.read_text(encoding="utf-8"))

    def test_two_files_are_compared_as_diff_compares_them(self):
        later = (CROSSING.replace(b"180 50 lineto", b"180 50.5 lineto")
                 .replace(b"0.5 setgray", b"0.8 setgray\n5 5 moveto 5 95 lineto stroke"))
        with tempfile.TemporaryDirectory() as folder:
            names = [pathlib.Path(folder) / name for name in ("old.eps", "new.eps")]
            for name, content in zip(names, (CROSSING, later)):
                name.write_bytes(content)
            picture = pathlib.Path(folder) / "difference.svg"
            found = json.loads(subprocess.run(
                [PROGRAM, "diff", "--json", *map(str, names), "-o", str(picture)],
                stdout=subprocess.PIPE, check=False).stdout)
            expected = picture.read_text(encoding="utf-8")
        self.open(("old.eps", CROSSING), ("new.eps", later))
        self.wait(lambda: self.element("compare").is_enabled())
        self.browser.execute_script("window.drawings = [];")
        self.element("compare").send_keys(Keys.ENTER)
        chosen = [Select(self.element(name)).first_selected_option.text
                  for name in ("before", "after")]
        self.assertEqual(chosen, ["old.eps", "new.eps"])
        self.browser.switch_to.active_element.send_keys(Keys.TAB * 2 + Keys.ENTER)
        self.wait(lambda: "changed" in self.text("findings-summary"))
        numbers = [f"{found[what]} {what}" for what in ("added", "removed", "changed")]
        self.assertEqual(self.text("findings-summary"), ", ".join(numbers))
        rows = self.browser.find_elements(By.CSS_SELECTOR, "#findings button")
        self.assertEqual(len(rows), len(found["differences"]))
        for row, difference in zip(rows, found["differences"]):
            self.assertIn(difference["kind"], row.text)
            self.assertIn(", ".join(difference.get("what", [])), row.text)
            row.send_keys(Keys.ENTER)
            sides = [side for side in ("before", "after") if difference[side]]
            self.wait(lambda count=len(sides): len(self.outlines()) == count)
            for side in ("before", "after"):
                shape = difference[side]
                lines = {shape["line"]} if shape else set()
                if shape and "procedure" in shape:
                    lines.add(shape["procedure"]["line"])
                self.assertEqual(set(self.marked(side)), lines)
        drawn = self.browser.execute_async_script(
            "window.drawings[0].text().then(arguments[arguments.length - 1]);")
        self.assertEqual(drawn, expected)
        self.shoot("comparison")
        self.click(5, 50)
        self.wait(lambda: "new.eps: A stroke" in self.text("shape"))
        self.assertEqual((self.marked("before"), self.marked("after")), ([], [8]))
        self.element("source-after").send_keys(Keys.ARROW_DOWN, Keys.ENTER)
        self.wait(lambda: "new.eps: A fill: drawn by line 9" in self.text("shape"))

    def test_files_that_draw_the_same_do_not_differ(self):
        self.open(("a.eps", CROSSING), ("b.eps", b"%!\n" + CROSSING))
        self.wait(lambda: self.element("compare").is_enabled())
        self.element("compare").click()
        self.browser.find_element(By.CSS_SELECTOR, "#comparing .start").click()
        self.wait(lambda: self.text("findings-summary") == "Both draw the same")

    def test_view_carries_documents_under_any_name(self):
        with tempfile.TemporaryDirectory() as folder:
            name = 'a"><b>&amp;.eps'
            file = pathlib.Path(folder) / name
            file.write_bytes(CROSSING)
            page = pathlib.Path(folder) / "view.html"
            view = [PROGRAM, "view", str(file)]
            ended = subprocess.run([*view, "missing.eps", "-o", str(page)],
                                   stderr=subprocess.PIPE, check=False)
            self.assertEqual(ended.returncode, 1)
            self.assertIn(b"missing.eps: no such file", ended.stderr)
            self.browser.get(page.as_uri())
            self.wait(lambda: self.text("page-number") == "1 / 1")
            self.assertEqual(self.text("documents"), name)
            replaced = subprocess.run([*view, "-o", str(file)], stderr=subprocess.PIPE, check=False)
            self.assertEqual((replaced.returncode, file.read_bytes()), (1, CROSSING))
            printed = subprocess.run([*view, "--no-open"], stdout=subprocess.PIPE, check=True,
                                     env={**os.environ, "TMPDIR": folder}).stdout
            self.assertEqual(pathlib.Path(printed.decode().strip()).read_bytes().count(
                b'class="document"'), 1)

    def test_without_an_interpreter_the_page_carries_what_the_program_draws_and_finds(self):
        program = pathlib.Path(PROGRAM).resolve()
        with tempfile.TemporaryDirectory() as folder:
            installed = pathlib.Path(folder) / "bin" / program.name
            for part in ("lib", "share/orxprint"):
                shutil.copytree(program.parent.parent / part, pathlib.Path(folder) / part,
                                ignore=shutil.ignore_patterns("*.a", "*_answers"))
            installed.parent.mkdir()
            shutil.copy(program, installed)
            files = [pathlib.Path(folder) / name
                     for name in ("pages.eps", "<b>lossy.eps", "endless.eps")]
            for file, content in zip(files, (TWO_PAGES, LOSSY, ENDLESS)):
                file.write_bytes(content)
            page = pathlib.Path(folder) / "drawn.html"
            view = subprocess.run([str(installed), "view", *map(str, files), "-o", str(page),
                                   "--time-limit", "1"], stderr=subprocess.PIPE, check=False)
            self.assertEqual(view.returncode, 4)
            self.assertIn(b"opens no other files", view.stderr)
            self.require_drawings(page.read_text(encoding="utf-8"), files[0], folder)
            self.browser.get(page.as_uri())
            self.wait(lambda: self.text("page-number") == "1 / 2")
            self.assertIn("opens no other files", self.text("carries"))
            self.element("stage").send_keys(Keys.PAGE_DOWN, Keys.ENTER)
            self.assertIn("no interpreter", self.text("shape"))
            self.drop(("crossing.eps", CROSSING))
            self.assertIn("opens no other files", self.text("shape"))
            documents = Select(self.element("documents"))
            self.assertEqual([option.text for option in documents.options],
                             [file.name for file in files])
            documents.select_by_index(1)
            self.wait(lambda: self.text("page-number") == "1 / 1")
            self.require_findings(self.visible_findings("lossy.eps", LOSSY))
            self.shoot("drawn")
            documents.select_by_index(2)
            self.wait(lambda: "stopped by the time limit" in self.text("messages"))

    def require_drawings(self, page, document, folder):
        subprocess.run([PROGRAM, "render", "-q", str(document), "-o",
                        os.path.join(folder, "expected-%d.svg")], check=True)
        expected = [file.read_bytes()
                    for file in sorted(pathlib.Path(folder).glob("expected-*.svg"))]
        carried = re.findall(r'class="page" data-area="[-0-9. ]+">([^<]*)<', page)
        drawings = [zlib.decompress(base64.b64decode(letters)) for letters in carried]
        self.assertEqual(drawings[:len(expected)], expected)


if __name__ == "__main__":
    unittest.main()
