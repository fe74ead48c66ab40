#!/usr/bin/python3
"""The page of `evtlogctl report` in a real browser: counts, filter, checkboxes, sorting, times,
texts from a hostile log; without a complaint on the console, and without a request to anywhere.

usage: check_report_page.py EVTLOGCTL SEL_FILE
"""

import collections
import json
import subprocess
import sys
import tempfile
from pathlib import Path

from selenium import webdriver
from selenium.common.exceptions import SessionNotCreatedException
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

ENTRIES_OFFSET, ENTRY_SIZE = 6064, 1496
EVENT_TYPE, CAPABILITIES, RESOURCE_TAG = 36, 496, 512
RDR_TYPE, ID_STRING = 780, 1232
DATA_LENGTH, DATA = 8, 9  # of a text
SENSOR, SENSOR_RDR, TEXT = 2, 2, 3
HOSTILE = b"</script><script>window.harm=1</script><img src=x onerror=window.harm=1><b>\"'&amp;"
DRIVER = "/usr/bin/chromedriver"
ZONE = "Asia/Kolkata"  # +05:30, all year round
ATTEMPTS = 5
PATIENCE = 240  # seconds, for a script of this test in the page


def start_browser(folder):
    """The browser has a minute to start; on a busy machine it may take more than one."""
    for attempt in range(ATTEMPTS):
        try:
            browser = try_browser(Path(folder, f"profile{attempt}"))
        except SessionNotCreatedException:
            if attempt == ATTEMPTS - 1:
                raise
        else:
            browser.set_script_timeout(PATIENCE)
            return browser


def try_browser(profile):
    options = Options()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--window-size=1200,900", f"--user-data-dir={profile}"):
        options.add_argument(argument)
    # Its own start page would still be asking for its parts when the log of requests begins.
    options.add_experimental_option(
        "prefs", {"session": {"restore_on_startup": 4, "startup_urls": ["about:blank"]}})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    browser = webdriver.Chrome(service=Service(DRIVER), options=options)
    browser.execute_cdp_cmd("Emulation.setTimezoneOverride", {"timezoneId": ZONE})
    return browser


def requests_since(browser):
    """The addresses that the browser asked for since the last call."""
    addresses = []
    for line in browser.get_log("performance"):
        message = json.loads(line["message"])["message"]
        if message["method"] == "Network.requestWillBeSent":
            addresses.append(message["params"]["request"]["url"])
    return addresses


class Page:
    def __init__(self, browser, file):
        self.browser = browser
        requests_since(browser)
        browser.get_log("browser")
        browser.get(file.as_uri())
        self.address = file.as_uri()

    def by_id(self, name):
        return self.browser.find_element(By.ID, name)

    def text(self, name):
        return self.by_id(name).text

    def cells(self):
        """All rows that the table shows, each the texts of its cells."""
        return self.browser.execute_script(
            "return [...document.querySelectorAll('#entries tbody tr')]"
            ".map(row => [...row.cells].map(cell => cell.textContent))")

    def column(self, number):
        return [row[number] for row in self.cells()]

    def filter(self, text):
        box = self.by_id("filter")
        box.clear()
        box.send_keys(text or " ", *([] if text else [Keys.BACKSPACE]))

    def box(self, severity):
        return self.browser.find_element(By.CSS_SELECTOR, f"#severities input[value={severity}]")

    def sort(self, column):
        self.browser.find_element(By.CSS_SELECTOR, f"button[data-column={column}]").click()

    def expect_silence(self):
        """Nothing on the console, nothing asked for but the page, no element that fetches."""
        assert self.browser.get_log("browser") == []
        asked = requests_since(self.browser)
        assert asked == [self.address], asked
        assert self.browser.execute_script(
            "return performance.getEntriesByType('resource').length") == 0
        assert self.browser.execute_script(
            "return document.querySelectorAll('img, link, iframe, object, [src], [href]')"
            ".length") == 0
        assert self.browser.execute_script("return window.harm") is None


def severity_of(entry):
    return entry["Event"]["SeverityName"].removeprefix("SAHPI_").lower()


