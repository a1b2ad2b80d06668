#!/usr/bin/env python3
"""The reference pages of kivtool html in a real headless Chromium: the page's decoder against kivtool decode,
search over every register and parameter, keyboard selection, no console errors, no network requests, and a
screenshot of each page at 1280x800.

Usage: page_test.py KIVTOOL EXAMPLES_DIR OUT_DIR
Exit 77 (skipped) only when no browser can be started.
"""

import json
import random
import subprocess
import sys
import tempfile
from pathlib import Path

SKIP = 77
CASES = 1200
SEED = 5713
FLAGS = ("--headless --no-sandbox --disable-gpu --disable-dev-shm-usage --no-first-run "
         "--disable-background-networking --disable-component-update --disable-sync").split()


def start_browser(profile):
    try:
        from selenium import webdriver
        from selenium.webdriver.chrome.service import Service
    except ImportError as error:
        print(f"SKIP: python3-selenium is not installed ({error})")
        sys.exit(SKIP)
    options = webdriver.ChromeOptions()
    for flag in FLAGS:
        options.add_argument(flag)
    options.add_argument("--user-data-dir=" + profile)
    options.add_argument("--window-size=1280,800")
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    for binary in ("/usr/bin/chromium", "/usr/bin/chromium-browser", "/usr/bin/google-chrome"):
        if Path(binary).exists():
            options.binary_location = binary
            break
    driver_path = next((p for p in ("/usr/bin/chromedriver", "/usr/lib/chromium/chromedriver") if Path(p).exists()), None)
    try:
        service = Service(driver_path) if driver_path else Service()
        browser = webdriver.Chrome(service=service, options=options)
        browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                {"width": 1280, "height": 800, "deviceScaleFactor": 1, "mobile": False})
        return browser
    except Exception as error:  # no browser or driver on this machine
        print(f"SKIP: cannot start headless Chromium: {error}".splitlines()[0])
        sys.exit(SKIP)


class Failures:
    def __init__(self):
        self.messages = []

    def check(self, condition, message):
        if not condition:
            self.messages.append(message)
            print("FAIL: " + message)
        return condition


def kivtool(tool, *args):
    return subprocess.run([tool, *args], check=True, capture_output=True, text=True).stdout


def open_page(browser, path, failures, fragment=""):
    browser.get(path.resolve().as_uri() + fragment)
    ready = browser.execute_script(
        "return document.body.classList.contains('ready') && performance.getEntriesByName('kiv-ready').length")
    failures.check(ready, f"{path.name}: the page never became ready")
    errors = [entry for entry in browser.get_log("browser") if entry["level"] in ("SEVERE", "WARNING")]
    failures.check(not errors, f"{path.name}: console messages {errors}")
    requests = browser.execute_script(
        "return performance.getEntriesByType('resource').map(e => e.name)")
    failures.check(not requests, f"{path.name}: network requests {requests}")


def decode_cases(tool, ic_file, registers):
    """Seeded random (register, value, context) cases, each checked by one kivtool decode call per group: every
    pair of a call is decoded in the context of the others."""
    rng = random.Random(SEED)
    by_address = {r["address"]: r for r in registers}
    selectors = sorted({e["address"] for r in registers for v in r["variants"] for e in v["impactedBy"]
                        if e["address"] in by_address})
    layered = [r for r in registers if len(r["variants"]) > 1]
    cases = []
    while len(cases) < CASES:
        chosen = {}
        for address in selectors:
            if rng.random() < 0.7:
                chosen[address] = None
        for reg in rng.sample(layered, k=min(len(layered), rng.randint(1, len(layered)))):
            chosen[reg["address"]] = None
        for reg in rng.sample(registers, k=rng.randint(2, 12)):
            chosen[reg["address"]] = None
        pairs = []
        for address in chosen:
            reg = by_address[address]
            size = min(max(reg["size"], 1), 64)
            style = rng.random()
            value = 0 if style < 0.1 else (1 << size) - 1 if style < 0.2 else rng.getrandbits(size)
            pairs.append((reg["name"], value))
        output = kivtool(tool, "decode", "--json", str(ic_file), *[f"{name}={value:#x}" for name, value in pairs])
        expected = json.loads(output)["registers"]
        for index, (name, value) in enumerate(pairs):
            context = {other: v for other, v in pairs if other != name}
            cases.append({"register": name, "value": value, "context": context, "expected": expected[index]})
    return cases


