#!/usr/bin/env python3
"""Measures how long the page for browsers takes from the choice of a file until its first page is painted.

  bench/page-speed.py ORXPRINT.html [-n RUNS] [FILE...]

Prints the least and the most of the runs for each file, in Chromium without a window. Without files it
makes one of 10 MB, polylines of 500 short lines each. Packages: those of scripts/setup web.
"""
import argparse
import pathlib
import random
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By

BEGIN = "document.addEventListener('change', () => { window.begin = performance.now(); }, true);"
# The picture of the first page stands there when it has been decoded and two frames are over.
PAINTED = """
const done = arguments[arguments.length - 1];
const shown = () => requestAnimationFrame(
    () => requestAnimationFrame(() => done(performance.now() - window.begin)));
const look = () => {
  const isThere = document.getElementById('page-number').textContent.includes('/');
  isThere ? document.getElementById('picture').decode().then(shown) : setTimeout(look, 5);
};
look();
"""


def many_lines(size):
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


def open_browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage"):
        options.add_argument(argument)
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


def seconds(browser, page, file):
    browser.get(page.resolve().as_uri())
    browser.execute_script(BEGIN)
    browser.find_element(By.ID, "files").send_keys(str(file.resolve()))
    return browser.execute_async_script(PAINTED) / 1000


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("page", type=pathlib.Path, metavar="ORXPRINT.html")
    parser.add_argument("files", nargs="*", type=pathlib.Path, metavar="FILE")
    parser.add_argument("-n", "--runs", type=int, default=3)
    wanted = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        if not wanted.files:
            wanted.files = [pathlib.Path(folder) / "lines.eps"]
            wanted.files[0].write_bytes(many_lines(10_000_000))
        browser = open_browser()
        browser.set_script_timeout(120)
        try:
            for file in wanted.files:
                times = [seconds(browser, wanted.page, file) for _ in range(wanted.runs)]
                print(f"{file.name:24} {min(times):6.2f} to {max(times):.2f} s")
        finally:
            browser.quit()


if __name__ == "__main__":
    main()
