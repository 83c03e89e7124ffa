"""The tour in docs/ is what the program makes of the samples now, and shows every kind of loss.

The program under test is named by the environment variable ORXPRINT.
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]


class Tour(unittest.TestCase):
    def test_it_is_up_to_date(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, TOP / "scripts/make-tour", folder], check=True, timeout=120)
            made = sorted(pathlib.Path(folder).rglob("*.*"))
            self.assertGreater(len(made), 40)
            for path in made:
                kept = TOP / "docs" / path.relative_to(folder)
                self.assertTrue(kept.is_file(), f"{kept} is not there: run scripts/make-tour")
                self.assertEqual(kept.read_text(), path.read_text(), f"{kept}: run scripts/make-tour")
            self.assertEqual(len(list((TOP / "docs/tour").iterdir())), len(made) - 1)

    def test_every_kind_of_loss_has_its_sample(self):
        listed = set(re.findall(r"^\| `([a-z-]+)` \|", (TOP / "docs/check.md").read_text(), re.M))
        shown = {path.stem for path in (TOP / "samples/losses").glob("*.eps")}
        self.assertEqual(shown, listed - {"odd-header"}, "what a binary header says is shown by none")


if __name__ == "__main__":
    unittest.main()
