"""orxprint where things go wrong: disks, files that change, signals, readers, modules.

The variable ORXPRINT_BUILD names the build tree. What the machine cannot do - name spaces and file
systems need root - is skipped.
"""

import base64
import errno
import json
import os
import pathlib
import pty
import re
import resource
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest

BUILD = pathlib.Path(os.environ["ORXPRINT_BUILD"])
ORXPRINT = str(BUILD / "bin/orxprint")
FAULTS = BUILD / "tests/faults"
IS_ROOT = os.geteuid() == 0
CAN_UNSHARE = IS_ROOT and subprocess.run(["unshare", "-mp", "--fork", "true"]).returncode == 0

HEADER = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 100 100\n"
SQUARE = "10 10 moveto 90 10 lineto 90 90 lineto closepath fill\n"
SMALL = HEADER + SQUARE
# Half a megabyte: several blocks of the file, several buffers of a pipe.
LARGE = HEADER + "10 10 moveto 90 90 lineto stroke\n" * 16_000 + "%%EOF\n"
ENDLESS = HEADER + "/a0 {0 0 moveto 9 9 lineto stroke} def\n" + "".join(
    f"/a{i} {{a{i - 1} a{i - 1}}} def\n" for i in range(1, 60)
) + "a59\n"


# Who runs the tests in the background may have these ignored, and so would every child.
for number in (signal.SIGINT, signal.SIGQUIT):
    signal.signal(number, signal.SIG_DFL)


def pages(count, body=SQUARE):
    return f"%!PS-Adobe-3.0\n%%Pages: {count}\n%%BoundingBox: 0 0 100 100\n" + "".join(
        f"%%Page: {page} {page}\n{body}showpage\n" for page in range(1, count + 1)
    )


# Painting takes seconds, interpreting none.
WHOLE = "0 0 moveto 100 0 lineto 100 100 lineto 0 100 lineto closepath fill\n"
SLOW_TO_PAINT = pages(400, WHOLE * 9)
SLOW_PAGE = pages(1, WHOLE * 200_000)
SLOWLY = ["-f", "png", "-r", "600"]


