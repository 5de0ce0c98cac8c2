#include "Views/Kit/ToolTip.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

namespace korvane {
namespace {

QString plain(const QString &text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()) : text;
}

// Shows the tool tips of all widgets. The toolkit would read markup in them.
class PlainToolTips final : public QObject {
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ToolTip)
            return false;
        auto *widget = static_cast<QWidget *>(watched);
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plain(widget->toolTip()), widget);
        return true;
    }
};

}  // namespace

void setPlainToolTip(QWidget &widget, const QString &text)
{
    static PlainToolTips toolTips;
    widget.setToolTip(text);
    widget.setAttribute(Qt::WA_AlwaysShowToolTips);
    widget.installEventFilter(&toolTips);
}

}  // namespace korvane
