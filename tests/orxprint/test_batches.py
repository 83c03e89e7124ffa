"""Drives orxprint render and check over many documents at once.

The program under test is named by the environment variable ORXPRINT.
"""

import json
import os
import pathlib
import signal
import subprocess
import time
import unittest

import jsonschema

from test_command_line import ENDLESS, ORXPRINT, CommandLine

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"

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

    def test_reports_keep_to_their_schema(self):
        schema = json.loads((DOCS / "report.schema.json").read_text())
        self.write("in/long.eps", ENDLESS)
        lines = self.report("render", "-R", "in", "-o", "out", "--time-limit", "0.3")
        self.assertEqual({line["result"] for line in lines}, {"done", "failed", "limited"})
        lines += self.report("render", "-R", "in", "-o", "out", "--no-clobber", "--time-limit", "0.3")
        self.assertEqual({line["result"] for line in lines}, {"done", "skipped", "failed", "limited"})
        for line in lines + self.report("check", "-R", "in", "--time-limit", "0.3", status=4):
            jsonschema.validate(line, schema)

    def test_nothing_depends_on_how_many_are_drawn_at_once(self):
        for i in range(20):
            self.write(f"in/part-{i}.eps", TEXT if i % 3 else TWO)
        self.write("in/part.eps", TWO)
        everything = []
        for jobs in ("1", "2", "7"):
            (self.folder / "out").rename(self.folder / f"before-{jobs}")
            (self.folder / "out").mkdir()
            done = self.run_program(
                "render", "-R", "in", "-o", "out", "--jobs", jobs, "--report", "report.jsonl"
            )
            messages = done.stderr.splitlines()[:-1]
            everything.append((done.returncode, messages, self.read("report.jsonl"), self.drawn()))
        self.assertEqual(everything[0], everything[1])
        self.assertEqual(everything[0], everything[2])
        problems = [json.loads(line).get("problem", "") for line in everything[0][2].splitlines()]
        self.assertEqual(sum("is that of another document" in problem for problem in problems), 1)
        checks = [self.run_program("check", "-R", "in", "--json", "--jobs", jobs) for jobs in ("1", "7")]
        self.assertEqual(checks[0].stdout, checks[1].stdout)
        self.assertEqual(len(json.loads(checks[0].stdout)), 25)

    def test_a_process_that_dies_takes_its_document_only(self):
        self.write("in/a-endless.eps", ENDLESS)
        running = subprocess.Popen(
            [ORXPRINT, "render", "-R", "in", "-o", "out", "--jobs", "1", "--report", "report.jsonl"],
            cwd=self.folder,
            stderr=subprocess.PIPE,
        )
        children = pathlib.Path(f"/proc/{running.pid}/task/{running.pid}/children")
        while not children.read_text():
            time.sleep(0.05)
        os.kill(int(children.read_text()), signal.SIGKILL)
        messages = running.communicate()[1]
        self.assertEqual(running.returncode, 1)
        self.assertIn(b"a-endless.eps: the process that worked on it ended: signal 9", messages)
        results = [json.loads(line)["result"] for line in self.read("report.jsonl").splitlines()]
        self.assertEqual(results, ["failed" if i in (0, 3) else "done" for i in range(5)])

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
            (["check", "in/b.eps", "--jobs", "0"], "is not a number from 1"),
            (["check", "in/b.eps", "--shard", "3/2"], "is not a share"),
        ]:
            self.expect(2, *arguments, message=message)
        self.expect(1, "check", "--files0-from", "missing", message="missing")
        self.expect(0, "check", "-R", "out", "in/b.eps", message="out: warning: holds no file that ends")
        self.expect(1, "check", "in", "in/b.eps", message="in: is a directory; -R takes what it holds")

    def test_two_documents_do_not_share_an_output(self):
        self.write("in/b.epsf", PLAIN)
        lines = self.report("render", "in/b.eps", "in/b.epsf", "-o", "out")
        self.assertEqual([line["result"] for line in lines], ["done", "failed"])
        self.assertIn("is that of another document", lines[1]["problem"])


if __name__ == "__main__":
    unittest.main()
