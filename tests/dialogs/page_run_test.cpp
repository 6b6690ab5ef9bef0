#include "dialogs/page_run.h"

#include <gtest/gtest.h>

#include "dialogs/pages.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

Page PageOf(String text, QuitButton quitButton = QuitButton::Shown, String quitCaption = "") {
  return {.text = std::move(text),
          .title = "Title",
          .quitButton = quitButton,
          .quitCaption = std::move(quitCaption),
          .acceptCaptionInHtml = "Web",
          .acceptCaptionInPlain = "Plain"};
}

TEST(PageRun, HtmlAnywhereInAnyLetterCaseMakesAWebPage) {
  StubRun run;
  run.BareWindow();
  const struct {
    String text;
    bool html;
  } rows[] = {
      {"<HTML><b>x</b></HTML>", true},
      {"A plain text that mentions <html> late", true},
      {{"caf\x8E <hTmL>", Encoding::MacRoman}, true},
      {"<HTM> < HTML>", false},
      {"<!DOCTYPE html><html lang=\"en\">", false},
      {{"\x80\xFF caf\x8E", Encoding::MacRoman}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text.Bytes());
    run.desktop.ExpectWindow("Title", [&row](Window& window) {
      String content;
      Ref<PushButton> accept;
      if (row.html) {
        auto& page = dynamic_cast<THtmlMessageDlg&>(window);
        content = page.MyHTMLViewer()->Source();
        accept = page.ContinueBtn();
      } else {
        auto& page = dynamic_cast<LicenseAgreementWindow&>(window);
        content = page.AgreementEdit()->Text();
        accept = page.OKBtn();
      }
      EXPECT_EQ(content, row.text);
      EXPECT_EQ(content.DeclaredEncoding(), row.text.DeclaredEncoding());
      EXPECT_EQ(accept->Caption().Bytes(), row.html ? "Web" : "Plain");
      EXPECT_TRUE(accept->Default());
      ScriptedDesktop::Press(window, accept->Name());
    });
    EXPECT_TRUE(ShowPage(PageOf(row.text)));
  }
  EXPECT_TRUE(fs::is_empty(run.scratch / "Temporary"));
}

TEST(PageRun, QuitButtonRefusesUnlessItIsHidden) {
  StubRun run;
  run.BareWindow();
  for (const char* text : {"<html>", "plain"}) {
    for (const auto& [custom, caption] : {std::pair{"", "Quit"}, {"Leave", "Leave"}}) {
      run.desktop.ExpectWindow("Title", [caption = caption](Window& window) {
        const auto quit = RefCast<PushButton>(window.ControlByName("QuitBtn"));
        EXPECT_EQ(quit->Caption().Bytes(), caption);
        ScriptedDesktop::Press(window, "QuitBtn");
      });
      EXPECT_FALSE(ShowPage(PageOf(text, QuitButton::Shown, custom)));
    }
    run.desktop.ExpectWindow("Title", [](Window& window) {
      EXPECT_FALSE(window.ControlByName("QuitBtn")->Visible());
      const bool html = !window.ControlByName("MyHTMLViewer").IsNil();
      ScriptedDesktop::Press(window, html ? "ContinueBtn" : "OKBtn");
    });
    EXPECT_TRUE(ShowPage(PageOf(text, QuitButton::Hidden)));
  }
}

TEST(PageRun, PagesGrowAndTheirButtonsStayAtTheBottomRight) {
  StubRun run;
  run.BareWindow();
  const Ref<Window> pages[] = {MakeWindow<THtmlMessageDlg>(), MakeWindow<LicenseAgreementWindow>()};
  for (const Ref<Window>& page : pages) {
    std::vector<Bounds> before;
    for (const Ref<Control>& control : page->Controls()) {
      before.push_back(control->Place());
    }
    page->ResizedByUser(page->Width() + 100, page->Height() + 30);
    for (std::size_t i = 0; i < before.size(); ++i) {
      const Control& control = *page->Controls()[i];
      const bool content = RefCast<PushButton>(page->Controls()[i]).IsNil();
      EXPECT_EQ(control.Left() - before[i].left, content ? 0 : 100) << control.Name();
      EXPECT_EQ(control.Top() - before[i].top, content ? 0 : 30) << control.Name();
      EXPECT_EQ(control.Width() - before[i].width, content ? 100 : 0) << control.Name();
      EXPECT_EQ(control.Height() - before[i].height, content ? 30 : 0) << control.Name();
    }
  }
}

}  // namespace
}  // namespace zephin::test