def check_ic(browser, tool, ic_file, page, out_dir, failures):
    model = json.loads(kivtool(tool, "json", str(ic_file)))
    registers = model["registerSet"]["registers"]
    open_page(browser, page, failures)

    cases = decode_cases(tool, ic_file, registers)
    actual = browser.execute_script(
        "return arguments[0].map(c => window.kivDecode(c.register, c.value, c.context))",
        [{k: c[k] for k in ("register", "value", "context")} for c in cases])
    wrong = [(c, a) for c, a in zip(cases, actual) if a != c["expected"]]
    variants = sum(1 for c in cases if len(next(r for r in registers if r["name"] == c["register"])["variants"]) > 1)
    print(f"decode: {len(cases)} cases compared ({variants} of registers with several layouts), {len(wrong)} differ")
    for case, answer in wrong[:3]:
        print(json.dumps({"case": {k: case[k] for k in ("register", "value", "context")},
                          "kivtool": case["expected"], "page": answer}, indent=1))
    failures.check(not wrong, f"kivDecode differs from kivtool decode in {len(wrong)} of {len(cases)} cases")
    failures.check(variants > 100, f"only {variants} cases of registers with several layouts")

    # Search by name and by address (0x.., bare hex, decimal): the register's entry stays in the list.
    missing = browser.execute_script("""
        const search = document.querySelector('.search');
        const missing = [];
        for (const [name, queries] of arguments[0]) {
          for (const query of queries) {
            search.value = query;
            search.dispatchEvent(new Event('input'));
            const shown = [...document.querySelectorAll('#register-list li:not([hidden]) .name')].map(n => n.textContent);
            if (!shown.includes(name)) missing.push(name + ' by ' + query);
          }
        }
        return missing;""", [[r["name"], [r["name"], r["name"].lower(), f"0x{r['address']:02X}",
                                         f"{r['address']:x}", str(r["address"])]] for r in registers])
    failures.check(not missing, f"IC search misses {missing[:10]}")

    # Keyboard alone: type a name, Enter selects it; the fragment names the register.
    from selenium.webdriver.common.by import By
    from selenium.common.exceptions import TimeoutException
    from selenium.webdriver.common.keys import Keys
    from selenium.webdriver.support.ui import WebDriverWait
    target = next(r for r in registers if len(r["variants"]) > 1)
    search = browser.find_element(By.CSS_SELECTOR, ".search")
    search.clear()
    search.send_keys(target["name"], Keys.ENTER)
    heading = browser.execute_script("return [location.hash, document.querySelector('#register-view h2').textContent]")
    failures.check(heading == ["#" + target["name"], target["name"]], f"Enter in the search selects {heading}")
    search.send_keys(Keys.CONTROL, "a")
    search.send_keys(Keys.BACKSPACE, Keys.ARROW_DOWN, Keys.ARROW_DOWN)
    focused = browser.execute_script("return document.activeElement.closest('#register-list') !== null")
    failures.check(focused, "arrow keys move into the register list")
    browser.switch_to.active_element.send_keys(Keys.ENTER)
    second = "#" + registers[1]["name"]
    try:
        WebDriverWait(browser, 5).until(lambda b: b.execute_script("return location.hash") == second)
    except TimeoutException:
        pass
    selected = browser.execute_script("return location.hash")
    failures.check(selected == second, f"Enter on the list selects {selected}, not {second}")

    # A shared link opens its register, with a diagram and one card per layout.
    open_page(browser, page, failures, "#" + target["name"])
    shown = browser.execute_script("""return [document.querySelector('#register-view h2').textContent,
        document.querySelectorAll('#register-view .variant').length,
        document.querySelectorAll('#register-view table.bits').length]""")
    failures.check(shown == [target["name"], len(target["variants"]), len(target["variants"])],
                   f"the fragment #{target['name']} shows {shown}")
    browser.save_screenshot(str(out_dir / "page-ic.png"))

    # Editing a field in the decoder writes the register value.
    plain = next(r for r in registers if len(r["variants"]) == 1
                 and any(f["value"] and f["value"]["kind"] == "Unsigned" for f in r["variants"][0]["fields"]))
    open_page(browser, page, failures, "#" + plain["name"])
    encoded = browser.execute_script("""
        const value = document.querySelector('.decoder input.value');
        value.value = '0'; value.dispatchEvent(new Event('input'));
        const number = document.querySelector('.decoder input.num');
        if (!number) return null;
        number.value = '1'; number.dispatchEvent(new Event('change'));
        return document.querySelector('.decoder input.value').value;""")
    failures.check(encoded is not None and int(encoded, 16) != 0, f"editing a field gives the value {encoded}")


