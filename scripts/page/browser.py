"""Debian's Chromium without a window, spoken to over a pipe in its DevTools protocol: that needs no library."""

import base64
import json
import os
import subprocess
import tempfile

COMMAND = ("chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
           "--hide-scrollbars", "--force-color-profile=srgb", "--disable-background-networking",
           "--disable-component-update", "--remote-debugging-pipe")
INCH = 25.4  # millimetres


class Browser:
    """A browser with one page. What the page asks the network for is in `requests`, its complaints in `complaints`."""

    def __init__(self):
        self.profile = tempfile.TemporaryDirectory(prefix="tappora-page-", ignore_cleanup_errors=True)
        from_us, self.out = os.pipe()
        self.into, to_us = os.pipe()
        # The browser reads from descriptor 3 and writes to descriptor 4.
        self.process = subprocess.Popen(
            ("bash", "-c", f'exec 13<&{from_us} 14>&{to_us}; exec 3<&13 4>&14; exec "$@"', "bash", *COMMAND,
             f"--user-data-dir={self.profile.name}", "about:blank"),
            pass_fds=(from_us, to_us), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(from_us)
        os.close(to_us)
        self.rest, self.number, self.session = b"", 0, {}
        self.requests, self.complaints, self.loads = [], [], 0
        page = next(t for t in self.say("Target.getTargets")["targetInfos"] if t["type"] == "page")
        attached = self.say("Target.attachToTarget", targetId=page["targetId"], flatten=True)
        self.session = {"sessionId": attached["sessionId"]}
        for domain in ("Page", "Network", "Log"):
            self.say(f"{domain}.enable")

    def close(self):
        self.process.terminate()
        self.process.wait()
        self.profile.cleanup()

    def receive(self):
        while b"\0" not in self.rest:
            more = os.read(self.into, 1 << 20)
            if not more:
                raise SystemExit("check-page: chromium has ended")
            self.rest += more
        message, self.rest = self.rest.split(b"\0", 1)
        message = json.loads(message)
        method, parameters = message.get("method"), message.get("params", {})
        if method == "Network.requestWillBeSent":
            self.requests.append(parameters["request"]["url"])
        if method == "Log.entryAdded":
            self.complaints.append(parameters["entry"]["text"])
        self.loads += method == "Page.loadEventFired"
        return message

    def say(self, method, **parameters):
        """Sends a command and gives its result."""
        self.number += 1
        command = {"id": self.number, "method": method, "params": parameters, **self.session}
        data = json.dumps(command).encode() + b"\0"
        while data:
            data = data[os.write(self.out, data):]
        while (answer := self.receive()).get("id") != self.number:
            pass
        if "error" in answer:
            raise SystemExit(f"check-page: {method}: {answer['error']['message']}")
        return answer["result"]

    def show(self, url, width, height, dark, media="screen"):
        """Loads a page in a window of that size, in a theme. `media` is "" for what is then printed."""
        self.requests, self.complaints, self.loads = [], [], 0
        self.say("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        scheme = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self.say("Emulation.setEmulatedMedia", media=media, features=[scheme])
        self.say("Page.navigate", url=url)
        while not self.loads:
            self.receive()

    def evaluate(self, expression):
        """The value of a script's expression in the page; that of a promise when it is kept."""
        result = self.say("Runtime.evaluate", expression=expression, awaitPromise=True, returnByValue=True)
        if "exceptionDetails" in result:
            raise SystemExit(f"check-page: {result['exceptionDetails']}")
        return result["result"].get("value")

    def picture(self, path, height=None, scale=1):
        """The page as PNG, down to that height."""
        size = self.say("Page.getLayoutMetrics")["cssContentSize"]
        clip = {"x": 0, "y": 0, "width": size["width"], "height": height or size["height"], "scale": scale}
        data = self.say("Page.captureScreenshot", format="png", clip=clip, captureBeyondViewport=True)["data"]
        path.write_bytes(base64.b64decode(data))

    def print_to(self, path, width, height):
        """The page as PDF, on paper of a size in millimetres."""
        data = self.say("Page.printToPDF", paperWidth=width / INCH, paperHeight=height / INCH,
                        printBackground=False)["data"]
        path.write_bytes(base64.b64decode(data))
