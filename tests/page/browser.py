"""Browsers for the tests: Chromium by selenium and its driver, Firefox by its own remote protocol, Marionette."""
import base64
import json
import os
import shutil
import socket
import subprocess
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service

WAIT = 30                               # seconds until something must have happened
CHROMIUM = shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")
DRIVER = shutil.which("chromedriver")
FIREFOX = shutil.which("firefox-esr") or shutil.which("firefox")


def wait_for(condition, what):
    """Waits until the condition holds, and answers its value."""
    end = time.monotonic() + WAIT
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"in vain waited for {what}")


class Chromium(webdriver.Chrome):
    """Headless Chromium that logs its console and its network, and saves downloads into a folder."""

    def __init__(self, downloads):
        options = Options()
        options.binary_location = CHROMIUM
        for switch in ("--headless=new", "--disable-gpu", "--window-size=1280,900", "--force-prefers-reduced-motion"):
            options.add_argument(switch)
        if os.getuid() == 0:
            options.add_argument("--no-sandbox")        # it does not start for root otherwise
        options.add_experimental_option("prefs", {"download.default_directory": downloads})
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        super().__init__(service=Service(DRIVER), options=options)
        self.downloads = downloads

    def resize(self, width, height):
        """Sets the size of the window's inside."""
        self.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                             {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 600})

    def requests(self):
        """The addresses that were asked for since the last call."""
        found = []
        for entry in self.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                found.append(message["params"]["request"]["url"])
        return found

    def downloaded(self, name):
        """The content of a file once it is saved; it is removed."""
        path = os.path.join(self.downloads, name)
        wait_for(lambda: os.path.exists(path), name)
        with open(path, "rb") as file:
            content = file.read()
        os.remove(path)
        return content

    def printed(self):
        """The page as a PDF file."""
        answer = self.execute_cdp_cmd("Page.printToPDF", {"printBackground": True})
        return base64.b64decode(answer["data"])


class Firefox:
    """Headless Firefox. Its protocol: texts of JSON with their length in front."""

    def __init__(self):
        self.profile = tempfile.mkdtemp(prefix="varnolix-firefox-")
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = free.getsockname()[1]
        with open(os.path.join(self.profile, "user.js"), "w", encoding="utf-8") as file:
            file.write(f'user_pref("marionette.port", {port});\n')
        command = [FIREFOX, "--headless", "--no-remote", "--marionette", "--profile", self.profile]
        self.process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.socket = wait_for(lambda: self.connected(port), "Firefox")
        self.stream = self.socket.makefile("rb")
        self.count = 0
        self.answer()
        self.command("WebDriver:NewSession", {})

    @staticmethod
    def connected(port):
        try:
            return socket.create_connection(("127.0.0.1", port), timeout=WAIT)
        except OSError:
            return None

    def answer(self):
        length = b""
        while not length.endswith(b":"):
            length += self.stream.read(1)
        return json.loads(self.stream.read(int(length[:-1])))

    def command(self, name, parameters):
        self.count += 1
        text = json.dumps([0, self.count, name, parameters]).encode()
        self.socket.sendall(str(len(text)).encode() + b":" + text)
        _, _, error, result = self.answer()
        if error:
            raise AssertionError(f"{name}: {error['message']}")
        return result

    def get(self, address):
        self.command("WebDriver:Navigate", {"url": address})

    def execute_script(self, script):
        return self.command("WebDriver:ExecuteScript", {"script": script, "args": []})["value"]

    def quit(self):
        try:
            self.command("Marionette:Quit", {"flags": ["eForceQuit"]})
        finally:
            self.stream.close()
            self.socket.close()
            try:
                self.process.wait(WAIT)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
            shutil.rmtree(self.profile, ignore_errors=True)