def check_module(browser, tool, module_file, page, out_dir, failures):
    model = json.loads(kivtool(tool, "json", str(module_file)))
    names = [p["name"] for block in model["axisParameters"] + model["globalParameters"] for p in block["parameters"]]
    open_page(browser, page, failures)
    browser.save_screenshot(str(out_dir / "page-module.png"))
    missing = browser.execute_script("""
        const search = document.querySelector('#parameters .search');
        const missing = [];
        for (const name of arguments[0]) {
          search.value = name;
          search.dispatchEvent(new Event('input'));
          const shown = [...document.querySelectorAll('#parameters tbody tr:not([hidden]) .pname strong')]
            .map(n => n.textContent);
          if (!shown.includes(name.split('\\\\x26').join('&'))) missing.push(name);
        }
        return missing;""", names)
    failures.check(names and not missing, f"module search misses {missing[:10]} of {len(names)}")
    order = browser.execute_script("""
        const search = document.querySelector('#parameters .search');
        search.value = ''; search.dispatchEvent(new Event('input'));
        document.querySelectorAll('#parameters th button')[1].click();
        document.querySelectorAll('#parameters th button')[1].click();
        return [...document.querySelectorAll('#parameters tbody tr')].map(r => Number(r.cells[1].textContent));""")
    failures.check(order == sorted(order, reverse=True), "the number column sorts descending on the second click")


def check_esi(browser, tool, esi_file, page, out_dir, failures):
    model = json.loads(kivtool(tool, "json", str(esi_file)))
    objects = [o["Name"] for s in model["EtherCATInfo"] for d in s["Descriptions"] for p in d["Device"]
               for o in p.get("Dictionary", [])]
    open_page(browser, page, failures)
    browser.save_screenshot(str(out_dir / "page-esi.png"))
    missing = browser.execute_script("""
        const search = document.querySelector('.search');
        const missing = [];
        for (const name of arguments[0]) {
          search.value = name; search.dispatchEvent(new Event('input'));
          const shown = [...document.querySelectorAll('tbody tr:not([hidden]) strong')].map(n => n.textContent);
          if (!shown.includes(name)) missing.push(name);
        }
        return missing;""", objects)
    failures.check(objects and not missing, f"ESI search misses {missing} of {len(objects)}")
    codes = browser.execute_script("return document.body.textContent")
    for section in model["EtherCATInfo"]:
        for device in section["Descriptions"]:
            code = f"0x{device['ProductCode']:08X}"
            failures.check(code in codes, f"the ESI page shows no product code {code}")


def main():
    if len(sys.argv) != 4:
        print(__doc__)
        return 2
    tool, examples, out_dir = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3])
    out_dir.mkdir(parents=True, exist_ok=True)
    files = {"ic": examples / "ic/kiv-ic-example.xml", "module": examples / "module/kiv-module-example.xml",
             "esi": examples / "esi/kiv-vendor-esi.xml"}
    pages = {}
    for kind, source in files.items():
        pages[kind] = out_dir / f"page-{kind}.html"
        kivtool(tool, "html", str(source), "-o", str(pages[kind]))
    failures = Failures()
    with tempfile.TemporaryDirectory() as profile:
        browser = start_browser(profile)
        try:
            check_ic(browser, tool, files["ic"], pages["ic"], out_dir, failures)
            check_module(browser, tool, files["module"], pages["module"], out_dir, failures)
            check_esi(browser, tool, files["esi"], pages["esi"], out_dir, failures)
        finally:
            browser.quit()
    print("screenshots: " + ", ".join(str(out_dir / f"page-{kind}.png") for kind in files))
    return 1 if failures.messages else 0


if __name__ == "__main__":
    sys.exit(main())