class Faults(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.write("a.eps", SMALL)

    def write(self, name, content):
        (self.folder / name).write_bytes(content.encode() if isinstance(content, str) else content)
        return name

    def read(self, name):
        return (self.folder / name).read_bytes()

    def files(self):
        return sorted(path.name for path in self.folder.iterdir())

    def start(self, *arguments, faults="", clock_speed=1, environment=None, **options):
        extra = {
            "LD_PRELOAD": str(FAULTS / "orxprint_failing_calls.so"),
            "ORX_FAULTS": faults,
            "ORX_CLOCK_SPEED": str(clock_speed),
        }
        for stream in ("stdin", "stdout", "stderr"):
            options.setdefault(stream, subprocess.PIPE)
        options.setdefault("cwd", self.folder)
        return subprocess.Popen(
            [ORXPRINT, *arguments],
            env={**os.environ, **(extra if faults or clock_speed != 1 else {}), **(environment or {})},
            **options,
        )

    def run_program(self, *arguments, stdin=b"", **options):
        process = self.start(*arguments, **options)
        out, told = process.communicate(stdin, timeout=60)
        return process.returncode, out, (told or b"").decode("utf-8", "replace")

    def expect(self, status, *arguments, message="", **options):
        returned, out, told = self.run_program(*arguments, **options)
        self.assertEqual(returned, status, f"{arguments}: {told}")
        self.assertIn(message, told)
        self.told = told
        return out


    def measure(self, *arguments, **options):
        """The status, and the most memory that the program took."""
        script = (
            "import resource, subprocess, sys\n"
            "status = subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL).returncode\n"
            "print(status, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)\n"
        )
        done = subprocess.run(
            [sys.executable, "-c", script, ORXPRINT, *arguments],
            cwd=self.folder,
            stdout=subprocess.PIPE,
            timeout=60,
            **options,
        )
        return map(int, done.stdout.split())


class Reading(Faults):
    def test_a_read_error_is_not_taken_for_the_end(self):
        self.write("large.eps", LARGE)
        self.write("large.svg", "precious")
        message = "large.eps: cannot be read: Input/output error"
        # in the look-through, and in the run itself
        for call in (3, 12):
            faults = f"pread:{call}:{errno.EIO}"
            for arguments in (["render"], ["render", "-f", "none"], ["info"], ["trace"]):
                self.expect(1, *arguments, "large.eps", faults=faults, message=message)
        self.assertEqual(self.read("large.svg"), b"precious")
        self.assertEqual(self.files(), ["a.eps", "large.eps", "large.svg"])

    def change_while_traced(self, change):
        self.write("large.eps", LARGE)
        process = self.start("trace", "large.eps", bufsize=0)
        first = process.stdout.read(10)
        change(self.folder / "large.eps")
        rest, told = process.communicate(timeout=60)
        return process.returncode, first + rest, told

    def test_a_document_that_changes_is_told(self):
        def truncate(path):
            os.truncate(path, 1000)

        def overwrite(path):
            path.write_bytes(LARGE.replace("90", "80").encode())

        def append(path):
            with open(path, "a") as file:
                file.write("showpage\n")

        for change in (truncate, overwrite, append):
            returned, _, told = self.change_while_traced(change)
            self.assertEqual(returned, 1, change)
            self.assertIn(b"large.eps: was changed while it was read", told)

    def test_a_document_that_is_replaced_is_read_as_it_was(self):
        def replace(path):
            os.rename(self.folder / self.write("new.eps", SMALL), path)

        returned, traced, _ = self.change_while_traced(replace)
        self.write("large.eps", LARGE)
        self.assertEqual(returned, 0)
        self.assertEqual(traced, self.expect(0, "trace", "large.eps"))

    def test_a_large_pipe_takes_a_file_instead_of_memory(self):
        document = SMALL.encode() + b"% words that nobody reads\n" * 2_000_000
        self.write("large.eps", document)
        with open(self.folder / "large.eps", "rb") as large:
            with subprocess.Popen(["cat"], stdin=large, stdout=subprocess.PIPE) as cat:
                arguments = ["render", "-", "-f", "none", "--memory-limit", "32M"]
                status, kilobytes = self.measure(*arguments, stdin=cat.stdout)
        self.assertEqual(status, 0)
        self.assertLess(kilobytes, 24 << 10)

    def test_images_take_no_memory_after_they_were_drawn(self):
        # a white fax page of 18 MB in 1,500 bytes: a bit for each of its rows
        page = base64.a85encode(b"\xff" * 1500 + b"\x00\x10\x01").decode() + "~>\n"
        image = (
            "<< /Width 12000 /Height 12000 /BitsPerComponent 1 /ImageMatrix [12000 0 0 -12000 0 12000]\n"
            "/DataSource currentfile /ASCII85Decode filter\n"
            "<< /K -1 /Columns 12000 /Rows 12000 >> /CCITTFaxDecode filter >> image\n"
        )
        self.write("fax.eps", HEADER + "100 100 scale\n" + (image + page) * 8)
        arguments = ["fax.eps", "--memory-limit", "120M"]
        for form in ("svg", "pdf", "png", "none"):
            status, kilobytes = self.measure("render", *arguments, "-f", form, "-r", "10")
            self.assertEqual(status, 0, form)
            self.assertLess(kilobytes, 120 << 10)

    def test_a_line_without_end_takes_no_memory(self):
        for filling in (b" ", b"%"):
            self.write("long.eps", HEADER.encode() + filling * 30_000_000)
            arguments = ["info", "long.eps", "--time-limit", "30"]
            status, kilobytes = self.measure(*arguments)
            self.assertEqual(status, 0)
            self.assertLess(kilobytes, 24 << 10)

    def test_a_pipe_that_cannot_be_kept_is_told(self):
        message = "-: cannot be kept in a temporary file: No such file or directory"
        environment = {"TMPDIR": str(self.folder / "missing")}
        document = LARGE.encode() * 4
        self.expect(1, "info", "-", stdin=document, environment=environment, message=message)


class Writing(Faults):
    def test_descriptors_are_written_to_and_not_replaced(self):
        drawing = self.expect(0, "render", "a.eps", "-o", "-")
        for name in ("/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"):
            self.write("log", "before\n")
            with open(self.folder / "log", "ab") as log:
                self.expect(0, "render", "a.eps", "-f", "svg", "-o", name, stdout=log)
            self.assertEqual(self.read("log"), b"before\n" + drawing)
        with open(self.folder / "log", "wb") as log:
            self.expect(0, "render", "a.eps", "-f", "svg", "-o", "/dev/stderr", stderr=log)
        self.assertEqual(self.read("log"), drawing)

    def test_no_input_is_replaced(self):
        self.write("plan-2.eps", pages(3))
        self.write("b.svg", SMALL)
        self.write("b.eps", SMALL)
        message = "would replace the document"
        # the second page would go there
        self.expect(1, "render", "plan-2.eps", "-o", "plan.eps", "-f", "svg", message=message)
        self.write("three.eps", pages(3))
        os.link(self.folder / "plan-2.eps", self.folder / "three-2.svg")
        self.expect(1, "render", "three.eps", "plan-2.eps", message=message)
        self.assertNotIn("three-1.svg", self.files())
        # an input that comes later in the same command
        self.expect(1, "render", "b.eps", "b.svg", "-f", "svg", message=f"b.eps: the output b.svg {message}")
        contents = [pages(3), SMALL, SMALL]
        for name, content in zip(("plan-2.eps", "b.svg", "b.eps"), contents):
            self.assertEqual(self.read(name), content.encode())

    def test_two_outputs_of_one_name_are_found_before_drawing(self):
        self.write("name.eps", pages(2))
        self.write("name-1.eps", ENDLESS)
        message = "name-1.eps: the output name-1.svg is that of another document"
        self.expect(1, "render", "name.eps", "name-1.eps", message=message)

    def test_a_link_without_target_gets_one(self):
        os.symlink("target.svg", self.folder / "link.svg")
        os.symlink("missing/target.svg", self.folder / "far.svg")
        self.expect(0, "render", "a.eps", "-o", "link.svg")
        self.assertTrue((self.folder / "link.svg").is_symlink())
        self.assertTrue(self.read("target.svg").startswith(b"<?xml"))
        self.expect(1, "render", "a.eps", "-o", "far.svg", message="No such file or directory")
        self.assertTrue((self.folder / "far.svg").is_symlink())

    def test_rights_of_what_is_replaced_are_kept(self):
        for faults in ("", f"tmpfile:1:{errno.EOPNOTSUPP}"):
            self.write("secret.svg", "old")
            os.chmod(self.folder / "secret.svg", 0o600)
            if IS_ROOT:
                os.chown(self.folder / "secret.svg", 1, 2)
            self.expect(0, "render", "a.eps", "-o", "secret.svg", faults=faults)
            status = os.stat(self.folder / "secret.svg")
            self.assertEqual(stat.S_IMODE(status.st_mode), 0o600)
            self.assertEqual((status.st_uid, status.st_gid), (1, 2) if IS_ROOT else (os.getuid(), os.getgid()))
            os.remove(self.folder / "secret.svg")
            self.expect(0, "render", "a.eps", "-o", "new.svg", faults=faults, umask=0o027)
            self.assertEqual(stat.S_IMODE(os.stat(self.folder / "new.svg").st_mode), 0o640)
            os.remove(self.folder / "new.svg")

    def test_what_does_not_reach_the_disk_replaces_nothing(self):
        self.write("old.svg", "precious")
        for faults in ("", f"tmpfile:1:{errno.EOPNOTSUPP} "):
            message = "cannot write old.svg: Input/output error"
            faults += f"fsync:1:{errno.EIO}"
            self.expect(1, "render", "a.eps", "-o", "old.svg", faults=faults, message=message)
        self.assertEqual(self.read("old.svg"), b"precious")
        self.assertEqual(self.files(), ["a.eps", "old.svg"])

    def test_a_file_that_may_not_grow_is_told(self):
        self.write("large.eps", LARGE)

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

        message = "cannot write large.svg: File too large"
        self.expect(1, "render", "large.eps", preexec_fn=limit, message=message)
        self.assertEqual(self.files(), ["a.eps", "large.eps"])

    @unittest.skipUnless(CAN_UNSHARE, "needs a name space of its own")
    def test_a_full_disk_is_told(self):
        self.write("large.eps", LARGE)
        os.mkdir(self.folder / "disk")
        script = f"mount -t tmpfs -o size=64k none disk && {ORXPRINT} render large.eps -o disk/a.svg;" \
            "echo status $?; ls -A disk"
        done = subprocess.run(
            ["unshare", "-m", "sh", "-c", script], cwd=self.folder, capture_output=True, timeout=60
        )
        self.assertEqual(done.stdout, b"status 1\n")
        self.assertIn(b"cannot write disk/a.svg: No space left on device", done.stderr)

    def test_the_longest_names_can_be_written(self):
        name = "n" * 251 + ".svg"
        for faults in ("", f"tmpfile:1:{errno.EOPNOTSUPP}"):
            self.expect(0, "render", "a.eps", "-o", name, faults=faults)
            self.assertIn(name, self.files())
            os.remove(self.folder / name)


class Interruption(Faults):
    NAMED = f"tmpfile:1:{errno.EOPNOTSUPP}"

    def wait_for_temporary_file(self, process):
        for _ in range(1000):
            if any(name.startswith(".orxprint-") for name in self.files()):
                return
            self.assertIsNone(process.poll())
            time.sleep(0.01)
        self.fail("no temporary file appeared")

    def test_signals_leave_nothing_behind(self):
        self.write("slow.eps", SLOW_TO_PAINT)
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT):
            process = self.start("render", "slow.eps", *SLOWLY, faults=self.NAMED)
            self.wait_for_temporary_file(process)
            process.send_signal(number)
            process.communicate(timeout=20)
            self.assertEqual(process.returncode, -number)
            self.assertEqual(self.files(), ["a.eps", "slow.eps"])

    def test_nobody_else_may_read_what_is_being_painted(self):
        self.write("slow.eps", SLOW_PAGE)
        for faults in ("", self.NAMED):
            process = self.start("render", "slow.eps", *SLOWLY, faults=faults, umask=0)
            time.sleep(0.7)
            opened = pathlib.Path(f"/proc/{process.pid}/fd")
            outputs = [
                entry.stat()
                for entry in opened.iterdir()
                if os.readlink(entry).startswith(str(self.folder)) and "slow.eps" not in os.readlink(entry)
            ]
            process.terminate()
            process.communicate(timeout=20)
            self.assertGreater(len(outputs), 0)
            self.assertEqual({stat.S_IMODE(output.st_mode) for output in outputs}, {0o600})

    def test_files_without_names_outlive_nothing(self):
        self.write("slow.eps", SLOW_PAGE)
        process = self.start("render", "slow.eps", *SLOWLY)
        time.sleep(0.5)
        self.assertIsNone(process.poll())
        self.assertEqual([name for name in self.files() if "orxprint" in name], [])
        process.kill()
        process.communicate(timeout=20)
        self.assertEqual([name for name in self.files() if not name.startswith(".")], ["a.eps", "slow.eps"])

    def test_an_ignored_signal_stays_ignored(self):
        self.write("slow.eps", SLOW_TO_PAINT)
        ignore = lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN)
        process = self.start("render", "slow.eps", *SLOWLY, faults=self.NAMED, preexec_fn=ignore)
        self.wait_for_temporary_file(process)
        process.send_signal(signal.SIGHUP)
        time.sleep(0.2)
        self.assertIsNone(process.poll())
        process.terminate()
        process.communicate(timeout=20)

    @unittest.skipUnless(CAN_UNSHARE, "needs a name space of its own")
    def test_the_first_process_of_a_container_obeys(self):
        self.write("slow.eps", SLOW_TO_PAINT)
        for number in (signal.SIGTERM, signal.SIGINT):
            process = subprocess.Popen(
                ["unshare", "-p", "--fork", ORXPRINT, "render", "slow.eps", *SLOWLY], cwd=self.folder
            )
            time.sleep(0.7)
            children = f"/proc/{process.pid}/task/{process.pid}/children"
            (first,) = pathlib.Path(children).read_text().split()
            os.kill(int(first), number)
            self.assertEqual(process.wait(timeout=20), 128 + number)


