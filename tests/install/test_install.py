"""What is installed works away from the build tree, and hosts can be built with it alone.

The variable ORXPRINT_BUILD names the build tree. It is installed once, and the tree is moved before
it is used, so that nothing may remember where it was.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

TOP = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["ORXPRINT_BUILD"])
SAMPLE = TOP / "samples/bearing-plate.eps"
NOT_WARNINGS_OF_OURS = ["-Werror", "-Wall", "-Wshadow", "-ffp-contract"]


def run(*command, cwd="/", **options):
    return subprocess.run([str(part) for part in command], cwd=cwd, check=True, text=True,
                          capture_output=True, **options).stdout


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        run("cmake", "--install", BUILD, "--prefix", cls.folder / "first")
        cls.prefix = (cls.folder / "first").rename(cls.folder / "moved")
        cls.plugin = cls.prefix / "lib/orxprint/ORXPrintEPSInterpreter.so"

    def pkg_config(self, *what):
        variables = dict(os.environ, PKG_CONFIG_PATH=str(self.prefix / "lib/pkgconfig"))
        return run("pkg-config", *what, "orxprint", env=variables).split()

    def build_with_cmake(self):
        source = shutil.copytree(TOP / "examples/minimal-host", self.folder / "host",
                                 dirs_exist_ok=True)
        run("cmake", "-S", source, "-B", source / "build", f"-DCMAKE_PREFIX_PATH={self.prefix}",
            "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON")
        run("cmake", "--build", source / "build")
        return source / "build"

    def test_the_program_draws(self):
        run(self.prefix / "bin/orxprint", "render", SAMPLE, "-o", self.folder / "plate.png")
        self.assertTrue((self.folder / "plate.png").read_bytes().startswith(b"\x89PNG"))

    def test_no_file_remembers_the_trees_that_it_came_from(self):
        for file in self.prefix.rglob("*"):
            if not file.is_file():
                continue
            for tree in (TOP, BUILD, self.folder / "first"):
                self.assertNotIn(str(tree).encode(), file.read_bytes(), file)

    def test_each_header_stands_alone_under_its_users_warnings(self):
        top = self.prefix / "include/orxprint"
        headers = sorted(top.rglob("*.h"))
        self.assertGreater(len(headers), 20)
        for header in headers:
            run("g++", "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only",
                *self.pkg_config("--cflags"), "-x", "c++", "-",
                input=f'#include "{header.relative_to(top)}"\n')

    def test_a_host_built_with_cmake_takes_none_of_our_options_and_draws(self):
        build = self.build_with_cmake()
        commands = json.loads((build / "compile_commands.json").read_text())
        for option in NOT_WARNINGS_OF_OURS + [str(TOP)]:
            self.assertNotIn(option, commands[0]["command"])
        drawing = run(build / "minimal-host", SAMPLE)
        paths = xml.etree.ElementTree.fromstring(drawing).findall("{*}path")
        trace = run(self.prefix / "bin/orxprint", "trace", SAMPLE).splitlines()
        painted = [call for call in trace if call.startswith(("SetLineWidth", "FillArea"))]
        self.assertGreater(len(painted), 10)
        self.assertEqual(len(paths), len(painted))

    def test_a_host_built_with_cmake_says_why_it_fails(self):
        host = self.build_with_cmake() / "minimal-host"
        endless = self.folder / "endless.eps"
        endless.write_text("%!PS\n%%BoundingBox: 0 0 9 9\n/a {a a} def a\n")
        for arguments, reason in (
            ([], "usage"),
            ([self.folder / "none.eps"], "No such file"),
            ([SAMPLE, self.folder / "none.so"], "could not be loaded"),
            ([endless], "drawn in part only"),
        ):
            ended = subprocess.run([host, *arguments], capture_output=True, text=True)
            self.assertEqual(ended.returncode, 1, arguments)
            self.assertIn(reason, ended.stderr)

    def test_the_programs_of_the_page_on_embedding_run(self):
        page = (TOP / "docs/embedding.md").read_text()
        programs = [text for text in re.findall("```cpp\n(.*?)```", page, re.DOTALL) if "int main" in text]
        self.assertEqual(len(programs), 2)
        answers = []
        for text in programs:
            (self.folder / "page.cpp").write_text(text)
            run("g++", "-std=c++20", self.folder / "page.cpp", "-o", self.folder / "page",
                *self.pkg_config("--cflags", "--libs"), f"-Wl,-rpath,{self.prefix}/lib")
            answers.append(run(self.folder / "page", self.plugin, TOP / "samples/still-life.eps",
                               cwd=self.folder))
        self.assertRegex(answers[0], r"^[\d.]+ x [\d.]+ mm\n\d+ lines, \d+ areas\n$")
        self.assertIn("image-1.ppm at", answers[1])
        self.assertTrue((self.folder / "image-1.ppm").read_bytes().startswith(b"P6 "))

    def test_pkg_config_tells_the_same(self):
        program = self.folder / "with-pkg-config"
        plugin = self.pkg_config("--variable=plugin")[0]
        self.assertTrue(os.path.samefile(plugin, self.plugin))
        run("g++", "-std=c++20", f'-DORXPRINT_PLUGIN="{plugin}"', TOP / "examples/minimal-host/main.cpp",
            "-o", program, *self.pkg_config("--cflags"), *self.pkg_config("--libs"),
            f"-Wl,-rpath,{self.prefix}/lib")
        self.assertIn("</svg>", run(program, SAMPLE))

    @unittest.skipUnless(shutil.which("dpkg") and os.geteuid() == 0, "needs dpkg and root")
    def test_the_debian_package_installs_into_a_clean_root_and_draws(self):
        run("cpack", "-G", "DEB", "-B", self.folder / "packages", cwd=BUILD)
        package, = (self.folder / "packages").glob("*.deb")
        root = self.folder / "root"
        (root / "var/lib/dpkg/updates").mkdir(parents=True)
        (root / "var/lib/dpkg/info").mkdir()
        (root / "var/lib/dpkg/status").touch()
        # What it depends on is looked for among this machine's own packages.
        for each in run("dpkg-deb", "-f", package, "Depends").split(","):
            name = each.split()[0]
            self.assertIn("installed", run("dpkg-query", "-W", "-f", "${db:Status-Status}", name))
        run("dpkg", f"--root={root}", "--force-depends", "--force-script-chrootless", "-i", package)
        drawing = run(root / "usr/bin/orxprint", "render", SAMPLE, "-f", "svg", "-o", "-")
        self.assertIn("</svg>", drawing)
        for name in ("man/man1/orxprint.1", "bash-completion/completions/orxprint",
                     "thumbnailers/orxprint.thumbnailer", "doc/orxprint/embedding.md"):
            self.assertTrue((root / "usr/share" / name).is_file(), name)
        run("dpkg", f"--root={root}", "--force-script-chrootless", "--purge", "orxprint")
        self.assertFalse((root / "usr/bin/orxprint").exists())

    def test_another_version_is_refused(self):
        project = self.folder / "newer"
        project.mkdir()
        (project / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(Newer LANGUAGES CXX)\n"
            "find_package(ORXPrint 2.0 REQUIRED)\n")
        with self.assertRaises(subprocess.CalledProcessError) as refused:
            run("cmake", "-S", project, "-B", project / "build",
                f"-DCMAKE_PREFIX_PATH={self.prefix}")
        self.assertIn("1.0.0", refused.exception.stderr)


if __name__ == "__main__":
    unittest.main()