def row_of(entry):
    """What the table shows of an entry as list prints it."""
    time = entry["Event"]["TimestampTime"]
    source = entry["Rpt"]["ResourceTag"]["Text"] if entry["Rpt"] else "-"
    return [str(entry["EntryId"]), f"{time[:10]} {time[11:19]}Z", severity_of(entry), source,
            entry["Message"]]


def check_entries(page, rows):
    """The table says what list says, newest first, 200 rows at once."""
    assert page.text("shown") == "234 of 234 entries"
    assert page.cells() == rows[:200]
    assert page.text("more") == "Show 34 more of 34"
    page.by_id("more").click()
    assert not page.by_id("more").is_displayed()
    assert page.cells() == rows and len(rows) == 234


def check_filter(page, rows):
    """Words in any order, phrases as they stand, large and small letters alike."""
    for text, words in (("bMC", ["bmc"]), ("power supply  bmc", ["power", "supply", "bmc"]),
                        ('"power supply" 0x8', ["power supply", "0x8"]), ("234", ["234"]),
                        ("2024-02-20 critical", ["2024-02-20", "critical"])):
        page.filter(text)
        wanted = [row for row in rows if all(word in " ".join(row).lower() for word in words)]
        assert 0 < len(wanted) < 200, text
        assert page.cells() == wanted, text
        assert page.text("shown") == f"{len(wanted)} of 234 entries"
    page.filter('"supply power"')
    assert page.cells() == [] and page.text("shown") == "0 of 234 entries"
    page.filter("")
    assert page.text("shown") == "234 of 234 entries"


def check_severities(page, listed):
    by_name = collections.Counter(severity_of(entry) for entry in listed)
    boxes = page.browser.find_elements(By.CSS_SELECTOR, "#severities input")
    assert {box.get_attribute("value") for box in boxes} == set(by_name)
    page.box("informational").send_keys(Keys.SPACE)  # by the keyboard
    assert not page.box("informational").is_selected()
    assert "informational" not in page.column(2)
    assert page.text("shown") == f"{234 - by_name['informational']} of 234 entries"
    page.box("minor").click()
    assert set(page.column(2)) == {"critical", "major"}
    page.box("informational").click()
    page.box("minor").click()
    assert page.text("shown") == "234 of 234 entries"
    for name, number in by_name.items():
        assert f"{name} {number}" in page.text("legend"), page.text("legend")


def check_sorting(page):
    headings = {name: page.browser.find_element(By.CSS_SELECTOR, f"button[data-column={name}]")
                .find_element(By.XPATH, "..") for name in ("number", "severity", "time", "message")}
    assert headings["number"].get_attribute("aria-sort") == "descending"
    page.sort("severity")
    assert page.column(2)[:7] == ["critical"] * 4 + ["major"] * 3
    assert headings["severity"].get_attribute("aria-sort") == "ascending"
    assert headings["number"].get_attribute("aria-sort") is None
    page.sort("severity")
    assert page.column(2)[0] == "informational"
    page.sort("time")
    assert page.column(1) == sorted(page.column(1))
    page.sort("message")
    assert page.column(4) == sorted(page.column(4))
    page.sort("number")
    assert page.column(0)[:3] == ["1", "2", "3"]
    page.sort("number")


def check_times(page):
    assert "2024-02-20 02:41:35Z" in page.text("facts")
    page.by_id("zone").click()
    assert "2024-02-20 08:11:35+05:30" in page.text("facts"), page.text("facts")
    assert all(time.endswith("+05:30") for time in page.column(1))
    page.by_id("zone").click()


def check_rankings(page):
    sensors = page.browser.find_elements(By.CSS_SELECTOR, "#sensors li")
    assert len(sensors) == 10
    assert page.text("sensors-rest") == "and 5 others with 5 entries"
    first = sensors[0].find_element(By.TAG_NAME, "button")
    count = sensors[0].find_element(By.TAG_NAME, "span").text
    first.click()
    assert len(page.cells()) == int(count) == 48
    page.filter("")
    fill = page.browser.execute_script(
        "const fill = document.getElementById('fill');"
        "return fill.firstElementChild.offsetWidth / fill.clientWidth")
    assert abs(fill - 0.0234) < 0.003, fill
    slots = page.browser.find_elements(By.CSS_SELECTOR, "#chart g")
    assert 50 <= len(slots) <= 100
    assert len(page.browser.find_elements(By.CSS_SELECTOR, "#chart rect.critical")) >= 1


