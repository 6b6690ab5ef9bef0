"""The windows and pages before the install: layout, texts, and the input that answers them."""

import os

import case
from case import wait_until

AGREEMENT = {"plain": {"files": {"agreement.txt": "Be kind"}, "fAgreement": "agreement.txt"},
             "web": {"files": {"agreement.html": "<html>Be kind</html>"},
                     "fAgreement": "agreement.html"}}
CHOICES = {"files": {"light": {"a": "a"}, "maps": {"b": "b"}},
           "fInstallChoices": [{"caption": "Light", "source": "light"}],
           "fInstallOptions": [{"caption": "Maps", "source": "maps"}]}


class Answers(case.InstallerTest):
    def assert_ends_untouched(self, run):
        self.assert_ends(run)
        self.assertEqual((os.listdir(self.target), run.opened()), ([], []))

    def settle(self, run):
        """Waits until the program has handled all input so far."""
        before = wait_until(run.focused, "a focus", 30, run.described)
        run.key("Tab")
        wait_until(lambda: run.focused() not in (before, None), "the focus to move", 30,
                   run.described)

    def test_every_window_has_the_bundles_icon(self):
        run = self.open(**AGREEMENT["plain"])
        run.click("Install")
        for title in ("Install", "License Agreement"):
            self.assertTrue(self.screen.icon_of(run.x_window(title)), title)

    def test_escape_presses_only_a_cancel_button(self):
        for form, ends in (("plain", False), ("web", True)):
            with self.subTest(form):
                run = self.open(**AGREEMENT[form])
                run.key("Escape")
                self.settle(run)
                run.click("Install")
                run.window("License Agreement")
                run.key("Escape")
                if ends:
                    self.assert_ends_untouched(run)
                else:
                    self.settle(run)
                    self.assertEqual(run.titles(), ["Install", "License Agreement"])

    def test_close_from_the_window_manager_answers_no_page(self):
        run = self.open(**{**AGREEMENT["web"], **CHOICES,
                           "files": {**AGREEMENT["web"]["files"], **CHOICES["files"]}})
        run.click("Install")
        for title, button in (("License Agreement", "I Agree"), ("Pick One Choice", "Continue"),
                              ("Select Options", "Continue")):
            window = run.window(title)
            run.ask_to_close(title)
            self.settle(run)
            run.click(button, within=window)
        run.find("Directory:", "text")


class Looks(case.InstallerTest):
    # Markup, mnemonics and scripts in both directions.
    ODD = "Café & <b>Bar</b> &amp; &x _y 日本 עברית हिन्दी"

    def test_texts_are_shown_without_markup(self):
        run = self.open(
            files={"page.txt": self.ODD, "a": {"a": "a"}}, fWindowTitle=self.ODD, fMessage=self.ODD,
            fCopyright=self.ODD, fURLDisplayed=self.ODD, fAgreement="page.txt",
            fLabels={"install": self.ODD + "1", "quit": self.ODD + "2", "accept": self.ODD + "4",
                     "agreementTitle": self.ODD + "3", "choiceTitle": self.ODD + "5"},
            fInstallChoices=[{"caption": self.ODD, "source": "a", "tip": self.ODD}])
        main = run.window(self.ODD)
        run.find(self.ODD, "label", within=main)
        run.find(self.ODD, "link", within=main)
        run.find(self.ODD + "2", "push button", within=main)
        run.click(self.ODD + "1")
        page = run.window(self.ODD + "3")
        self.assertEqual(run.find(role="text", within=page).text, self.ODD)
        run.click(self.ODD + "4")
        row = run.find(self.ODD, "radio button", within=run.window(self.ODD + "5"))
        self.assertEqual(row.description, self.ODD)
        self.assertIn("checked", row.states)

    def assert_laid_out(self, run, window, width, height, places):
        """Waits for the window's size. `places`: (left, top, width, height) by name and role."""
        wait_until(lambda: run.place_at_rest(window)[2:] == (width, height),
                   f"the window to be {width} x {height}", 30, run.described)
        left, top, _, _ = run.place_at_rest(window)
        for (name, role), place in places.items():
            x, y, *size = run.place_at_rest(run.find(name, role, within=window))
            self.assertEqual((x - left, y - top, *size), place, name)

    def test_main_window_is_laid_out_point_for_point(self):
        run = self.open(files={"about.txt": "About"}, fInfo="about.txt", fURLActual="tool.example",
                        fURLDisplayed="Visit us", fCopyright="(c) Us")
        self.assert_laid_out(run, run.window("Install"), 396, 238, {
            ("Quit", "push button"): (204, 198, 80, 20),
            ("Install", "push button"): (296, 198, 80, 20),
            ("Info", "push button"): (20, 198, 80, 20),
            ("Welcome", "label"): (96, 14, 204, 77),
            ("Visit us", "link"): (20, 104, 356, 20),
            ("(c) Us", "label"): (20, 226, 356, 12)})

    def test_page_grows_with_its_edges_locked(self):
        run = self.open(**AGREEMENT["plain"])
        run.press("Install")
        page = run.window("License Agreement")
        self.assert_laid_out(run, page, 690, 410, {})
        window = run.x_window("License Agreement")
        self.screen.resize(window, 790, 510)
        self.assert_laid_out(run, page, 790, 510, {
            ("License Agreement", "text"): (20, 14, 750, 444),
            ("I Agree", "push button"): (690, 470, 80, 20),
            ("Quit", "push button"): (598, 470, 80, 20)})
        self.screen.resize(window, 300, 200)
        self.assert_laid_out(run, page, 690, 410, {})

    def test_web_page_opens_links_in_the_browser_and_fetches_nothing(self):
        server = self.serve({})
        address = "http://" + server.address
        html = (f'<html><head><link rel="stylesheet" href="{address}/style.css"></head>'
                f'<body background="{address}/back.png"><h1>Big</h1><ul><li>one</ul>'
                f'<p><a href="{address}/more?a=1&amp;b=2">More</a></p>'
                f'<img src="{address}/picture.png"><img src="//{server.address}/other.png"></html>')
        run = self.open(files={"about.html": html}, fInfo="about.html")
        run.click("Info")
        view = run.find("Information", within=run.window("Information"))
        for text in ("Big", "one", "More"):
            self.assertIn(text, view.text)
        run.click_text(view, "More")
        self.assert_opens(run, f"{address}/more?a=1&b=2")
        run.click("OK", "Quit")
        self.assert_ends(run)
        self.assertEqual(server.asked, [])

    def test_link_of_the_main_window(self):
        address = "http://tool.example/a b?q='$(x)'"
        run = self.open(fURLActual=address.removeprefix("http://"), fURLDisplayed="Visit us")
        run.click("Visit us")
        self.assert_opens(run, address)
        run.press("Visit us")
        self.assert_opens(run, address, address)
        run.find("Visit us").focus()
        run.wait_for_focus("Visit us")
        run.key("space")
        self.assert_opens(run, address, address, address)


if __name__ == "__main__":
    case.main()
