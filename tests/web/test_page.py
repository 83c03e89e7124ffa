#!/usr/bin/env python3
"""Opens the page for browsers from the disk, in Chromium without a window, and uses it as a person
does: drops files, clicks, presses keys, and reads what stands there.

  ORXPRINT_PAGE=FILE ORXPRINT=PROGRAM tests/web/test_page.py

PROGRAM is the native orxprint, whose drawings the page's must be, byte for byte. With
ORXPRINT_SHOTS=FOLDER it leaves pictures of the page there.
"""
import base64
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import tempfile
import unittest
import zlib

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.select import Select
from selenium.webdriver.support.wait import WebDriverWait

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PAGE = pathlib.Path(os.environ["ORXPRINT_PAGE"]).resolve()
SECONDS = 30  # that anything may take on a busy machine

CROSSING = b"""%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: 0 0 200 100
/s {stroke} def
2 setlinewidth
20 50 moveto 180 50 lineto
s
0.5 setgray
20 10 moveto 60 10 lineto 60 30 lineto fill
"""
TWO_PAGES = b"""%!PS-Adobe-3.0
%%BoundingBox: 0 0 72 144
%%Pages: 2
%%Page: <b>one</b> 1
0 0 moveto 72 144 lineto stroke
showpage
%%Page: two 2
0 144 moveto 72 0 lineto stroke
showpage
%%EOF
"""
LOSSY = b"""%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: 0 0 100 100
/box {exch dup neg pop exch 10 0 rlineto stroke} def
10 10 moveto (<b>Hello</b>) show
[4 2] 0 setdash
20 20 moveto 80 20 lineto stroke
20 40 moveto (again) show
"""
MARKUP = b"""%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: 0 0 10 10
%%Title: <img src=x onerror=alert(1)><script>alert(2)</script>
(</ol><h1>) pop 0 0 moveto 9 9 lineto stroke
"""


def doubling(first, times):
    """A procedure that runs 2 to the power of `times` times."""
    return (b"%!\n%%BoundingBox: 0 0 9 9\n/a0 {" + first + b"} def\n"
            + b"".join(b"/a%d {a%d a%d} def\n" % (i, i - 1, i - 1) for i in range(1, times + 1))
            + b"a%d\n" % times)


ENDLESS = doubling(b"newpath", 59)  # no patience is long enough

DROP = """
const transfer = new DataTransfer();
for (const [name, content] of arguments[0]) {
  const bytes = Uint8Array.from(atob(content), (letter) => letter.charCodeAt(0));
  transfer.items.add(new File([bytes], name));
}
const event = new DragEvent('drop', {dataTransfer: transfer, bubbles: true, cancelable: true});
document.getElementById('stage').dispatchEvent(event);
"""
# How long it took from the choice of a file until its page was painted.
SHOWN = """
const done = arguments[arguments.length - 1];
const painted = () => requestAnimationFrame(
    () => requestAnimationFrame(() => done(performance.now() - window.begin)));
document.getElementById('picture').decode().then(painted);
"""
# Keeps every drawing that the page makes an address for.
KEEP_DRAWINGS = """
window.drawings = [];
const make = URL.createObjectURL;
URL.createObjectURL = (blob) => {
  if (blob.type === 'image/svg+xml') window.drawings.push(blob);
  return make(blob);
};
"""


def many_lines(size):
    """A drawing of so many bytes: polylines of 500 short lines, all over the page."""
    chance = random.Random(1)
    text = ["%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 600 800\n"]
    while len(text) * 500 * 23 < size:
        x, y = chance.uniform(50, 550), chance.uniform(50, 750)
        line = [f"{x:.3f} {y:.3f} moveto"]
        for _ in range(500):
            x += chance.uniform(-5, 5)
            y += chance.uniform(-5, 5)
            line.append(f"{x:7.3f} {y:7.3f} lineto")
        text.append("\n".join(line) + "\nstroke\n")
    return "".join(text).encode()


def contrast(one, other):
    return (max(one, other) + 0.05) / (min(one, other) + 0.05)