class Waiting(Faults):
    def within(self, seconds, status, *arguments, **options):
        begin = time.monotonic()
        process = self.start(*arguments, **options)
        try:
            self.assertEqual(process.wait(timeout=seconds), status, process.stderr.read())
        finally:
            process.kill()
            process.communicate()
        return time.monotonic() - begin

    def test_a_pipe_that_nobody_reads_counts_as_time(self):
        self.write("large.eps", LARGE)
        labelled = "".join(f"%%Page: {'x' * 90}{i} {i}\n" for i in range(1, 4000))
        self.write("labels.eps", "%!\n%%Pages: 3999\n" + labelled)
        os.mkfifo(self.folder / "nobody.svg")
        for arguments in (
            ["trace", "large.eps"],
            ["info", "labels.eps"],
            ["render", "large.eps", "-o", "-"],
            ["render", "large.eps", "-o", "nobody.svg"],
        ):
            with self.subTest(arguments=arguments):
                self.within(20, 4, *arguments, "--time-limit", "1")

    def test_a_slow_reader_gets_everything(self):
        self.write("large.eps", LARGE)
        whole = self.expect(0, "trace", "large.eps")
        process = self.start("trace", "large.eps", "--time-limit", "30")
        time.sleep(0.5)
        self.assertEqual(process.communicate(timeout=20)[0], whole)

    def test_interpreting_stops_after_300_seconds(self):
        self.write("endless.eps", ENDLESS)
        self.write("mine.eps", pages(2).replace(SQUARE, ENDLESS + SQUARE, 1))
        told = "orxprint: {}: stopped by the time limit\n"
        for name, arguments in [
            ("endless.eps", ["info"]),
            ("mine.eps", ["render", "-f", "none", "--pages", "1-"]),
        ]:
            begin = time.monotonic()
            self.expect(4, *arguments, name, clock_speed=100)
            self.assertGreater(time.monotonic() - begin, 2.9)
            self.assertEqual(self.told, told.format(name))
        for limit in ("none", "5000"):
            process = self.start("info", "endless.eps", "--time-limit", limit, clock_speed=200)
            with self.assertRaises(subprocess.TimeoutExpired):
                process.wait(timeout=4)
            process.kill()
            process.communicate()

    def test_waiting_for_others_counts_only_under_a_limit_that_was_given(self):
        self.write("large.eps", LARGE)
        whole = self.expect(0, "trace", "large.eps")
        for limit, status in (([], 0), (["--time-limit", "none"], 0), (["--time-limit", "300"], 4)):
            process = self.start("trace", "large.eps", *limit, clock_speed=200)
            time.sleep(3)
            traced = process.communicate(timeout=20)[0]
            self.assertEqual((process.returncode, traced == whole), (status, status == 0))
            writer = self.start("render", "-", *limit, clock_speed=200)
            time.sleep(3)
            try:
                writer.communicate(SMALL.encode(), timeout=20)
            except BrokenPipeError:
                pass
            self.assertEqual(writer.returncode, status)

    def test_one_clock_runs_for_all_pages(self):
        self.write("many.eps", pages(5000))
        limit = ["--time-limit", "1"]
        for arguments in (["-f", "none", "--pages", "1-"], ["-o", "all.pdf", "--pages", "1-"]):
            self.assertLess(self.within(20, 4, "render", "many.eps", *arguments, *limit), 10)

    def test_pages_are_asked_about_in_time_that_grows_with_them(self):
        boxes = "".join(f"%%Page: {i} {i}\n%%PageBoundingBox: 0 0 {i} 9\n" for i in range(1, 10_001))
        self.write("boxes.eps", "%!\n%%Pages: 10000\n" + boxes)
        begin = time.monotonic()
        described = self.expect(0, "info", "boxes.eps", "--units", "pt").decode()
        self.assertLess(time.monotonic() - begin, 5)
        self.assertIn("Page 10000 label: 10000\nPage 10000 size: 3527.78 x 3.175 mm", described)

    def test_a_sign_of_life_while_painting(self):
        self.write("slow.eps", SLOW_TO_PAINT)
        terminal, end = pty.openpty()
        process = self.start("render", "slow.eps", *SLOWLY, stderr=end)
        os.close(end)
        time.sleep(3)
        process.terminate()
        process.communicate(timeout=20)
        self.assertIn(b"slow.eps: interpreting, 1 s", os.read(terminal, 1 << 16))
        os.close(terminal)

    def test_files_are_counted_at_the_terminal(self):
        for name in ("a.eps", "b.eps", "c.eps"):
            self.write(name, ENDLESS if name == "b.eps" else SMALL)
        terminal, end = pty.openpty()
        arguments = ["a.eps", "b.eps", "c.eps", "-f", "none", "--jobs", "1", "--time-limit", "2"]
        process = self.start("render", *arguments, stderr=end)
        os.close(end)
        process.communicate(timeout=20)
        shown = os.read(terminal, 1 << 16)
        os.close(terminal)
        self.assertEqual(process.returncode, 4)
        self.assertRegex(shown, rb"\r\x1b\[Korxprint: 1 of 3 files, 1 s\r")
        self.assertTrue(shown.endswith(b"orxprint: 3 drawn (0:02)\r\n"), shown)


