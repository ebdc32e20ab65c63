#!/usr/bin/env python3
"""The page in a browser, from the file system: page_test.py BRENU.HTML."""
import json
import pathlib
import sys
import tempfile
import time
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

PAGE = pathlib.Path(sys.argv.pop()).resolve()
PASSED = {"closed-traverse", "trilateration", "unoriented-traverse"}


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        options = Options()
        options.binary_location = "/usr/bin/chromium"
        for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu",
                         "--window-size=1400,900", "--lang=en-US"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        cls.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        cls.folder = tempfile.TemporaryDirectory()
        cls.driver.execute_cdp_cmd("Browser.setDownloadBehavior",
                                   {"behavior": "allow", "downloadPath": cls.folder.name})

    @classmethod
    def tearDownClass(cls):
        cls.driver.quit()
        cls.folder.cleanup()

    def setUp(self):
        self.driver.get(PAGE.as_uri())
        self.driver.execute_async_script(
            "brenu.store = () => {}; const done = arguments[0], r = indexedDB.open('brenu', 1);"
            "r.onsuccess = () => { const d = r.result.transaction('jobs', 'readwrite');"
            "d.objectStore('jobs').clear(); d.oncomplete = () => { r.result.close(); done(); }; };")
        self.driver.get(PAGE.as_uri())

    def tearDown(self):
        self.assertEqual([], self.driver.get_log("browser"))

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def wait(self, what, script, *values):
        end = time.monotonic() + 30
        while time.monotonic() < end:
            result = self.driver.execute_script(f"return {script}", *values)
            if result:
                return result
            time.sleep(0.05)
        self.fail(f"waited in vain for {what}")

    # The verdict of what was asked for last.
    def verdict(self):
        self.wait("the engine", "!brenu.isWaiting && brenu.engine.job === null && brenu.verdict !== null")
        return self.driver.execute_script("return brenu.verdict")

    def open(self, name):
        self.find(f"[data-example={name}]").click()
        return self.verdict()

    def tab(self, name):
        self.find(f"#tab-{name}").click()

    # The field of an observation.
    def field(self, station, target, key):
        self.tab("observations")
        return self.driver.execute_script(
            "const n = brenu.job.observations.findIndex((o) => o.from === arguments[0] && o.to === arguments[1]);"
            "brenu.observations.reveal(n, arguments[2]); return document.activeElement",
            station, target, key)

    def type(self, field, text):
        field.send_keys(Keys.CONTROL, "a")
        field.send_keys(text)

    def saved(self, kind, ending):
        self.find("#save").click()
        self.wait("the menu", "document.querySelector('[data-output=\"' + arguments[0] + '\"]')", kind).click()
        end = time.monotonic() + 20
        while time.monotonic() < end:
            files = list(pathlib.Path(self.folder.name).glob("*" + ending))
            if files:
                text = files[0].read_text(encoding="utf-8")
                files[0].unlink()
                return text
            time.sleep(0.05)
        self.fail(f"nothing was saved as {kind}")

    def test_examples_have_their_verdicts(self):
        examples = self.driver.execute_script("return Object.keys(brenu.examples)")
        for name in examples:
            with self.subTest(name):
                self.setUp()
                verdict = self.open(name)
                self.assertEqual(name in PASSED, verdict["passed"], verdict["reasons"])
                self.assertIn(verdict["headline"], self.find("#panel-result").text)

    def test_edit_changes_the_verdict_and_undo_brings_it_back(self):
        self.assertTrue(self.open("closed-traverse")["passed"])
        station, target, distance = self.driver.execute_script(
            "const o = brenu.job.observations.find((o) => o.distance !== ''); return [o.from, o.to, o.distance]")
        field = self.field(station, target, "distance")
        self.type(field, str(float(distance) + 0.5))
        self.assertFalse(self.verdict()["passed"])
        self.assertTrue(self.find("#unsaved").is_displayed())
        field.send_keys(Keys.CONTROL, "z")
        self.assertTrue(self.verdict()["passed"])
        self.find("#redo").click()
        self.assertFalse(self.verdict()["passed"])

    def test_suspect_is_left_out_by_a_click(self):
        first = self.open("blunders")["reasons"][0]
        station, target = first["names"][:2]
        field = self.field(station, target, "direction")
        field.find_element(By.XPATH, "following-sibling::button").click()
        reasons = self.verdict()["reasons"]
        self.assertNotEqual(first["names"], reasons[0]["names"] if reasons else [])
        self.assertNotIn(f"\n{station},{target},{field.get_attribute('value')}", self.saved("project", ".txt"))

    def test_edits_survive_a_reload_and_are_asked_about(self):
        self.open("levelling")
        row = self.driver.execute_script("return brenu.job.observations[0]")
        self.type(self.field(row["from"], row["to"], "dh"), "7.5")
        self.verdict()
        time.sleep(0.6)
        self.driver.refresh()
        self.wait("the job", "window.brenu && brenu.hasJob")
        self.verdict()
        self.assertEqual("7.5", self.driver.execute_script("return brenu.job.observations[0].dh"))
        self.driver.execute_script("brenu.open('other.txt', '')")
        self.find("#ask button[value=keep]").click()
        self.assertEqual("levelling.txt", self.find("#file-name").text)
        self.assertIn(",7.5,", self.saved("project", ".txt"))
        self.assertFalse(self.find("#unsaved").is_displayed())

    def test_finding_leads_to_its_line(self):
        self.open("levelling")
        text = self.driver.execute_script("return textOfJob(brenu.job)")
        lines = text.split("\n")
        number = lines.index("[OBS]") + 2
        lines.insert(number - 1, "nobody,nowhere,,10.0,1.0,")
        self.tab("text")
        self.driver.execute_script(
            "const a = brenu.source.area; a.value = arguments[0]; a.dispatchEvent(new Event('input'))",
            "\n".join(lines))
        self.wait("the refusal", "!brenu.isReadable")
        self.tab("points")
        self.find("#notes li.error button").click()
        area = "brenu.source.area"
        chosen = self.driver.execute_script(
            f"return {area}.value.slice({area}.selectionStart, {area}.selectionEnd)")
        self.assertEqual("nobody,nowhere,,10.0,1.0,", chosen)
        self.driver.execute_script("brenu.step(-1)")
        self.verdict()
        self.assertTrue(self.driver.execute_script("return brenu.isReadable"))

    def test_variants_are_compared(self):
        self.open("levelling")
        self.tab("compare")
        self.find("#panel-compare button").click()
        self.verdict()
        new = self.driver.execute_script("return brenu.job.points.find((p) => p.type === '00').name")
        known = self.driver.execute_script("return brenu.job.points.findIndex((p) => p.type === '01')")
        self.driver.execute_script(
            "const p = brenu.job.points[arguments[0]];"
            "brenu.edit(jobEdits.set(brenu.job, 'points', arguments[0], 'h', String(Number(p.h) + 1)))", known)
        self.verdict()
        self.tab("compare")
        self.wait("the differences", "document.querySelector('#heights-differences tr.flag') !== null")
        self.assertIn(new, self.find("#heights-differences").text)

    # A at X 200, Y 100, B due east of it, C 173.205 m south and 100 m higher.
    def open_book(self):
        book = ("110001+0000000A 84..10+00100000 85..10+00200000 86..10+00010000 88..10+00001500\n"
                "110002+0000000B 21.322+10000000 22.322+10000000 31..00+00100000 87..10+00001500\n"
                "110003+0000000C 21.322+20000000 22.323+06000000 31..00+00200000 51....+0000+000\n")
        with tempfile.NamedTemporaryFile("w", suffix=".gsi") as file, \
             tempfile.NamedTemporaryFile("w", suffix=".csv") as control:
            file.write(book)
            file.flush()
            control.write("A,200.0,100.0,10.0\nB,200.0,200.0,10.0\n")
            control.flush()
            self.find("#chooser").send_keys(file.name)
            self.verdict()
            self.find("#control-chooser").send_keys(control.name)
            self.wait("the known point", "brenu.job.points.some((p) => p.name === 'B' && p.type === '10')")
        self.verdict()

    def sight_of_c(self):
        self.verdict()
        return self.driver.execute_script("return brenu.job.observations.find((o) => o.to === 'C')")

    def test_field_book_is_reduced_with_known_points(self):
        self.open_book()
        points = {p["name"]: p for p in json.loads(self.saved("json", ".json"))["plane"]["points"]}
        self.assertAlmostEqual(200.0 - 173.2050808, points["C"]["x"], 4)
        self.assertAlmostEqual(100.0, points["C"]["y"], 4)

    def test_steps_of_the_reduction_are_chosen(self):
        self.open_book()
        self.find("#steps summary").click()
        step = {key: self.find(f"[data-step={key}]") for key in ("scale", "projectionScale", "wavelength", "pressure")}
        step["scale"].send_keys("1000")
        self.assertAlmostEqual(173.2050808 * 1.001, float(self.sight_of_c()["distance"]), 5)
        step["projectionScale"].send_keys("0.5")
        self.assertAlmostEqual(173.2050808 * 1.001 / 2, float(self.sight_of_c()["distance"]), 5)
        # What cannot be is marked, stays and is not used.
        step["wavelength"].send_keys("-1")
        self.assertEqual("true", step["wavelength"].get_attribute("aria-invalid"))
        self.type(step["scale"], Keys.DELETE)
        self.type(step["projectionScale"], Keys.DELETE)
        self.assertAlmostEqual(173.2050808, float(self.sight_of_c()["distance"]), 5)
        self.assertEqual("-1", step["wavelength"].get_attribute("value"))
        # Light is faster in air thinner than the instrument assumed: 0.28 ppm for each hPa.
        step["pressure"].send_keys("1000")
        self.assertAlmostEqual(13.25 * 0.28, (float(self.sight_of_c()["distance"]) / 173.2050808 - 1) * 1e6, 0)
        # Heights: 200 m cos 60 deg, instrument and prism 1.5 m high.
        box = self.find("#steps [data-step=trigonometricHeights]")
        box.click()
        self.wait("both parts", "!document.querySelector('[data-part=heights]').hidden")
        self.verdict()
        self.find("[data-part=heights]").click()
        self.assertAlmostEqual(100.0, float(self.sight_of_c()["dh"]), 2)
        self.find("#undo").click()
        self.find("#undo").click()
        self.verdict()
        self.assertFalse(box.is_selected())
        self.assertFalse(self.find("[data-part=heights]").is_displayed())

    # There and back of 0.5 km each differ by 20 mm, with 1 mm for 1 km.
    def test_misfits_before_the_adjustment(self):
        self.driver.execute_script("brenu.open('lines.txt', arguments[0])",
                                   "[PARAM]\nMO:2\nMS:0.005\nMR:0.000005\n\n[PT]\nA,01,,,100\nB,01,,,101\nP,00,,,\n\n"
                                   "[OBS]\nA,B,,500,1.0,\nB,A,,500,-1.02,\nA,P,,500,0.5,\nP,B,,500,0.5,\n")
        self.verdict()
        self.wait("the table", "document.querySelector('#there-and-back tr.flag') !== null")
        rows = self.driver.execute_script(
            "return ['there-and-back', 'observed-minus-computed'].map((id) =>"
            "[...document.getElementById(id).querySelectorAll('tbody tr')].map((r) => [...r.cells].map((c) => c.textContent)))")
        self.assertEqual([["height difference", "A", "B", "1.0000", "-20.00", "-20.00"]], rows[0])
        self.assertEqual(["height difference", "B", "A", "-1.0200", "-20.00"], rows[1][0][:5])
        # By keys alone: the next row, then what can be done about it.
        self.driver.execute_script("document.querySelector('#observed-minus-computed tbody tr').focus()")
        keys = webdriver.ActionChains(self.driver)
        keys.send_keys(Keys.ENTER, Keys.ENTER).perform()
        self.verdict()
        self.assertEqual(["dh"], self.driver.execute_script(
            "return brenu.job.observations.find((o) => o.from === 'B' && o.to === 'A').out"))

    def test_colours_and_language_hold_without_a_job(self):
        paper = "return getComputedStyle(document.body).backgroundColor"
        light = self.driver.execute_script(paper)
        self.find("#theme").click()
        dark = self.driver.execute_script(paper)
        self.assertNotEqual(light, dark)
        self.find("#language").click()
        time.sleep(0.3)
        self.driver.refresh()
        self.wait("the language", "document.documentElement.lang === 'zh'")
        self.assertEqual(dark, self.driver.execute_script(paper))
        for _ in range(2):
            self.find("#theme").click()
            self.assertEqual(light, self.driver.execute_script(paper))

    def test_focus_is_kept(self):
        def focused():
            return self.driver.execute_script("return document.activeElement.getAttribute('aria-label')")
        self.find("[data-example=levelling]").send_keys(Keys.ENTER)
        self.verdict()
        self.assertEqual("tab", self.driver.switch_to.active_element.get_attribute("role"))
        names = [tuple(o[end] for end in ("from", "to"))
                 for o in self.driver.execute_script("return brenu.job.observations")]
        self.field(*names[0], "dh")
        self.find("#panel-observations tr:nth-child(2) [data-action=remove]").send_keys(Keys.ENTER)
        self.assertEqual("Remove " + " ".join(names[2]), focused())
        self.driver.switch_to.active_element.send_keys(Keys.CONTROL, "z")
        self.assertEqual("Remove " + " ".join(names[1]), focused())
        self.find("#language").send_keys(Keys.ENTER)
        self.assertEqual("切换为英文", focused())

    def test_file_after_a_bad_one_and_utf_16(self):
        with tempfile.NamedTemporaryFile(suffix=".txt") as bad, tempfile.NamedTemporaryFile(suffix=".txt") as good:
            bad.write(b"\0\1\2")
            bad.flush()
            good.write(self.driver.execute_script("return brenu.examples.trilateration").encode("utf-16"))
            good.flush()
            for file, tab in (bad, "text"), (good, "observations"):
                self.find("#chooser").send_keys(file.name)
                self.wait("the file", "brenu.job.name === arguments[0]", pathlib.Path(file.name).name)
                verdict = self.verdict()
                self.assertEqual(tab, self.driver.execute_script("return brenu.tab"))
        self.assertTrue(verdict["passed"])
        self.assertFalse(self.find("#notes").get_attribute("open"))

    def test_outputs(self):
        self.open("combined")
        report = json.loads(self.saved("json", ".json"))
        self.assertEqual("brenu-report-1", report["schema"])
        self.assertIn("<svg", self.saved("svg", ".svg"))
        self.assertIn("AC1009", self.saved("dxf", ".dxf"))
        self.assertIn(report["plane"]["points"][0]["name"], self.saved("plane-points.csv", "plane-points.csv"))
        self.assertIn("<!DOCTYPE html>", self.saved("html", ".html"))

    def test_speaks_chinese(self):
        self.open("blunders")
        self.find("#language").click()
        self.assertEqual("未通过", self.verdict()["headline"])
        self.assertEqual("观测值", self.find("#tab-observations").text)
        self.find("#language").click()
        self.verdict()

    def test_nothing_is_asked_of_a_network(self):
        self.driver.get_log("performance")
        self.open("combined")
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] != "Network.requestWillBeSent":
                continue
            address = message["params"]["request"]["url"]
            self.assertRegex(address, r"^(file|blob|data):")
        blocked = self.driver.execute_async_script(
            "const done = arguments[0]; document.addEventListener('securitypolicyviolation', () => done(true));"
            "new Image().src = 'https://example.invalid/x.png';")
        self.assertTrue(blocked)
        self.driver.get_log("browser")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + ["-v"])
