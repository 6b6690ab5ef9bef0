#include "dialogs/pages.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

TEST(PageRun, HtmlTagAnywhereMakesAWebPage) {
  StubRun run;
  run.BareWindow();
  const std::vector<std::pair<String, bool>> rows{
      {"<HTML><b>x</b></HTML>", true},
      {"A plain text that mentions <html> late", true},
      {{"caf\x8E <hTmL>", Encoding::MacRoman}, true},
      {"< HTML><html lang=\"en\">", false},
      {{"\x80\xFF caf\x8E", Encoding::MacRoman}, false},
  };
  for (const auto& [text, html] : rows) {
    Page page{
        .text = text, .title = "Title", .acceptCaptionInHtml = "W", .acceptCaptionInPlain = "P"};
    const char* accept = html ? "ContinueBtn" : "OKBtn";
    run.desktop.ExpectWindow("Title", [&, html = html](Window& window) {
      const auto* web = dynamic_cast<THtmlMessageDlg*>(&window);
      ASSERT_EQ(web != nullptr, html);
      const String content =
          html ? web->MyHTMLViewer()->Source()
               : dynamic_cast<LicenseAgreementWindow&>(window).AgreementEdit()->Text();
      EXPECT_EQ(content, page.text);
      EXPECT_EQ(content.DeclaredEncoding(), page.text.DeclaredEncoding());
      const auto button = RefCast<PushButton>(window.ControlByName(accept));
      EXPECT_EQ(button->Caption().Bytes(), html ? "W" : "P");
      ScriptedDesktop::Press(window, accept);
    });
    EXPECT_TRUE(ShowPage(page));
    run.desktop.ExpectWindow("Title", "QuitBtn");
    EXPECT_FALSE(ShowPage(page));
    page.quitButton = QuitButton::Hidden;
    run.desktop.ExpectWindow("Title", [accept](Window& window) {
      EXPECT_FALSE(window.ControlByName("QuitBtn")->Visible());
      ScriptedDesktop::Press(window, accept);
    });
    EXPECT_TRUE(ShowPage(page));
  }
  // A web page receives its item as a path only.
  EXPECT_TRUE(std::filesystem::is_empty(run.scratch / "Temporary"));
}

}  // namespace
}  // namespace zephin::test