class Memory(Faults):
    def test_out_of_memory_is_4_whatever_the_output_is(self):
        self.write("long.eps", HEADER + "0 0 moveto\n" + "9 9 lineto\n" * 2_000_000 + "stroke\n")
        self.write("wide.eps", SMALL.replace("100 100", "10000 10000"))
        for name, arguments, room in [
            ("wide.eps", ["-f", "png", "-r", "72"], 200),
            ("wide.eps", ["-f", "png", "-r", "72", "-o", "-"], 200),
            ("long.eps", ["-f", "svg"], 80),
            ("long.eps", ["-f", "pdf"], 80),
            ("long.eps", ["-f", "pdf", "-o", "-"], 80),
        ]:
            with self.subTest(name=name, arguments=arguments):
                limit = lambda: resource.setrlimit(resource.RLIMIT_AS, (room << 20, room << 20))
                self.expect(4, "render", name, *arguments, preexec_fn=limit, message="out of memory")


class Failing(Faults):
    def test_one_file_fails_and_the_others_are_done(self):
        os.symlink("loop.svg", self.folder / "loop.svg")
        self.write("loop.eps", SMALL)
        long = self.write("n" * 252 + ".ep", SMALL)
        for name, message in [
            ("loop.eps", "orxprint: loop.eps: cannot write loop.svg: Too many levels"),
            (long, f"cannot write {'n' * 252}.svg: File name too long"),
            ("n" * 300, "File name too long"),
        ]:
            self.expect(1, "render", name, "a.eps", message=message)
            os.remove(self.folder / "a.svg")

    def test_a_working_folder_that_is_gone(self):
        os.mkdir(self.folder / "gone")
        leave = lambda: (os.chdir(self.folder / "gone"), os.rmdir(self.folder / "gone"))
        message = "orxprint: a.eps: no such file"
        self.expect(1, "render", "a.eps", "-o", "b.svg", preexec_fn=leave, message=message)
        os.mkdir(self.folder / "gone")
        full = str(self.folder / "a.eps")
        message = f"orxprint: {full}: cannot write b.svg: No such file or directory"
        self.expect(1, "render", full, "-o", "b.svg", preexec_fn=leave, message=message)

    def test_modules_that_are_none_end_with_5_and_the_cause(self):
        for name, message in [
            ("MARKER_IS_DATA", "not a module of the print framework"),
            ("FACTORY_THROWS", "throws when it is to make an interpreter: \\x1b[31mno parts left"),
            ("FACTORY_GIVES_NULL", "makes no interpreter"),
            ("LOADING_HANGS", "was not loaded; stopped by the time limit"),
        ]:
            module = str(FAULTS / f"{name}.so")
            arguments = ["trace", "a.eps", "--plugin", module, "--time-limit", "1"]
            self.assertEqual(self.expect(5, *arguments, message=f"{module}: {message}"), b"")
        self.expect(5, "info", "a.eps", "--plugin", "\x1b[31m.so", message="\\x1b[31m.so")

    def test_a_module_that_never_comes_back_is_left_behind_with_what_it_drew(self):
        hanging = ["a.eps", "--plugin", str(FAULTS / "RUN_HANGS.so"), "--time-limit", "0.5"]
        message = "a.eps: stopped by the time limit"
        traced = self.expect(4, "trace", *hanging, message=message)
        self.assertEqual(traced, b"SetLineWidth(1)\nMoveTo(0, 0)\nLineTo(10, 20)\n")
        self.expect(4, "render", *hanging, "-f", "svg", message=message)
        self.assertIn(b"<path", self.read("a.svg"))
        self.assertIn(b"Pages: not stated", self.expect(4, "info", *hanging, message=message))

    def test_what_hangs_in_one_document_leaves_the_others_their_turn(self):
        names = [f"{i}.eps" for i in range(5)]
        for name in names:
            self.write(name, SMALL)
        hanging = ["--plugin", str(FAULTS / "RUN_HANGS.so"), "--time-limit", "0.3", "--jobs", "2"]
        self.expect(4, "render", *names, *hanging, "-f", "none", "--report", "report.jsonl")
        results = [json.loads(line)["result"] for line in self.read("report.jsonl").splitlines()]
        self.assertEqual(results, ["limited"] * len(names))

    def test_how_a_pass_ended_is_told_once(self):
        self.write("two.eps", pages(2))
        silent = ["a.eps", "--plugin", str(FAULTS / "RUN_TELLS_NOTHING.so")]
        self.expect(1, "check", *silent, message="does not tell what it leaves out")
        self.expect(0, "render", *silent)
        self.assertNotIn("lost", self.told)
        module = ["two.eps", "--plugin", str(FAULTS / "RUN_TELLS_ITS_END.so")]
        for result, status, told in [
            (0, 0, ""),
            (2, 4, "stopped: memory runs low"),
            (3, 4, "a limit of the interpreter was met (stackoverflow) at byte 1234: what ran there is missing"),
            (4, 1, "cannot be read to its end"),
            (5, 4, "stopped: out of memory"),
            (6, 1, "stopped: the drawing device failed"),
        ]:
            told = told and f"orxprint: two.eps: {told}\n"
            environment = {"ORX_PASS_RESULT": str(result)}
            for command in (["trace"], ["info", "--json"], ["render", "-q", "--pages", "1,1"], ["render", "-f", "none"]):
                with self.subTest(result=result, command=command):
                    self.write("two.svg", "old")
                    said = self.expect(status, *command, *module, environment=environment)
                    self.assertEqual(self.told, told)
                    if command[0] == "trace":
                        self.assertEqual(said.count(b"LineTo"), 1)
                    if command[0] == "info":
                        (described,) = json.loads(said)
                        met = {"error": "stackoverflow", "byte": 1234}
                        self.assertEqual(described.get("limitMet"), met if result == 3 else None)
                    if command[:2] == ["render", "--pages"]:
                        self.assertEqual(self.read("two.svg") == b"old", status == 1)

    def test_answers_that_are_not_taken_are_told_once(self):
        names = [self.write(f"{i}.eps", SMALL) for i in range(3)]
        told = "orxprint: cannot write standard output: "
        for arguments in (["--help"], ["--version"], ["render", "--help"], ["info", *names]):
            with open("/dev/full", "wb") as full:
                self.expect(1, *arguments, stdout=full)
            self.assertEqual(self.told, told + "No space left on device\n")
            self.expect(1, *arguments, preexec_fn=lambda: os.close(1))
            self.assertEqual(self.told, told + "Bad file descriptor\n")
        closed, pipe = os.pipe()
        os.close(closed)
        ignore = lambda: signal.signal(signal.SIGPIPE, signal.SIG_IGN)
        self.expect(1, "info", *names, stdout=pipe, preexec_fn=ignore, restore_signals=False)
        os.close(pipe)
        self.assertEqual(self.told, told + "Broken pipe\n")

    def test_what_was_hardly_meant_is_told(self):
        self.write("three.eps", pages(3))
        self.write("-x.eps", SMALL)
        self.expect(2, "render", "-", "-", message="can be read only once")
        self.expect(2, "render", "-x.eps", message="orxprint: -x.eps: to name this file, write ./-x.eps")
        self.expect(0, "trace", "three.eps", "--page", "7", message="there is no page 7: the document has 3 pages")
        self.expect(0, "trace", "a.eps", "--page", "7")
        self.assertEqual(self.told, "")
        command = f"{ORXPRINT} render <(cat a.eps)"
        done = subprocess.run(["bash", "-c", command], cwd=self.folder, capture_output=True)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"say with -o where to", done.stderr)


