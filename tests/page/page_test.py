#!/usr/bin/env python3
"""The report page in headless Chromium: page_test.py BRENU EXAMPLES [FOLDER for screenshots]."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

BRENU, EXAMPLES = sys.argv[1], pathlib.Path(sys.argv[2])
SCREENSHOTS = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else None


def browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless", "--no-sandbox", "--disable-dev-shm-usage", "--window-size=1280,900"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.driver = browser()

    @classmethod
    def tearDownClass(cls):
        cls.driver.quit()
        cls.folder.cleanup()

    def open(self, name, *options, status=1):
        page = pathlib.Path(self.folder.name) / (name + ".html")
        run = subprocess.run(
            [BRENU, "adjust", "--summary", "--html", page, *options, EXAMPLES / (name + ".txt")],
            capture_output=True,
        )
        self.assertEqual(run.returncode, status, run.stderr)
        self.driver.get(page.as_uri())

    def tearDown(self):
        self.assertEqual(self.driver.get_log("browser"), [])
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                self.assertRegex(message["params"]["request"]["url"], r"^(file:|data:,)")

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def click(self, element):
        # Without waiting until a smooth scroll has ended.
        self.driver.execute_script(
            "arguments[0].dispatchEvent(new MouseEvent('click', {bubbles: true}))", element)

    def column(self, section, number):
        return [c.text for c in self.all(f"#{section} tbody td:nth-child({number})")]

    def test_verdict_stands_on_the_first_screen(self):
        self.open("closed-traverse", status=0)
        self.assertEqual(self.find(".verdict.passed strong").text, "Passed")
        self.open("blunders")
        verdict = self.find(".verdict")
        self.assertIn("T10 - T05", verdict.text)
        self.assertLess(verdict.rect["y"] + verdict.rect["height"], 900)

    def test_tables_sort_and_filter(self):
        self.open("blunders")
        heading = self.find("#plane-points th:nth-child(7) button")
        heading.send_keys(Keys.ENTER)  # by keyboard
        errors = [float(t) for t in self.column("plane-points", 7) if t != "-"]
        self.assertEqual(errors, sorted(errors))
        self.click(heading)
        errors = [float(t) for t in self.column("plane-points", 7) if t != "-"]
        self.assertEqual(errors, sorted(errors, reverse=True))
        self.find("#plane-observations input").send_keys("T05 distance")
        self.assertEqual(set(self.column("plane-observations", 1)), {"distance"})
        self.assertTrue(
            all("T05" in pair for pair in zip(self.column("plane-observations", 2),
                                              self.column("plane-observations", 3))))

    def test_links_between_sketch_and_tables(self):
        self.open("blunders")
        names = self.column("plane-points", 1)
        row = self.all("#plane-points tbody tr")[names.index("T10")]
        self.click(row)
        point = row.get_attribute("data-p")
        drawn = self.find(f'svg [data-point="{point}"]')
        self.assertIn("selected", drawn.get_attribute("class"))
        other = self.all("#plane-points tbody tr")[names.index("T21")].get_attribute("data-p")
        self.click(self.find(f'svg [data-point="{other}"]'))
        self.assertEqual(self.find("#plane-points tr.selected td").text, "T21")
        self.click(self.find('svg [data-line="0"]'))
        self.assertEqual(self.find("tr.selected").get_attribute("data-l"), "0")

    def test_a_large_network_turns_pages(self):
        path = pathlib.Path(self.folder.name) / "large.txt"
        side = 30
        lines = ["[PT]"]
        lines += [f"P{i},{'01' if i == 0 else '00'},,,{'100' if i == 0 else ''}" for i in range(side**2)]
        lines.append("[OBS]")
        for i in range(side**2):
            lines += [f"P{i},P{j},,1000,0.001," for j in (i + 1, i + side) if j < side**2]
        path.write_text("\n".join(lines) + "\n")
        page = path.with_suffix(".html")
        subprocess.run([BRENU, "adjust", "--no-verdict", "--html", page, path], capture_output=True)
        self.driver.get(page.as_uri())
        self.assertEqual(len(self.all("#heights-points tbody tr")), 200)
        self.click(self.find("#heights-points .tools button[aria-label='Next page']"))
        self.assertEqual(self.column("heights-points", 1)[0], "P200")
        self.assertIn("/ 900", self.find("#heights-points [role=status]").text)

    def test_chinese_and_narrow(self):
        self.open("levelling", "--lang", "zh")
        self.assertEqual(self.find(".verdict strong").text, "\u672a\u901a\u8fc7")
        self.driver.set_window_size(390, 844)
        width = self.driver.execute_script("return document.documentElement.scrollWidth")
        self.driver.set_window_size(1280, 900)
        self.assertLessEqual(width, 500)  # the least that a headless window has

    def test_screenshots(self):
        for width in (390, 820, 1280) if SCREENSHOTS else ():
            self.open("blunders")
            self.driver.set_window_size(width, 3000)
            self.driver.save_screenshot(str(SCREENSHOTS / f"blunders-{width}.png"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
