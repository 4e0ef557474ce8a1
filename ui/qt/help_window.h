// A window of its own with a page of help. Links lead to other pages and to headings.
#pragma once

#include <QTextBrowser>

namespace lintara::ui {

class HelpWindow final : public QTextBrowser {
  public:
    HelpWindow();

    // `page` names a page in Markdown; a link in it may lead to another one beside it.
    void ShowPage(const QUrl& page);

  private:
    void Follow(const QUrl& link);
    void ScrollToHeading(const QString& anchor);
};

}  // namespace lintara::ui