def make_hostile(log, text, entry):
    """An entry whose source and sensor have that name."""
    begin = ENTRIES_OFFSET + (entry - 1) * ENTRY_SIZE
    log[begin + EVENT_TYPE] = SENSOR
    log[begin + CAPABILITIES] = 1
    log[begin + RDR_TYPE] = SENSOR_RDR
    for buffer in (RESOURCE_TAG, ID_STRING):
        at = begin + buffer
        log[at] = TEXT
        log[at + DATA_LENGTH] = len(text)
        log[at + DATA:at + DATA + len(text)] = text


def shown_as(text):
    """As list shows a name: what is no printable ASCII is a dot."""
    return "".join(chr(byte) if 0x20 <= byte <= 0x7E else "." for byte in text)


def check_hostile(browser, tool, log, folder):
    contents = bytearray(log.read_bytes())
    texts = [HOSTILE, HOSTILE + bytes(range(128)), bytes(range(128, 256)), b"a\"b <i>x</i>",
             b"<!--<script>", b"\\u003C\\\"]}", b"${x}`'\n\r"]
    for place, text in enumerate(texts):
        make_hostile(contents, text, 234 - place)
    hostile = Path(folder, "hostile</title>.dat".replace("/", "%"))
    hostile.write_bytes(contents)
    file = Path(folder, "hostile.html")
    subprocess.run([tool, "report", "-o", file, hostile], check=True)
    page = Page(browser, file)
    rows = page.cells()
    for place, text in enumerate(texts):
        assert rows[place][3] == shown_as(text), rows[place]
        assert rows[place][4].startswith(shown_as(text) + ": ")
    names = [element.text for element in browser.find_elements(By.CSS_SELECTOR, "#sources button")]
    assert any(name.startswith("</script>") for name in names), names
    page.filter("window.harm=1")
    assert len(page.cells()) == 2
    page.expect_silence()


def check_left_out(browser, tool, log, folder):
    file = Path(folder, "short.html")
    subprocess.run([tool, "report", "-n", "30", "-o", file, log], check=True)
    page = Page(browser, file)
    assert page.text("shown") == "30 of 30 entries"
    assert "204 older ones are counted above" in page.text("left-out")
    assert "234 of 10,000" in page.text("facts")
    page.expect_silence()


def check_policy(browser, tool, log, folder):
    """What is put into the page, by whatever hole, is not run and fetches nothing."""
    file = Path(folder, "forged.html")
    page = subprocess.run([tool, "report", "-o", "-", log], check=True, capture_output=True).stdout
    forged = (b"<script>window.harm=1</script><img src='http://localhost:9/x'"
              b" onerror='window.harm=1'><style>body{background:red}</style></body>")
    file.write_bytes(page.replace(b"</body>", forged))
    forged_page = Page(browser, file)
    assert browser.execute_script("return window.harm") is None
    assert "rgb(255, 0, 0)" not in browser.execute_script(
        "return getComputedStyle(document.body).backgroundColor")
    assert len(browser.get_log("browser")) >= 3  # the browser says what it did not do
    assert forged_page.text("shown") == "234 of 234 entries"


def main():
    tool, sel = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder, "root")
        subprocess.run([tool, "--root", root, "import", sel], check=True, capture_output=True)
        log = next((root / "evtlog").glob("*.dat"))
        lines = subprocess.run([tool, "list", "-o", "json", log], check=True, capture_output=True)
        listed = [json.loads(line) for line in lines.stdout.splitlines()]
        file = Path(folder, "report.html")
        subprocess.run([tool, "report", "-o", file, log], check=True)
        browser = start_browser(folder)
        try:
            page = Page(browser, file)
            rows = [row_of(entry) for entry in reversed(listed)]
            check_entries(page, rows)
            check_filter(page, rows)
            check_severities(page, listed)
            check_sorting(page)
            check_times(page)
            check_rankings(page)
            page.expect_silence()
            check_hostile(browser, tool, log, folder)
            check_left_out(browser, tool, log, folder)
            check_policy(browser, tool, log, folder)
        finally:
            browser.quit()
    print("the page does what it says")


if __name__ == "__main__":
    main()
