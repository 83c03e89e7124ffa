"""The manual page and the completions, which are made from the program's table of options, and that the documents
know what is in it.

The variable ORXPRINT_BUILD names the build tree. Shells that this machine does not have are passed over.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["ORXPRINT_BUILD"])
PROGRAM = BUILD / "bin/orxprint"
MANUAL = BUILD / "packaging/manual"

# What is typed, and words that must be among what is offered, or the only ones.
COMPLETIONS = (
    ("orxprint re", {"render"}),
    ("orxprint render --ar", {"--area"}),
    ("orxprint render --area d", {"drawing"}),
    ("orxprint render a.eps -f p", {"pdf", "png"}),
    ("orxprint info --js", {"--json"}),
    ("orxprint plugin --only loa", {"load"}),
)

# zsh completes only for somebody who types at a terminal.
ZSH = r"""
zmodload zsh/zpty
print "PS1='%%'; fpath=($1 \$fpath); autoload -U compinit; compinit -D -u
       bindkey '^I' complete-word; setopt no_beep" >$3/rc
zpty z "TERM=dumb zsh -f -i"
zpty -w z "source $3/rc; print ready''now"
zpty -r -m z line '*readynow*'
zpty -n -w z "$2"$'\t'
answer=
for i in {1..30}; do sleep 0.05; zpty -r -t z more && answer+=$more; done
print -r -- "$answer"
"""


def run(*command, **options):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True,
                          env={**os.environ, "PATH": f"{BUILD / 'bin'}:{os.environ['PATH']}"},
                          **options).stdout


class Manual(unittest.TestCase):
    def setUp(self):
        self.table = json.loads(run(PROGRAM, "--option-table"))

    def test_the_page_renders_and_names_every_option(self):
        if not shutil.which("groff"):
            self.skipTest("no groff here")
        done = subprocess.run(["groff", "-man", "-Tascii", "-ww", "-P-c", MANUAL / "orxprint.1"],
                              capture_output=True, text=True, check=True)
        self.assertEqual(done.stderr, "")
        text = re.sub(".\b", "", done.stdout)  # bold and underlined are struck over
        for command in self.table["commands"]:
            self.assertIn(f"orxprint {command['name']}", text)
            for option in command["options"]:
                for name in option["names"]:
                    self.assertIn(name, text)

    def test_help_of_every_command_has_examples(self):
        for command in self.table["commands"]:
            self.assertIn(f"Examples:\n  orxprint {command['name']}", command["notes"])

    def test_bash_completes(self):
        script = ("source \"$0\"; COMP_WORDS=($1); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _orxprint;"
                  " printf '%s\\n' \"${COMPREPLY[@]}\"")
        for typed, words in COMPLETIONS:
            offered = run("bash", "-c", script, MANUAL / "orxprint.bash", typed).split()
            self.assertEqual(set(offered), words, typed)

    def test_fish_completes(self):
        if not shutil.which("fish"):
            self.skipTest("no fish here")
        for typed, words in COMPLETIONS:
            lines = run("fish", "--no-config", "-c",
                        f"source {MANUAL / 'orxprint.fish'}; complete -C '{typed}'").splitlines()
            self.assertEqual({line.split("\t")[0] for line in lines}, words, typed)

    def test_zsh_completes(self):
        if not shutil.which("zsh"):
            self.skipTest("no zsh here")
        for typed, words in COMPLETIONS:
            if len(words) == 1:
                with tempfile.TemporaryDirectory() as folder:
                    answer = run("zsh", "-f", "-c", ZSH, "zsh", MANUAL, typed, folder)
                self.assertIn(words.copy().pop(), answer.rsplit("%", 1)[-1], typed)

    def test_the_documents_name_every_command_option_and_file(self):
        common = {name for option in self.table["options"] for name in option["names"]}
        for command in self.table["commands"]:
            page = (TOP / f"docs/{command['name']}.md").read_text()
            for option in command["options"]:
                self.assertTrue(common & set(option["names"]) or
                                any(name in page for name in option["names"]), option["names"])
        checks = [line.split(None, 1) for line in run(PROGRAM, "plugin", "--list").splitlines()]
        rows = re.findall(r"^\| `(.*?)` \| (.*) \|$", (TOP / "docs/plugin.md").read_text(), re.MULTILINE)
        self.assertEqual([tuple(check) for check in checks], rows)
        for page in (*TOP.glob("*.md"), *TOP.glob("docs/*.md")):
            prose = re.sub("```.*?```", "", page.read_text(), flags=re.DOTALL)
            for target in re.findall(r"\]\(([^)#:]+)\)", prose):
                self.assertTrue((page.parent / target).exists(), f"{page}: {target}")


if __name__ == "__main__":
    unittest.main()
