#!/usr/bin/env python3
"""Opens the page for browsers in Firefox: what is in it is drawn, what is dropped on it, too, and a click
on a line lights up what it drew.

  ORXPRINT_PAGE=FILE ORXPRINT=PROGRAM tests/web/test_firefox.py

Debian has no driver for Firefox, so this speaks the browser's own protocol for being driven: JSON
messages, each behind its length, over a socket.
"""
import base64
import json
import shutil
import socket
import subprocess
import tempfile
import time
import unittest

from page import CROSSING, DROP, LOSSY, PAGE, SECONDS

FIREFOX = shutil.which("firefox-esr") or shutil.which("firefox")


class Firefox:
    def __init__(self):
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = free.getsockname()[1]
        self.folder = tempfile.TemporaryDirectory()
        with open(self.folder.name + "/user.js", "w", encoding="utf-8") as settings:
            settings.write(f'user_pref("marionette.port", {port});\n')
        self.process = subprocess.Popen(
            [FIREFOX, "--headless", "--no-remote", "--marionette", "--profile", self.folder.name],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.socket = self.connect(port)
        self.stream = self.socket.makefile("rb")
        self.receive()  # who is there
        self.count = 0
        self.command("WebDriver:NewSession", capabilities={})

    def connect(self, port):
        end = time.monotonic() + SECONDS
        while True:
            try:
                return socket.create_connection(("127.0.0.1", port), timeout=SECONDS)
            except OSError:
                if time.monotonic() > end:
                    raise
                time.sleep(0.1)

    def receive(self):
        length = b""
        while not length.endswith(b":"):
            length += self.stream.read(1)
        return json.loads(self.stream.read(int(length[:-1])))

    def command(self, name, **arguments):
        self.count += 1
        message = json.dumps([0, self.count, name, arguments]).encode()
        self.socket.sendall(b"%d:%s" % (len(message), message))
        _, _, error, result = self.receive()
        if error:
            raise RuntimeError(error["message"])
        return result

    def run(self, script, *arguments):
        return self.command("WebDriver:ExecuteScript", script=script, args=arguments)["value"]

    def wait(self, script, expected):
        end = time.monotonic() + SECONDS
        while (found := self.run(script)) != expected:
            if time.monotonic() > end:
                raise AssertionError(f"{found!r} is not {expected!r}")
            time.sleep(0.05)

    def quit(self):
        self.process.terminate()
        self.process.wait()
        self.stream.close()
        self.socket.close()
        self.folder.cleanup()


@unittest.skipUnless(FIREFOX, "Firefox is not there")
class FirefoxTest(unittest.TestCase):
    def setUp(self):
        self.browser = Firefox()
        self.addCleanup(self.browser.quit)
        self.browser.command("WebDriver:Navigate", url=PAGE.as_uri())

    def drop(self, name, data):
        self.browser.run(DROP, [[name, base64.b64encode(data).decode()]])

    def test_files_are_drawn_and_lines_light_up(self):
        self.drop("crossing.eps", CROSSING)
        self.browser.wait("return document.getElementById('page-number').textContent", "1 / 1")
        self.browser.wait("return document.getElementById('picture').naturalWidth > 0", True)
        self.browser.run("document.querySelector('#source [data-number=\"6\"]').click()")
        self.browser.wait("return document.querySelectorAll('#sheet .found').length", 1)
        self.drop("lossy.eps", LOSSY)
        self.browser.wait("return document.querySelectorAll('#findings button').length", 3)


if __name__ == "__main__":
    unittest.main()
