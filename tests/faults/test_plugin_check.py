"""orxprint plugin --check finds what is wrong with a plug-in, whatever it does to its process.

The variable ORXPRINT_BUILD names the build tree.
"""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["ORXPRINT_BUILD"])
ORXPRINT = str(BUILD / "bin/orxprint")
FAULTS = BUILD / "tests/faults"

# A fault, a check that must find it, and what it says.
FAULTY = (
    ("touches-input", "shapes", "GetState: called while the stream is not open"),
    ("crashes", "shapes", "signal 6 (Aborted)"),
    ("draws-once", "twice", "call 1 is missing, to be expected DefineColor"),
    ("draws-all-pages", "pages", "call 7 is NewPage()"),
    ("draws-alone", "side-by-side", "call 1 is missing"),
    ("draws-alone", "threads", "call 1 is missing"),
    ("leaves-strokes-open", "shapes", "MoveTo: out of order"),
    ("answers-nonsense", "shapes", "Generate answers 2 and not 1"),
    ("counts-zeros", "counts", "the lines of a counting pass differ"),
    ("takes-no-generator", "no-generator", "answers 1 and not 0"),
    ("clears-results", "not-stated", "a result that the document says nothing about"),
    ("lets-exceptions-through", "throwing-input", "an exception comes out of it"),
    ("lets-exceptions-through", "no-generator", None),
    ("calls-at-its-end", "destroy", "GetState: called while the stream is not open"),
    ("goes-on", "stop", "did not come back"),
    ("hangs", "questions", "did not come back"),
    ("leaks", "memory", "bytes behind 200 interpreters"),
    ("stays-registered", "register", "leaves its class"),
    ("", "exports", "exports superfluous as well"),
)
# Modules that do not get far, and what is said of them.
BAD = (
    ("MARKER_IS_DATA", "load", "no function fctIsORXOMModule"),
    ("FACTORY_THROWS", "shapes", "no parts left"),
    ("FACTORY_GIVES_NULL", "shapes", "makes no interpreter"),
    ("LOADING_HANGS", "load", "did not come back"),
    ("RUN_HANGS", "shapes", "did not come back"),
    ("RUN_TELLS_ITS_END", "exports", "does not export a function fctCreate"),
)


def check(*arguments, fault=""):
    done = subprocess.run([ORXPRINT, "plugin", *map(str, arguments)], capture_output=True,
                          text=True, env={**os.environ, "ORX_PLUGIN_FAULT": fault})
    return done.returncode, done.stdout, done.stderr


class PluginCheck(unittest.TestCase):
    def test_the_plugin_holds_every_check(self):
        status, lines, _ = check("--check")
        self.assertEqual(status, 0, lines)
        names = [line.split()[0] for line in check("--list")[1].splitlines()]
        self.assertEqual([line.split()[:2] for line in lines.splitlines()],
                         [["ok", name] for name in names])

    def expect(self, module, name, reason, fault=""):
        status, lines, _ = check("--check", module, "--only", name, "--time-limit", "2", fault=fault)
        with self.subTest(module=module.name, fault=fault, check=name):
            self.assertEqual(status, 1 if reason else 0, lines)
            self.assertEqual(lines.count("\n"), 1)
            self.assertRegex(lines, ("FAIL  " if reason else "ok    ") + name)
            self.assertIn(reason or "", lines)

    def test_each_fault_is_found(self):
        for fault, name, reason in FAULTY:
            self.expect(FAULTS / "faulty_plugin.so", name, reason, fault)
        for module, name, reason in BAD:
            self.expect(FAULTS / f"{module}.so", name, reason)

    def test_what_is_not_at_fault_holds(self):
        status, lines, _ = check("--check", FAULTS / "faulty_plugin.so")
        self.assertEqual(status, 1)
        self.assertEqual(re.findall("^FAIL  (.*?):", lines, re.MULTILINE), ["exports"])

    def test_a_time_limit_may_be_none_or_longer_than_clocks_count(self):
        for limit in ("none", "1e300"):
            self.assertEqual(check("--check", "--only", "load", "--time-limit", limit)[:2],
                             (0, "ok    load\n"), limit)

    def test_files_that_are_no_plugins(self):
        with tempfile.TemporaryDirectory() as folder:
            folder = pathlib.Path(folder)
            self.assertEqual(check("--check", folder / "none.so")[0], 5)
            (folder / "text.so").write_text("no library")
            self.assertEqual(check("--check", folder / "text.so", "--only", "load")[0], 1)
            # A name without a folder is a file here, and damaged tables are not followed.
            library = bytearray((BUILD / "lib/ORXPrintEPSInterpreter.so").read_bytes())
            library[40:48] = b"\xff" * 8
            (folder / "damaged.so").write_bytes(library)
            shutil.copy(BUILD / "lib/ORXPrintEPSInterpreter.so", folder / "plugin.so")
            for name, remark in (("plugin.so", "ok    exports\n"), ("damaged.so", "nothing is known")):
                done = subprocess.run([ORXPRINT, "plugin", "--check", name, "--only", "exports"],
                                      capture_output=True, text=True, cwd=folder,
                                      env={**os.environ, "LD_LIBRARY_PATH": str(BUILD / "lib")})
                self.assertIn(remark, done.stdout)

    def test_wrong_usage_is_told(self):
        for arguments, message in (
            ([], "--check or --list is required"),
            (["--check", "--only", "everything"], "'everything' is no check"),
            (["--check", "--time-limit", "soon"], "'soon' is not a number of seconds"),
        ):
            status, _, told = check(*arguments)
            self.assertEqual(status, 2)
            self.assertIn(message, told)


if __name__ == "__main__":
    unittest.main()
