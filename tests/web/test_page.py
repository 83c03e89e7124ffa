#!/usr/bin/env python3
"""Uses the page for browsers as a person does: drops files, clicks, presses keys, and reads what stands
there.

  ORXPRINT_PAGE=FILE ORXPRINT=PROGRAM tests/web/test_page.py
"""
import pathlib
import unittest

from page import CROSSING, ENDLESS, LOSSY, TWO_PAGES, PageTest, doubling
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.select import Select

SAMPLES = pathlib.Path(__file__).resolve().parent.parent.parent / "samples"

MARKUP = b"""%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: 0 0 10 10
%%Title: <img src=x onerror=alert(1)><script>alert(2)</script>
(</ol><h1>) pop 0 0 moveto 9 9 lineto stroke
"""


def contrast(one, other):
    return (max(one, other) + 0.05) / (min(one, other) + 0.05)


class UseTest(PageTest):
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
                   for file in sorted((SAMPLES / "losses").glob("*.eps"))]
        kinds = set()
        for name, content in [("lossy.eps", LOSSY), *samples]:
            with self.subTest(name):
                expected = self.visible_findings(name, content)
                self.open((name, content))
                self.require_findings(expected)
                kinds |= {found["kind"] for found in expected}
        self.assertGreater(len(kinds), 20)

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


if __name__ == "__main__":
    unittest.main()
