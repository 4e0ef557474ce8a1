#include "tests/support/source_folder.h"
#include "tests/ui_qt/sample_form.h"

#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

namespace lintara::ui {
namespace {

QDir HelpFolder() {
    return {QString::fromStdString((support::SourceFolder() / "docs" / "help").string())};
}

QTextBrowser* HelpWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* browser = qobject_cast<QTextBrowser*>(widget)) {
            return browser;
        }
    }
    return nullptr;
}

struct HelpTest : ShownFormTest {
    HelpTest() {
        form.cmdMore.Click.Handle([this] { withHelp.ShowHelp(u"C:\\X\\ANY.HLP", topic); });
    }

    void PressHelp(FormWindow& window) { QTest::mouseClick(window.WidgetOf(form.cmdMore), Qt::LeftButton); }

    std::int32_t topic = 60;
    QtToolkit withHelp{HelpFolder()};
};

TEST_F(HelpTest, ThePageOfTheTopicIsShownInAWindowOfItsOwn) {
    const std::pair<std::int32_t, QString> topics[] = {
        {60, QStringLiteral("Error handlers and line numbers")}, {66, QStringLiteral("Custom code")}};
    Show([&](FormWindow& window) {
        for (const auto& [number, title] : topics) {
            topic = number;
            PressHelp(window);
            QTextBrowser* help = HelpWindow();
            ASSERT_NE(help, nullptr);
            EXPECT_TRUE(help->isVisible());
            EXPECT_EQ(help->document()->firstBlock().text(), title);
            EXPECT_EQ(help->windowTitle(), title);
            EXPECT_TRUE(form.Visible());
        }
    });
}

TEST_F(HelpTest, TheUserCanGoOnInBothWindows) {
    Show([&](FormWindow& window) {
        PressHelp(window);
        EXPECT_TRUE(QTest::qWaitForWindowActive(HelpWindow()));
        QTest::keyClick(HelpWindow(), Qt::Key_Escape);
        EXPECT_FALSE(HelpWindow()->isVisible());
        QTest::keyClicks(window.WidgetOf(form.txtCount), QStringLiteral("1"));
        EXPECT_EQ(form.txtCount.Contents(), u"15");
        PressHelp(window);
        EXPECT_TRUE(HelpWindow()->isVisible());
        QTest::keyClicks(window.WidgetOf(form.txtCount), QStringLiteral("2"));
        EXPECT_EQ(form.txtCount.Contents(), u"125");
    });
}

TEST_F(HelpTest, ATopicWithoutAPageIsTold) {
    Show([&](FormWindow&) {
        QString text;
        AnswerNextMessage([&](QMessageBox& box) {
            text = box.text();
            box.accept();
        });
        withHelp.ShowHelp(u"", 61);
        EXPECT_EQ(text, QStringLiteral("There is no help on this window."));
    });
}

TEST_F(HelpTest, LinksAreFollowed) {
    Show([&](FormWindow& window) {
        PressHelp(window);
        QTextBrowser& help = *HelpWindow();
        EXPECT_EQ(help.verticalScrollBar()->value(), 0);
        emit help.anchorClicked(QUrl(QStringLiteral("#what-is-remembered")));
        EXPECT_GT(help.verticalScrollBar()->value(), 100);
        emit help.anchorClicked(QUrl(QStringLiteral("66-custom-code.md")));
        EXPECT_EQ(help.windowTitle(), QStringLiteral("Custom code"));
        help.backward();
        EXPECT_EQ(help.windowTitle(), QStringLiteral("Error handlers and line numbers"));
    });
}

// Each link leads to a page that is there, or to a heading of its own page.
TEST_F(HelpTest, LinksLeadSomewhere) {
    const QDir folder = HelpFolder();
    const QStringList pages = folder.entryList({QStringLiteral("*.md")});
    EXPECT_EQ(pages.size(), 2);
    for (const QString& page : pages) {
        QFile file(folder.filePath(page));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QStringList headings;
        for (const QString& line : text.split(u'\n')) {
            if (line.startsWith(u'#')) {
                QString anchor = line.section(u' ', 1).toLower();
                anchor.remove(QRegularExpression(QStringLiteral("[^a-z0-9 -]"))).replace(u' ', u'-');
                headings << u'#' + anchor;
            }
        }
        static const QRegularExpression link(QStringLiteral("\\]\\(([^)]+)\\)"));
        int links = 0;
        for (auto match = link.globalMatch(text); match.hasNext(); ++links) {
            const QString goal = match.next().captured(1);
            EXPECT_TRUE(goal.startsWith(u'#') ? headings.contains(goal) : folder.exists(goal))
                << page.toStdString() << ": " << goal.toStdString();
        }
        EXPECT_GT(links, 3);
    }
}

}  // namespace
}  // namespace lintara::ui
