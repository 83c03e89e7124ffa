#!/usr/bin/env python3
"""Puts the page, its style, its scripts and the interpreter into one HTML file.

  web/bundle.py [--interpreter NAME] --version VERSION --output FILE

The modules of web/page are joined in the order in which they import each other, into one scope, so
no two may declare the same name at their top level. The interpreter is NAME.js and NAME.wasm; without
it the page shows what is put into it and opens no files. A content security policy names what of
the file may run by its digest, and forbids every connection.
"""
import argparse
import base64
import hashlib
import os
import re
import zlib

PAGE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "page")
IMPORT = re.compile(r"^import\s[^;]*?from\s+'\./([\w-]+\.js)';\n", re.MULTILINE)
EXPORT = re.compile(r"^export\s+", re.MULTILINE)


def read(name):
    with open(os.path.join(PAGE, name), encoding="utf-8") as file:
        return file.read()


def join_modules(entry):
    joined, seen = [], set()

    def add(name):
        if name in seen:
            return
        seen.add(name)
        text = read(name)
        for needed in IMPORT.findall(text):
            add(needed)
        joined.append(EXPORT.sub("", IMPORT.sub("", text)))

    add(entry)
    return "(() => {\n'use strict';\n" + "".join(joined) + "})();\n"


def digest(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def packed(content):
    """As a browser's DecompressionStream takes it; letters that mean nothing to HTML."""
    return base64.b64encode(zlib.compress(content, 9)).decode()


def read_interpreter(name):
    """The worker's script and the library, packed."""
    with open(name + ".js", encoding="utf-8") as file:
        worker = file.read() + read("worker.js")
    with open(name + ".wasm", "rb") as file:
        return packed(worker.encode()), packed(file.read())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--interpreter")
    for option in ("--version", "--output"):
        parser.add_argument(option, required=True)
    options = parser.parse_args()
    worker, library = read_interpreter(options.interpreter) if options.interpreter else ("", "")
    script, style = join_modules("app.js"), read("style.css")
    policy = ("default-src 'none'; base-uri 'none'; form-action 'none'; img-src blob: data:; "
              f"style-src {digest(style)}; script-src {digest(script)}")
    if options.interpreter:
        policy += " 'wasm-unsafe-eval'; worker-src blob:"
    parts = {"POLICY": policy, "STYLE": style, "SCRIPT": script, "WORKER": worker,
             "LIBRARY": library, "VERSION": options.version}
    page = re.sub(r"@(POLICY|STYLE|SCRIPT|WORKER|LIBRARY|VERSION)@", lambda found: parts[found[1]],
                  read("page.html"))
    os.makedirs(os.path.dirname(os.path.abspath(options.output)), exist_ok=True)
    with open(options.output, "w", encoding="utf-8") as file:
        file.write(page)


main()
