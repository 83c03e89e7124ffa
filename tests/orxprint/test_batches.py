"""Drives orxprint render and check over many documents at once.

The program under test is named by the environment variable ORXPRINT.
"""

import json
import os
import unittest

from test_command_line import CommandLine

HEAD = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 72\n"
PLAIN = HEAD + "0 0 moveto 72 0 lineto 72 72 lineto closepath fill\n"
TEXT = PLAIN + "(word) show\n"
TWO = "%!PS-Adobe-3.0\n%%BoundingBox: 0 0 9 9\n%%Pages: 2\n%%Page: 1 1\n1 1 moveto 5 5 lineto 5 1 lineto fill\n%%Page: 2 2\n"


class Batches(CommandLine):
    def setUp(self):
        super().setUp()
        for folder in ("in/deep/er", "out"):
            (self.folder / folder).mkdir(parents=True)
        self.write("in/b.eps", PLAIN)
        self.write("in/a.EPSF", TEXT)
        self.write("in/deep/er/c.epsi", TWO)
        self.write("in/deep/bad.eps", "")
        self.write("in/deep/notes.txt", "no drawing")

    def report(self, *arguments, status=1):
        self.expect(status, *arguments, "--report", "report.jsonl")
        return [json.loads(line) for line in self.read("report.jsonl").splitlines()]

    def drawn(self):
        out = self.folder / "out"
        return sorted(path.relative_to(out).as_posix() for path in out.rglob("*") if path.is_file())

    def test_folders_keep_their_shape_and_one_failure_stops_nothing(self):
        done = self.run_program("render", "-R", "in", "-o", "out", "--report", "report.jsonl")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(self.drawn(), ["a.svg", "b.svg", "deep/er/c-1.svg", "deep/er/c-2.svg"])
        self.assertRegex(done.stderr, rb"orxprint: 3 drawn, 1 with losses, 1 failed \(0:\d\d\)\n$")
        lines = [json.loads(line) for line in self.read("report.jsonl").splitlines()]
        self.assertEqual(
            [(line["file"], line["result"], line["losses"]) for line in lines],
            [
                ("in/a.EPSF", "done", ["text-lost"]),
                ("in/b.eps", "done", []),
                ("in/deep/bad.eps", "failed", []),
                ("in/deep/er/c.epsi", "done", []),
            ],
        )
        self.assertEqual(lines[3]["outputs"], ["out/deep/er/c-1.svg", "out/deep/er/c-2.svg"])
        self.assertIn("no size", lines[2]["problem"])

    def test_shares_come_together_to_the_whole(self):
        whole = self.report("check", "-R", "in", status=3)
        shares = [
            self.report("check", "-R", "in", "--shard", f"{number}/3", status=status)
            for number, status in ((1, 3), (2, 0), (3, 3))
        ]
        key = lambda line: line["file"]
        self.assertEqual(sorted(sum(shares, []), key=key), sorted(whole, key=key))
        self.assertEqual([len(share) for share in shares], [2, 1, 1])

    def test_what_is_there_may_stay(self):
        arguments = ("render", "in/b.eps", "in/a.EPSF", "-o", "out")
        self.report(*arguments, status=0)
        os.utime(self.folder / "out/a.svg", (1, 1))
        for option, skipped in [("--newer", ["in/b.eps"]), ("--no-clobber", ["in/b.eps", "in/a.EPSF"])]:
            lines = self.report(*arguments, option, status=0)
            self.assertEqual([line["file"] for line in lines if line["result"] == "skipped"], skipped, option)
            os.utime(self.folder / "out/a.svg", (1, 1))
        self.expect(2, *arguments, "--newer", "--no-clobber", message="excludes")

    def test_names_come_from_a_list(self):
        names = b"in/b.eps\0in/deep/er/c.epsi\0"
        self.write("names", names)
        for source, options in [("names", {}), ("-", {"stdin": names})]:
            printed = self.expect(0, "check", "--files0-from", source, **options)
            self.assertEqual(printed.count(b"nothing is lost"), 2)
        for arguments, message in [
            (["render", "--files0-from", "names", "-o", "one.svg"], "name a folder"),
            (["check", "-", "--files0-from", "-"], "standard input"),
            (["check"], "FILE is required"),
            (["check", "in/b.eps", "--shard", "3/2"], "is not a share"),
        ]:
            self.expect(2, *arguments, message=message)
        self.expect(1, "check", "--files0-from", "missing", message="missing")

    def test_two_documents_do_not_share_an_output(self):
        self.write("in/b.epsf", PLAIN)
        lines = self.report("render", "in/b.eps", "in/b.epsf", "-o", "out")
        self.assertEqual([line["result"] for line in lines], ["done", "failed"])
        self.assertIn("is that of another document", lines[1]["problem"])


if __name__ == "__main__":
    unittest.main()