class Security(Faults):
    def test_run_paths_are_whole(self):
        binaries = [ORXPRINT, *BUILD.glob("lib/*.so*"), *BUILD.glob("tests/orx*_tests")]
        for binary in binaries:
            listed = subprocess.run(["readelf", "-d", binary], capture_output=True, check=True).stdout
            for entries in re.findall(rb"\((?:RPATH|RUNPATH)\).*\[(.*)\]", listed):
                for entry in entries.split(b":"):
                    self.assertRegex(entry, rb"^(/|\$ORIGIN(/|$))", f"{binary}: {entries}")

    @unittest.skipUnless(CAN_UNSHARE, "needs a name space of its own")
    def test_without_proc_the_plugin_is_still_the_programs_own(self):
        decoy = self.folder / "lib/ORXPrintEPSInterpreter.so"
        for folder in ("lib", "lib/orxprint"):
            os.mkdir(self.folder / folder)
            (self.folder / folder / decoy.name).write_text("no library")
        os.mkdir(self.folder / "work")
        done = subprocess.run(
            ["unshare", "-m", "sh", "-c", f"umount -l /proc && exec {ORXPRINT} render ../a.eps -o b.svg"],
            cwd=self.folder / "work",
            # the loader cannot tell where the program lies either
            env={**os.environ, "LD_LIBRARY_PATH": str(BUILD / "lib")},
            capture_output=True,
            timeout=60,
        )
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertEqual(os.listdir(self.folder / "work"), ["b.svg"])


if __name__ == "__main__":
    unittest.main()