def start_browser():
    options = webdriver.ChromeOptions()
    for option in ("--headless=new", "--no-sandbox", "--disable-gpu", "--window-size=1300,850"):
        options.add_argument(option)
    options.binary_location = "/usr/bin/chromium"
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = start_browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def setUp(self):
        self.browser.get(PAGE.as_uri())
        self.browser.execute_script(KEEP_DRAWINGS)

    def tearDown(self):
        complaints = [entry["message"] for entry in self.browser.get_log("browser")]
        self.assertEqual(complaints, [])

    def element(self, name):
        return self.browser.find_element(By.ID, name)

    def text(self, name):
        return self.element(name).text

    def wait(self, condition, message=""):
        WebDriverWait(self.browser, SECONDS, 0.05).until(lambda _: condition(), message)

    def drop(self, *files):
        content = [[name, base64.b64encode(data).decode()] for name, data in files]
        self.browser.execute_script(DROP, content)

    def open(self, *files):
        self.drop(*files)
        self.wait(lambda: not self.element("progress").is_displayed(), "it is not drawn")

    def place_of(self, x, y, width, height):
        """The pixels of a point of the page from the middle of the stage."""
        return self.browser.execute_script(
            "const page = document.getElementById('sheet').getBoundingClientRect();"
            "const stage = document.getElementById('stage').getBoundingClientRect();"
            "const [x, y, width, height] = arguments;"
            "return [page.x + x / width * page.width - stage.x - stage.width / 2,"
            "  page.y + (1 - y / height) * page.height - stage.y - stage.height / 2];",
            x, y, width, height)

    def click(self, x, y, page=(200, 100)):
        dx, dy = self.place_of(x, y, *page)
        ActionChains(self.browser).move_to_element_with_offset(
            self.element("stage"), round(dx), round(dy)).click().perform()

    def marked(self, side="before"):
        box = "#source" if side == "before" else "#source-after"
        return self.browser.execute_script(
            "return [...document.querySelectorAll(arguments[0])].map("
            "  (item) => Number(item.dataset.number));", box + " .marked")

    def outlines(self):
        return self.browser.find_elements(By.CSS_SELECTOR, "#sheet .found")

    def shoot(self, name):
        folder = os.environ.get("ORXPRINT_SHOTS")
        if folder:
            self.browser.save_screenshot(os.path.join(folder, name + ".png"))

    def test_clicks_lead_to_the_line_and_back(self):
        self.open(("crossing.eps", CROSSING))
        cases = [((100, 50), "A stroke, 0.71 mm (2.00 pt) wide", {6, 3}),
                 ((50, 14), "A fill: drawn by line 8", {8}),
                 ((100, 90), "Nothing is drawn there", set())]
        for place, words, lines in cases:
            with self.subTest(words):
                self.click(*place)
                self.wait(lambda words=words: words in self.text("shape"), words)
                self.assertEqual(set(self.marked()), lines)
                self.assertEqual(len(self.outlines()), 1 if lines else 0)
        line = self.browser.find_element(By.CSS_SELECTOR, "#source .lines li[data-number='8']")
        line.click()
        self.wait(lambda: "A fill" in self.text("shape"))
        self.assertEqual(self.outlines()[0].get_attribute("d"), "M20 10L60 10L60 30Z")
        self.shoot("click")
        self.browser.find_element(By.CSS_SELECTOR, "#source .lines li[data-number='4']").click()
        self.wait(lambda: "Line 4 itself draws nothing" in self.text("shape"))
        self.assertIn("next", self.outlines()[0].get_attribute("class"))

    def test_what_is_lost_is_told_as_check_tells_it(self):
        samples = [(file.name, file.read_bytes())
                   for file in sorted((ROOT / "samples" / "losses").glob("*.eps"))]
        kinds = set()
        for name, content in [("lossy.eps", LOSSY), *samples]:
            with self.subTest(name):
                expected = self.visible_findings(name, content)
                self.open((name, content))
                self.require_findings(expected)
                kinds |= {found["kind"] for found in expected}
        self.assertGreater(len(kinds), 20)

    def visible_findings(self, name, content):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / name
            file.write_bytes(content)
            checked = subprocess.run([os.environ["ORXPRINT"], "check", "--json", str(file)],
                                     capture_output=True, check=False)
        return [found for found in json.loads(checked.stdout)[0]["findings"]
                if found["severity"] != "no visible effect"]

    def require_findings(self, expected):
        rows = self.browser.find_elements(By.CSS_SELECTOR, "#findings button")
        self.assertEqual(len(rows), len(expected))
        for row, found in zip(rows, expected):
            cause = found["name"] + ": " if found["name"] else ""
            start = f"{found['severity']} – {cause}{found['meaning']}. {found['count']} ×"
            lines = list(dict.fromkeys(place["line"] for place in found["places"]))
            if lines:
                start += ("; line " if len(lines) == 1 else "; lines ") + ", ".join(map(str, lines))
            self.assertEqual(row.text[:len(start)], start)
            row.click()
            self.assertLessEqual(set(self.marked()), set(lines))  # those in sight
            self.assertEqual(self.marked() != [], lines != [])
        self.shoot("findings")

    def test_two_files_are_compared_as_diff_compares_them(self):
        later = (CROSSING.replace(b"180 50 lineto", b"180 50.5 lineto")
                 .replace(b"0.5 setgray", b"0.8 setgray\n5 5 moveto 5 95 lineto stroke"))
        with tempfile.TemporaryDirectory() as folder:
            names = [pathlib.Path(folder) / name for name in ("old.eps", "new.eps")]
            for name, content in zip(names, (CROSSING, later)):
                name.write_bytes(content)
            picture = pathlib.Path(folder) / "difference.svg"
            found = json.loads(subprocess.run(
                [os.environ["ORXPRINT"], "diff", "--json", *map(str, names), "-o", str(picture)],
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

    def test_lengths_are_told_and_measured(self):
        self.open(("crossing.eps", CROSSING))
        self.assertEqual(self.text("size"), "Page 70.56 × 35.28 mm (200 × 100 pt)")
        self.element("measure").click()
        self.click(20, 50)
        self.assertIn("From", self.text("distance"))
        self.click(180, 50)
        distance = float(self.text("distance").split()[1])
        self.assertAlmostEqual(distance, 160 / 72 * 25.4, delta=0.4)

    def test_everything_can_be_reached_by_keys(self):
        self.open(("pages.eps", TWO_PAGES))
        stage = self.element("stage")
        self.assertEqual(self.text("page-number"), "1 / 2")
        stage.send_keys(Keys.PAGE_DOWN)
        self.assertEqual(self.text("page-number"), "2 / 2")
        before = self.text("zoom")
        stage.send_keys("++")
        self.assertNotEqual(self.text("zoom"), before)
        stage.send_keys("0")
        self.assertEqual(self.text("zoom"), before)
        stage.send_keys(Keys.ENTER)  # the middle of the page, where the diagonal runs
        self.wait(lambda: "A stroke" in self.text("shape"))
        self.assertEqual(self.marked(), [8])
        source = self.element("source")
        source.send_keys(Keys.ARROW_UP * 3, Keys.ENTER)
        self.wait(lambda: "drawn by line 5" in self.text("shape"))
        self.assertEqual(self.text("page-number"), "1 / 2")
        stage.send_keys("m" + Keys.ENTER + Keys.ARROW_RIGHT + Keys.ENTER)
        self.assertIn("Distance", self.text("distance"))

    def test_what_a_file_says_never_becomes_markup(self):
        name = "<img src=x onerror=alert(1)>.eps"
        self.open((name, MARKUP))
        self.assertEqual(Select(self.element("documents")).first_selected_option.text, name)
        self.assertIn("<script>alert(2)</script>", self.text("source"))
        for tag in ("h1", "#source .lines img", "#source .lines script", "header img"):
            self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, tag), [], tag)

    def test_a_hostile_file_ends_with_a_message_and_the_next_one_works(self):
        self.drop(("endless.eps", ENDLESS))
        self.wait(lambda: self.element("stop").is_displayed())
        self.element("stop").click()
        self.assertIn("Stopped", self.text("messages"))
        damaged = b"\xc5\xd0\xd3\xc6" + b"\xff" * 30
        self.open(("damaged.eps", damaged))
        self.assertIn("Cannot be drawn: its preview header", self.text("messages"))
        self.open(("noise.eps", bytes(range(256)) * 40))
        self.assertIn("does not begin like a PostScript", self.text("messages"))
        self.open(("crossing.eps", CROSSING))
        self.assertEqual(self.text("messages"), "")
        self.click(100, 50)
        self.wait(lambda: "A stroke" in self.text("shape"))

    def test_ten_megabytes_of_lines_appear_within_three_seconds(self):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "lines.eps"
            file.write_bytes(many_lines(10_000_000))
            self.browser.execute_script(
                "document.addEventListener('change',"
                "  () => { window.begin = performance.now(); }, true);")
            self.element("files").send_keys(str(file))
            self.wait(lambda: self.text("page-number") == "1 / 1")
            milliseconds = self.browser.execute_async_script(SHOWN)
        self.assertLess(milliseconds, 3000)

    def test_texts_stand_out_from_what_is_behind_them(self):
        pairs = [("text", "bar"), ("text", "ground"), ("text", "desk"), ("text", "mark"),
                 ("faint", "bar"), ("faint", "ground"), ("faint", "mark"), ("alarm", "bar"),
                 ("before", "ground"), ("after", "ground"), ("bar", "accent")]
        for theme in ("light", "dark"):
            while theme not in self.text("theme"):
                self.element("theme").click()
            for pair in pairs:
                with self.subTest(theme, pair=pair):
                    self.assertGreaterEqual(contrast(*map(self.luminance, pair)), 4.5)

    def luminance(self, name):
        """Of a colour of the page, as WCAG 2 defines it."""
        colour = self.browser.execute_script(
            "return getComputedStyle(document.documentElement).getPropertyValue(arguments[0]);",
            "--" + name).strip()
        parts = [int(colour[i:i + 2], 16) / 255 for i in (1, 3, 5)]
        red, green, blue = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
                            for part in parts]
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue

    def test_more_shapes_than_can_be_kept_are_drawn_all_the_same(self):
        many = doubling(b"100 100 moveto 109 109 lineto stroke", 23)
        self.open(("many.eps", many + b"0 0 moveto 9 9 lineto stroke\n"))
        self.assertIn("only its first part", self.text("messages"))
        self.assertIn("8388609 strokes", self.text("findings"))

    def test_nothing_can_leave_the_page(self):
        blocked = self.browser.execute_async_script(
            "const done = arguments[arguments.length - 1];"
            "document.addEventListener('securitypolicyviolation',"
            "  (event) => done(event.effectiveDirective), {once: true});"
            "fetch('https://example.invalid/').catch(() => {});")
        self.assertEqual(blocked, "connect-src")
        self.browser.get_log("browser")  # which tells of it, too

    def test_view_carries_documents_under_any_name(self):
        with tempfile.TemporaryDirectory() as folder:
            name = 'a"><b>&amp;.eps'
            file = pathlib.Path(folder) / name
            file.write_bytes(CROSSING)
            page = pathlib.Path(folder) / "view.html"
            view = [os.environ["ORXPRINT"], "view", str(file)]
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
        program = pathlib.Path(os.environ["ORXPRINT"]).resolve()
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
        subprocess.run([os.environ["ORXPRINT"], "render", "-q", str(document), "-o",
                        os.path.join(folder, "expected-%d.svg")], check=True)
        expected = [file.read_bytes()
                    for file in sorted(pathlib.Path(folder).glob("expected-*.svg"))]
        carried = re.findall(r'class="page" data-area="[-0-9. ]+">([^<]*)<', page)
        drawings = [zlib.decompress(base64.b64decode(letters)) for letters in carried]
        self.assertEqual(drawings[:len(expected)], expected)

    def test_drawings_are_those_of_the_program(self):
        samples = sorted((ROOT / "samples").glob("*.eps"))
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
        subprocess.run([os.environ["ORXPRINT"], "render", "-q", str(sample), "-o", str(output)],
                       check=True)
        expected = sorted(folder.glob(sample.stem + "-*.svg"))
        self.assertEqual(len(drawings), len(expected))
        for drawing, file in zip(drawings, expected):
            # Images are not compressed in the page.
            if b"<image" not in drawing.encode():
                self.assertEqual(drawing, file.read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
