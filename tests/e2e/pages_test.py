"""The pages and questions before the install: what they say, what answers them and what doesn't."""

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
        self.assertEqual((case.os.listdir(self.target), run.opened()), ([], []))

    def settle(self, run):
        """Returns when the program has taken all that was sent to it."""
        before = run.focused()
        run.key("Tab")
        wait_until(lambda: run.focused() not in (before, None), "the focus to move", 30,
                   run.described)

    def test_quit_on_any_page_ends_the_run(self):
        for page, fields, title in (
                ("notes", {"files": {"n.txt": "Read"}, "fPreInstallNotes": "n.txt",
                           "fAgreement": "n.txt"}, "Pre-Installation Notes"),
                ("agreement", AGREEMENT["plain"], "License Agreement"),
                ("web agreement", AGREEMENT["web"], "License Agreement"),
                ("choices", CHOICES, "Pick One Choice")):
            with self.subTest(page):
                run = self.open(**fields)
                run.click("Install")
                run.click("Quit", within=run.window(title))
                self.assert_ends_untouched(run)

    def test_quit_in_the_options_ends_the_run(self):
        run = self.open(**CHOICES)
        run.click("Install")
        run.click("Continue", within=run.window("Pick One Choice"))
        run.click("Quit", within=run.window("Select Options"))
        self.assert_ends_untouched(run)

    def test_return_presses_the_default_button_whatever_has_the_focus(self):
        run = self.open(**AGREEMENT["plain"])
        run.find("Quit").focus()
        run.wait_for_focus("Quit")
        run.key("Return")
        page = run.window("License Agreement")
        run.find("Quit", within=page).focus()
        run.wait_for_focus("Quit")
        run.key("Return")
        run.find("Directory:", "text")

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

    def test_window_managers_close_answers_no_page(self):
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

    def test_info_page_opens_again_and_again(self):
        run = self.open(files={"about.txt": "About"}, fInfo="about.txt")
        for _ in range(3):
            run.click("Info")
            page = run.window("Information")
            self.assertEqual(run.controls("Quit", within=page), [])
            # Escape is the hidden button's.
            run.key("Escape")
            self.settle(run)
            run.click("OK", within=page)
            wait_until(lambda: run.titles() == ["Install"], "the page to go")
        self.assertTrue(run.runs())


class Texts(case.InstallerTest):
    # Markup, mnemonics and scripts of every direction.
    ODD = "Café & <b>Bar</b> &amp; &x _y 日本 עברית हिन्दी"

    def test_texts_show_letter_for_letter(self):
        run = self.open(
            files={"page.txt": self.ODD, "a": {"a": "a"}}, fWindowTitle=self.ODD, fMessage=self.ODD,
            fCopyright=self.ODD, fURLDisplayed=self.ODD, fAgreement="page.txt",
            fLabels={"install": self.ODD + "1", "quit": self.ODD + "2", "agreementTitle": self.ODD + "3",
                     "accept": self.ODD + "4", "choiceTitle": self.ODD + "5"},
            fInstallChoices=[{"caption": self.ODD, "source": "a", "tip": self.ODD}])
        main = run.window(self.ODD)
        shown = {(node.role, node.name) for node in main.below() if "showing" in node.states}
        for control in (("label", self.ODD), ("link", self.ODD), ("push button", self.ODD + "1"),
                        ("push button", self.ODD + "2")):
            self.assertIn(control, shown)
        run.click(self.ODD + "1")
        page = run.window(self.ODD + "3")
        self.assertEqual(run.find(role="text", within=page).text, self.ODD)
        run.click(self.ODD + "4")
        row = run.find(self.ODD, "radio button", within=run.window(self.ODD + "5"))
        self.assertEqual(row.description, self.ODD)
        self.assertIn("checked", row.states)

    def test_page_grows_with_its_edges_locked(self):
        run = self.open(**AGREEMENT["plain"])
        run.click("Install")
        page = run.window("License Agreement")
        wait_until(lambda: page.area[2:] == (690, 410), "the page at its own size")
        window = run.x_window("License Agreement")
        self.screen.resize(window, 790, 510)
        wait_until(lambda: page.area[2:] == (790, 510), "the page to grow")
        left, top = page.area[:2]
        for name, role, area in (("License Agreement", "text", (20, 14, 750, 444)),
                                 ("I Agree", "push button", (690, 470, 80, 20)),
                                 ("Quit", "push button", (598, 470, 80, 20))):
            x, y, width, height = run.find(name, role, within=page).area
            self.assertEqual((x - left, y - top, width, height), area, name)
        self.screen.resize(window, 300, 200)
        wait_until(lambda: page.area[2:] == (690, 410), "the page at its least size")

    def test_web_page_opens_links_in_the_browser_and_fetches_nothing(self):
        address, asked = self.serve({})
        html = (f'<html><head><link rel="stylesheet" href="{address}/style.css"></head>'
                f'<body background="{address}/back.png"><h1>Big</h1><ul><li>one</ul>'
                f'<p><a href="{address}/more?a=1&amp;b=2">More</a></p>'
                f'<img src="{address}/picture.png"><img src="//{address[7:]}/other.png"></html>')
        run = self.open(files={"about.html": html}, fInfo="about.html")
        run.click("Info")
        view = run.find("Information", within=run.window("Information"))
        for text in ("Big", "one", "More"):
            self.assertIn(text, view.text)
        run.click_text(view, "More")
        self.assert_opens(run, f"{address}/more?a=1&b=2")
        run.click("OK")
        run.click("Quit")
        self.assert_ends(run)
        self.assertEqual(asked, [])

    def test_link_of_the_main_window(self):
        for link, opened in (("tool.example/a b", ["http://tool.example/a b"]),
                             ("https://tool.example/?q='$(x)'", ["https://tool.example/?q='$(x)'"])):
            for way in ("mouse", "press", "keys"):
                with self.subTest(link, way=way):
                    run = self.open(fURLActual=link, fURLDisplayed="Visit us")
                    if way == "mouse":
                        run.click("Visit us")
                    elif way == "press":
                        run.press("Visit us")
                    else:
                        run.find("Visit us").focus()
                        run.wait_for_focus("Visit us")
                        run.key("space")
                    self.assert_opens(run, *opened)
                    run.click("Quit")
                    self.assert_ends(run)


if __name__ == "__main__":
    case.main()
