#include <QKeyEvent>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QUrl>
#include <optional>

#include "platform/framework/application.h"
#include "platform/framework/controls.h"
#include "platform/framework/window.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/reading.h"

namespace zephin {
namespace {

constexpr qreal kMargin = 12;

/// The page without its links to style sheets, which are not fetched and behind which the toolkit
/// would show nothing of a page that doesn't close them.
QString WithoutLinkTags(QString source) {
  static const QRegularExpression kLinkTag(QStringLiteral("</?link\\b[^>]*>"),
                                           QRegularExpression::CaseInsensitiveOption);
  return source.remove(kLinkTag);
}

/// A page from memory. Whatever it names (pictures, style sheets) stays where it is: nothing is
/// fetched, neither from the network nor from the disk.
class PageView final : public QTextBrowser {
 public:
  explicit PageView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    document()->setDocumentMargin(kMargin);
    setTextInteractionFlags(Qt::TextBrowserInteraction | ReadingFlags());
  }

  QVariant loadResource(int /*type*/, const QUrl& /*name*/) override { return {}; }

 protected:
  // Return is the default button's, so that the blank follows a link that has the focus.
  void keyPressEvent(QKeyEvent* event) override {
    const QTextCursor cursor = textCursor();
    if (event->key() == Qt::Key_Space && cursor.hasSelection() && cursor.charFormat().isAnchor()) {
      emit anchorClicked(QUrl(cursor.charFormat().anchorHref()));
    } else {
      QTextBrowser::keyPressEvent(event);
    }
  }
};

class PagePeer final : public ControlPeer {
 public:
  PagePeer(HTMLViewer& model, PageView* view)
      : ControlPeer(model, view), model_(model), view_(view) {
    connect(view, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { Follow(link); });
  }

 protected:
  void Apply() override {
    if (!shown_ || !(*shown_ == model_.Source())) {
      shown_ = model_.Source();
      view_->setHtml(WithoutLinkTags(ToQString(model_.Source())));
    }
    view_->setAccessibleName(ToQString(model_.Owner()->Title()));
  }

 private:
  void Follow(const QUrl& link) {
    if (link.scheme().isEmpty()) {
      // Only places of this page can be meant: it has no address to which others are relative.
      view_->scrollToAnchor(link.fragment());
      return;
    }
    Application::Current().CallHandler([&] { ShowURL(Utf8(link.toEncoded().toStdString())); });
  }

  HTMLViewer& model_;
  PageView* view_;
  std::optional<String> shown_;
};

}  // namespace

std::unique_ptr<ControlPeer> MakePagePeer(Control& control, QWidget& window) {
  auto* model = dynamic_cast<HTMLViewer*>(&control);
  if (model == nullptr) {
    return nullptr;
  }
  return std::make_unique<PagePeer>(*model, new PageView(&window));
}

}  // namespace zephin
