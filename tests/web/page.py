"""The page for browsers in Chromium without a window, as its tests use it: opened from the disk, files
dropped on it, clicked, and read.

The variable ORXPRINT_PAGE names the page; ORXPRINT the native orxprint, which the page must agree
with. With ORXPRINT_SHOTS=FOLDER pictures of the page are left there.
"""
import base64
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.support.wait import WebDriverWait

PAGE = pathlib.Path(os.environ["ORXPRINT_PAGE"]).resolve()
PROGRAM = os.environ["ORXPRINT"]
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
# Keeps every drawing that the page makes an address for.
KEEP_DRAWINGS = """
window.drawings = [];
const make = URL.createObjectURL;
URL.createObjectURL = (blob) => {
  if (blob.type === 'image/svg+xml') window.drawings.push(blob);
  return make(blob);
};
"""


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

    def visible_findings(self, name, content):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / name
            file.write_bytes(content)
            checked = subprocess.run([PROGRAM, "check", "--json", str(file)],
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
