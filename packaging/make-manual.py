#!/usr/bin/env python3
"""Writes the manual page and the shells' completions from the program's own table of options.

  packaging/make-manual.py ORXPRINT FOLDER

puts orxprint.1, orxprint.bash, _orxprint (zsh) and orxprint.fish into the folder.
"""
import json
import pathlib
import re
import subprocess
import sys

FILES = {"FILE", "OUT", "PATH", "[PATH]", "TEXT"}  # values that are names of files
CHECKS = "orxprint plugin --list 2>/dev/null | cut -d' ' -f1"  # the values of plugin --only

ENVIRONMENT = """\
.TP
.B ORXPrintOpenPSToMM
Exactly 0 makes the interpreter work in PostScript units instead of millimetres, as
.B --units pt
does.
"""
SEE_ALSO = ".BR gs (1)\n"


def choices(option):
    """The words of a value like mm|pt; none for a placeholder."""
    words = option["value"].split("|")
    return [word for word in words if word.islower()] if len(words) > 1 else []


def flags(option):
    return [name for name in option["names"] if name.startswith("-")]


def shown(command):
    """The options of a command, operands aside."""
    return [option for option in command["options"] if flags(option)]


def operands(command):
    return [option for option in command["options"] if not flags(option)]


# The manual page.

def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return re.sub(r"(?m)^([.'])", r"\\&\1", text)


def synopsis(command):
    words = [roff(operand["names"][0]) + (" ..." if operand["repeats"] else "")
             for operand in operands(command)]
    return (f".B orxprint {command['name']}\n" + "".join(f".I {word}\n" for word in words) +
            ".RI [ options ]\n")


def option_entry(option):
    names = ", ".join(f"\\fB{roff(name)}\\fR" for name in flags(option))
    value = f" \\fI{roff(option['value'])}\\fR" if option["value"] else ""
    return f".TP\n{names}{value}\n{roff(option['description'])}.\n"


def notes(text):
    """Paragraphs as they are; what is indented is shown line by line."""
    out = []
    for paragraph in text.split("\n\n"):
        lines = [line for line in paragraph.split("\n") if line]
        prose = [line for line in lines if not line.startswith("  ")]
        shown_lines = [line.strip() for line in lines if line.startswith("  ")]
        out.append(".PP\n" + "\n".join(map(roff, prose)) + "\n")
        if shown_lines:
            out.append(".RS\n.nf\n" + "\n".join(map(roff, shown_lines)) + "\n.fi\n.RE\n")
    return "".join(out)


def manual(table):
    commands = table["commands"]
    brief = " ".join(table["description"].split())
    text = [f'.TH ORXPRINT 1 "" "orxprint {table["version"]}" "User Commands"\n',
            ".SH NAME\norxprint \\- draw, describe and trace Encapsulated PostScript\n",
            ".SH SYNOPSIS\n", ".br\n".join(map(synopsis, commands)),
            ".SH DESCRIPTION\n", roff(brief) + "\n"]
    for command in commands:
        text += [f".SH {command['name'].upper()}\n", roff(command["description"]) + ".\n",
                 notes(command["notes"])]
        text += map(option_entry, [o for o in shown(command) if o not in table["options"]])
    text += [".SH COMMON OPTIONS\n", *map(option_entry, shown(table)),
             ".SH NOTES\n", notes(table["notes"]),
             ".SH ENVIRONMENT\n", ENVIRONMENT, ".SH SEE ALSO\n", SEE_ALSO]
    return "".join(text)


# Completions. Without a command there are commands and options; with one its options and files.

def bash_values(command):
    for option in shown(command):
        names = "|".join(flags(option))
        if choices(option):
            yield f"    {names}) COMPREPLY=($(compgen -W '{' '.join(choices(option))}' -- \"$word\")); return ;;\n"
        elif option["value"] in FILES:
            yield f"    {names}) COMPREPLY=($(compgen -f -- \"$word\")); return ;;\n"
        elif option["names"] == ["--only"]:
            yield f"    {names}) COMPREPLY=($(compgen -W \"$({CHECKS})\" -- \"$word\")); return ;;\n"
        elif option["value"]:
            yield f"    {names}) return ;;\n"


