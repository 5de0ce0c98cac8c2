#include "Views/Kit/ToolTip.h"

#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>
#include <gtest/gtest.h>

namespace korvane {
namespace {

class ToolTipTest : public testing::Test {
protected:
    // What is shown when the pointer rests on the widget.
    QString shown()
    {
        widget.show();
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), widget.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&widget, &event);
        return QToolTip::text();
    }
    ~ToolTipTest() override { QToolTip::hideText(); }

    QWidget widget;
};

TEST_F(ToolTipTest, APlainTextIsShownAsItStands)
{
    setPlainToolTip(widget, QStringLiteral("Notes & letters"));
    EXPECT_EQ(shown(), QStringLiteral("Notes & letters"));
    EXPECT_EQ(widget.toolTip(), QStringLiteral("Notes & letters"));
}

TEST_F(ToolTipTest, MarkupIsShownAndNotRead)
{
    setPlainToolTip(widget, QStringLiteral("<b>bold</b> <img src='/etc/picture'>"));
    EXPECT_EQ(shown(), QStringLiteral("<span>&lt;b&gt;bold&lt;/b&gt; &lt;img src='/etc/picture'&gt;</span>"));
    EXPECT_EQ(widget.toolTip(), QStringLiteral("<b>bold</b> <img src='/etc/picture'>"));
}

TEST_F(ToolTipTest, IsShownOverAWindowThatIsNotActive)
{
    EXPECT_FALSE(widget.testAttribute(Qt::WA_AlwaysShowToolTips));
    setPlainToolTip(widget, QStringLiteral("Close"));
    EXPECT_TRUE(widget.testAttribute(Qt::WA_AlwaysShowToolTips));
}

TEST_F(ToolTipTest, TheLastTextHolds)
{
    setPlainToolTip(widget, QStringLiteral("Inbox"));
    setPlainToolTip(widget, QStringLiteral("Outbox"));
    EXPECT_EQ(shown(), QStringLiteral("Outbox"));
}

}  // namespace
}  // namespace korvane
