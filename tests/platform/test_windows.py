"""Drives an orxprint of Windows from outside: names, bytes, consoles and folders.

ORXPRINT names the folder with the program and its libraries, WINE the command that runs Windows
programs, and REFERENCE the program of this platform, whose answers are the right ones.
"""

import json
import os
import pathlib
import pty
import select
import shutil
import subprocess
import tempfile
import unittest

FOLDER = pathlib.Path(os.environ["ORXPRINT"])
WINE = os.environ["WINE"]
REFERENCE = os.environ["REFERENCE"]
ENVIRONMENT = {**os.environ, "WINEPATH": "", "LC_ALL": "C.UTF-8"}

DOCUMENT = b"%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 90 90\n10 20 moveto 30 40 lineto stroke\n"
# Bytes that text files do not survive: carriage returns, the end of files on DOS, a zero.
BYTES = (
    b"%!PS-Adobe-3.0 EPSF-3.0\r\n%%Pages: 1\r\n%%Page: (\xe9) 1\r\n% \x1a\x00\xff\r\x1a\r\n"
    b"10 20 moveto 30 40 lineto stroke\r\nshowpage\r\n%%EOF\r\n"
)
NAMES = ["r\u00e9sum\u00e9.eps", "\u0447\u0435\u0440\u0442\u0451\u0436 \u2713.eps", "\u56f3\u9762.eps"]


def drive_name(path):
    """A path as Windows has it."""
    return "Z:" + str(path).replace("/", "\\")


class Windows(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_program(self, *arguments, program=FOLDER / "orxprint.exe", stdin=b""):
        command = [WINE, str(program), *map(str, arguments)]
        return subprocess.run(command, input=stdin, capture_output=True, env=ENVIRONMENT,
                              cwd=self.folder, timeout=120)

    def names_told(self, *files):
        result = self.run_program("info", "--json", *files)
        self.assertEqual(result.returncode, 0, result.stderr)
        return [document["file"] for document in json.loads(result.stdout)]

    def test_names_are_any_characters(self):
        for name in NAMES:
            (self.folder / name).write_bytes(DOCUMENT)
        self.assertEqual(self.names_told(*NAMES), NAMES)
        self.assertEqual(self.names_told("*.eps"), sorted(NAMES))
        pattern = drive_name(self.folder) + "\\*.E?S"
        self.assertEqual(len(self.names_told(pattern)), len(NAMES))

    def test_names_are_any_length(self):
        deep = self.folder / ("a" * 200) / ("b" * 200)
        deep.mkdir(parents=True)
        (deep / "part.eps").write_bytes(DOCUMENT)
        relative = str((deep / "part.eps").relative_to(self.folder))
        names = [drive_name(deep / "part.eps"), str(deep / "part.eps"), relative, relative.replace("/", "\\"),
                 ".\\" + relative]
        self.assertEqual(self.names_told(*names), names)

    def test_missing_files_and_folders_are_told(self):
        (self.folder / "folder").mkdir()
        for name, reason in (("none.eps", "no such file"), ("no\\file.eps", "no such file"),
                             ("a?b.eps", "no such file"), ("folder", "is a directory")):
            result = self.run_program("info", name)
            self.assertEqual(result.returncode, 1, name)
            self.assertIn(reason, result.stderr.decode(), name)

    def test_bytes_stay_bytes(self):
        (self.folder / "bytes.eps").write_bytes(BYTES)
        for arguments, stdin in ((("trace", "bytes.eps"), b""),
                                 (("trace", "-"), BYTES),
                                 (("info", "--json", "-"), BYTES),
                                 (("trace", "-"), DOCUMENT.replace(b"\n", b"\r\n") * 40_000)):
            expected = subprocess.run([REFERENCE, *arguments], input=stdin, capture_output=True,
                                      cwd=self.folder)
            result = self.run_program(*arguments, stdin=stdin)
            self.assertEqual(result.stdout, expected.stdout, arguments)
            self.assertEqual(result.returncode, expected.returncode, arguments)

    def test_standard_input_may_be_a_file(self):
        (self.folder / "part.eps").write_bytes(b"skipped\n" + BYTES)
        with open(self.folder / "part.eps", "rb") as file:
            file.seek(8)
            result = subprocess.run([WINE, FOLDER / "orxprint.exe", "trace", "-"],
                                    stdin=file, capture_output=True, env=ENVIRONMENT, timeout=120)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(b"LineTo(10.583333, ", result.stdout)

    def test_a_reader_that_does_not_come_is_not_waited_for(self):
        (self.folder / "long.eps").write_bytes(DOCUMENT * 40_000)
        command = [WINE, FOLDER / "orxprint.exe", "trace", "--time-limit", "1", "long.eps"]
        with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              env=ENVIRONMENT, cwd=self.folder) as process:
            self.assertEqual(process.wait(timeout=60), 4)
            self.assertIn(b"time limit", process.stderr.read())

    def test_consoles_show_every_character(self):
        (self.folder / NAMES[1]).write_bytes(DOCUMENT)
        controller, terminal = pty.openpty()
        with os.fdopen(controller, "rb", buffering=0) as screen:
            process = subprocess.Popen([WINE, FOLDER / "orxprint.exe", "info", NAMES[1]],
                                       stdin=terminal, stdout=terminal, stderr=terminal,
                                       env={**ENVIRONMENT, "TERM": "xterm"}, cwd=self.folder)
            os.close(terminal)
            shown = b""
            try:
                # whatever of Wine's keeps the terminal open
                while select.select([screen], [], [], 60)[0] and (block := screen.read(4096)):
                    shown += block
            except OSError:  # the terminal has nobody left
                pass
            self.addCleanup(process.kill)
            self.assertEqual(process.wait(timeout=60), 0)
        self.assertIn("\u0447\u0435\u0440\u0442\u0451\u0436", shown.decode(errors="replace"))

    def test_libraries_are_found_beside_the_program_only(self):
        home = self.folder / NAMES[2]
        shutil.copytree(FOLDER, home)
        (self.folder / "part.eps").write_bytes(DOCUMENT)
        result = self.run_program("info", "part.eps", program=home / "orxprint.exe")
        self.assertEqual(result.returncode, 0, result.stderr)
        module = home / "ORXPrintEPSInterpreter.dll"
        shutil.move(module, self.folder)
        result = self.run_program("info", "part.eps", program=home / "orxprint.exe")
        self.assertEqual(result.returncode, 5)
        self.assertIn(drive_name(module), result.stderr.decode())
        result = self.run_program("info", "part.eps", "--plugin", module.name,
                                  program=home / "orxprint.exe")
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_formats_without_a_library_are_refused(self):
        (self.folder / "part.eps").write_bytes(DOCUMENT)
        for arguments in (("-f", "png"), ("-o", "part.pdf")):
            result = self.run_program("render", "part.eps", *arguments)
            self.assertEqual(result.returncode, 2)
            self.assertIn(b"this build of orxprint writes no", result.stderr)
        self.assertEqual(os.listdir(self.folder), ["part.eps"])


if __name__ == "__main__":
    unittest.main()
