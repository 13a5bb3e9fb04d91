#!/usr/bin/env python3
"""Open reference.html in headless Chromium, type in its search box, check what stays visible.

Usage: check_reference_page.py REFERENCE_HTML EXPORTS_DIR SCREENSHOT_PNG

Drives Debian's chromium through chromedriver (package chromium-driver) over the WebDriver
protocol with nothing but the standard library. The expected entries come from the list of
exports itself (tools/reference_text.py), not from the page: every documented entry is
shown at first; typing keeps exactly the entries whose names or text hold every word typed
(a follower's name finds the entry that documents it); Escape clears the search. The page
must load nothing from elsewhere. A screenshot of a search is written for a person to look at.
"""
import base64
import json
import os
import re
import socket
import subprocess
import sys
import time
import urllib.request

import gen_exports
import reference_text

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class WebDriver:
    def __init__(self, driver="chromedriver", browser="/usr/bin/chromium"):
        with socket.socket() as s:
            s.bind(("127.0.0.1", 0))
            self.port = s.getsockname()[1]
        self.process = subprocess.Popen([driver, f"--port={self.port}"],
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        deadline = time.time() + 20
        while True:
            try:
                self.call("GET", "/status")
                break
            except OSError:
                if time.time() > deadline:
                    raise
                time.sleep(0.1)
        args = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                "--disable-background-networking", "--disable-component-update", "--disable-sync",
                "--window-size=1280,900"]
        caps = {"capabilities": {"alwaysMatch": {
            "browserName": "chrome", "goog:chromeOptions": {"binary": browser, "args": args}}}}
        self.session = self.call("POST", "/session", caps)["sessionId"]

    def call(self, method, path, body=None):
        data = json.dumps(body).encode() if body is not None else None
        req = urllib.request.Request(f"http://127.0.0.1:{self.port}{path}", data=data, method=method,
                                     headers={"Content-Type": "application/json"})
        with urllib.request.urlopen(req, timeout=60) as r:
            return json.loads(r.read()).get("value")

    def s(self, method, path, body=None):
        return self.call(method, f"/session/{self.session}{path}", body)

    def script(self, source):
        return self.s("POST", "/execute/sync", {"script": source, "args": []})

    def close(self):
        try:
            self.s("DELETE", "")
        finally:
            self.process.terminate()
            self.process.wait(timeout=10)


VISIBLE = ("return [].slice.call(document.querySelectorAll('article.entry'))"
           ".filter(function(e){return e.offsetParent!==null;}).map(function(e){return e.id;});")


def expected(entries, words):
    out = set()
    for e in entries:
        text = " ".join(e.names + [e.all_text()]).lower()
        if all(w in text for w in words):
            out.add(e.name)
    return out


def main(argv):
    if len(argv) != 4:
        print(__doc__, file=sys.stderr)
        return 2
    page, exports_dir, shot = argv[1:]
    decls, records, record_docs, _ = gen_exports.read_list(exports_dir)
    entries = reference_text.build(decls, records, record_docs, [])
    with open(page, encoding="utf-8") as f:
        source = f.read()
    failures = []
    outside = re.findall(r'(?:src|href)\s*=\s*"(?!#)([^"]*)"', source)
    if outside:
        failures.append(f"the page refers to other files or sites: {outside[:5]}")

    # Searches: a full name, a part of a name, a follower's name, description words,
    # two words together, nothing at all.
    follower = next((n for e in entries for n in e.follower_notes), None)
    described = next(e for e in entries if e.paragraphs)
    word = max(re.findall(r"[a-z]{6,}", described.paragraphs[0].lower()), key=len, default="the")
    searches = [decls[0]["name"], decls[len(decls) // 2]["name"][1:5], word, f"{word} {decls[0]['name'][1:4]}",
                "qqzzxq"]
    if follower:
        searches.append(follower)

    driver = WebDriver()
    try:
        driver.s("POST", "/url", {"url": "file://" + os.path.abspath(page)})
        box = driver.s("POST", "/element", {"using": "css selector", "value": "#search"})[ELEMENT]
        shown = set(driver.script(VISIBLE))
        if shown != {e.name for e in entries}:
            failures.append(f"at first {len(shown)} entries are shown, not all {len(entries)}")
        for text in searches:
            driver.s("POST", f"/element/{box}/clear", {})
            driver.s("POST", f"/element/{box}/value", {"text": text})
            shown = set(driver.script(VISIBLE))
            want = expected(entries, text.lower().split())
            if shown != want:
                failures.append(f"typing '{text}': shown {sorted(shown)[:6]}... ({len(shown)}), "
                                f"expected {sorted(want)[:6]}... ({len(want)})")
            else:
                print(f"typing '{text}': {len(shown)} entries shown, as expected")
            count = driver.script("return document.getElementById('count').textContent;")
            if f"{len(want)} of {len(entries)}" not in count:
                failures.append(f"typing '{text}': the count says '{count}'")
        driver.s("POST", f"/element/{box}/clear", {})
        driver.s("POST", f"/element/{box}/value", {"text": decls[0]["name"] + "\ue00c"})  # Escape
        if len(driver.script(VISIBLE)) != len(entries):
            failures.append("Escape did not bring every entry back")
        driver.s("POST", f"/element/{box}/value", {"text": searches[0]})
        os.makedirs(os.path.dirname(os.path.abspath(shot)), exist_ok=True)
        with open(shot, "wb") as f:
            f.write(base64.b64decode(driver.s("GET", "/screenshot")))
        print(f"screenshot of the search '{searches[0]}': {shot}")
    finally:
        driver.close()
    for f in failures:
        print(f"FAIL: {f}")
    print(f"{len(entries)} entries, {len(searches)} searches, {len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
