#!/usr/bin/env python3
"""Puts the page, its style, its scripts and the interpreter into one HTML file.

  web/bundle.py --interpreter NAME --version VERSION --output FILE

The modules of web/page are joined in the order in which they import each other, into one scope, so
no two may declare the same name at their top level. The interpreter is NAME.js and NAME.wasm. A
content security policy names what of the file may run by its digest, and forbids every connection.
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


def main():
    parser = argparse.ArgumentParser()
    for option in ("--interpreter", "--version", "--output"):
        parser.add_argument(option, required=True)
    options = parser.parse_args()
    with open(options.interpreter + ".js", encoding="utf-8") as file:
        worker = file.read() + read("worker.js")
    with open(options.interpreter + ".wasm", "rb") as file:
        library = file.read()
    script, style = join_modules("app.js"), read("style.css")
    policy = ("default-src 'none'; base-uri 'none'; form-action 'none'; "
              f"script-src {digest(script)} 'wasm-unsafe-eval'; style-src {digest(style)}; "
              "img-src blob: data:; worker-src blob:")
    parts = {"POLICY": policy, "STYLE": style, "SCRIPT": script, "WORKER": packed(worker.encode()),
             "LIBRARY": packed(library), "VERSION": options.version}
    page = re.sub(r"@(POLICY|STYLE|SCRIPT|WORKER|LIBRARY|VERSION)@", lambda found: parts[found[1]],
                  read("page.html"))
    with open(options.output, "w", encoding="utf-8") as file:
        file.write(page)


main()