def bash(table):
    names = " ".join(command["name"] for command in table["commands"])
    words = " ".join(name for option in shown(table) for name in flags(option))
    cases = "".join(
        f"  {command['name']})\n    case $before in\n"
        + "".join("  " + line for line in bash_values(command)) + "    esac\n"
        f"    words='{' '.join(n for o in shown(command) for n in flags(o))}'\n    ;;\n"
        for command in table["commands"])
    return f"""# bash completion of orxprint
_orxprint() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} command='' words i
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; ++i)); do
    case ${{COMP_WORDS[i]}} in {names.replace(' ', '|')}) command=${{COMP_WORDS[i]}}; break ;; esac
  done
  case $command in
{cases}  *) words='{names} {words}' ;;
  esac
  if [[ $word == -* || -z $command ]]; then
    COMPREPLY=($(compgen -W "$words" -- "$word"))
  else
    COMPREPLY=($(compgen -f -- "$word"))
  fi
}}
complete -o filenames -F _orxprint orxprint
"""


def zsh_quoted(text):
    return re.sub(r"([\[\]:'\\])", lambda m: "'\\''" if m[1] == "'" else "\\" + m[1], text)


def zsh_option(option):
    names = flags(option)
    every = "{" + ",".join(names) + "}" if len(names) > 1 else names[0]
    value = ""
    if choices(option):
        value = f":{zsh_quoted(option['value'])}:({' '.join(choices(option))})"
    elif option["value"] in FILES:
        value = (":" if option["value"].startswith("[") else "") + ":file:_files"
    elif names == ["--only"]:
        value = ':check:(${${(f)"$(orxprint plugin --list 2>/dev/null)"}%% *})'
    elif option["value"]:
        value = f":{zsh_quoted(option['value'])}: "
    exclusive = f"'({' '.join(names)})'" if len(names) > 1 else ""
    return f"{exclusive}{every}'[{zsh_quoted(option['description'])}]{value}'"


def zsh(table):
    names = "\n".join(f"      '{c['name']}:{zsh_quoted(c['description'])}'" for c in table["commands"])
    cases = "".join(
        f"    {command['name']}) _arguments \\\n"
        + "".join(f"      {zsh_option(option)} \\\n" for option in shown(command))
        + "      '*:file:_files' ;;\n"
        for command in table["commands"])
    return f"""#compdef orxprint
_orxprint() {{
  local context state line curcontext=$curcontext
  _arguments -C \\
{"".join(f"    {zsh_option(option)} " + chr(92) + chr(10) for option in shown(table))}    '1:command:->command' '*::argument:->argument'
  case $state in
  command)
    local -a commands=(
{names}
    )
    _describe command commands ;;
  argument)
    case $line[1] in
{cases}    esac ;;
  esac
}}
_orxprint "$@"
"""


def fish_option(option, condition):
    words = ["complete -c orxprint", f"-n '{condition}'"]
    for name in flags(option):
        words.append(f"-l {name[2:]}" if name.startswith("--") else f"-s {name[1:]}")
    if choices(option):
        words.append(f"-x -a '{' '.join(choices(option))}'")
    elif option["value"] in FILES:
        words.append("-F" if option["value"].startswith("[") else "-r -F")
    elif flags(option) == ["--only"]:
        words.append(f'-x -a "({CHECKS})"')
    elif option["value"]:
        words.append("-x")
    quoted = option["description"].replace("'", "\\'")
    return " ".join(words) + f" -d '{quoted}'\n"


def fish(table):
    names = " ".join(command["name"] for command in table["commands"])
    text = ["# fish completion of orxprint\n"]
    for command in table["commands"]:
        text.append(f"complete -c orxprint -n 'not __fish_seen_subcommand_from {names}' -f"
                    f" -a {command['name']} -d '{command['description']}'\n")
    for option in shown(table):
        text.append(fish_option(option, f"not __fish_seen_subcommand_from {names}"))
    for command in table["commands"]:
        for option in shown(command):
            text.append(fish_option(option, f"__fish_seen_subcommand_from {command['name']}"))
    return "".join(text)


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    answer = subprocess.run([sys.argv[1], "--option-table"], check=True, capture_output=True)
    table = json.loads(answer.stdout)
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for name, write in (("orxprint.1", manual), ("orxprint.bash", bash), ("_orxprint", zsh),
                        ("orxprint.fish", fish)):
        (folder / name).write_text(write(table), encoding="utf-8")
    return 0


sys.exit(main())
