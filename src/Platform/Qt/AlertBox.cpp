#include "Platform/Qt/AlertBox.h"

#include "Platform/Qt/QtIcons.h"
#include "Ports/Panels.h"
#include "Toolkit/Images.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace korvane::platform {
namespace {

constexpr int firstAnswer = 1000;
constexpr int alertIconSide = 48;
constexpr int textWidth = 360;
constexpr double lowestGap = 60, gapOfHeight = 0.08;
constexpr int longestText = 4096;

QLabel *makeLabel(const std::string &text, bool heading)
{
    auto *label = new QLabel(QString::fromStdString(text).left(longestText));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    if (heading) {
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
    }
    return label;
}

}  // namespace

AlertBox::AlertBox(const Alert &alert)
{
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint);
    setWindowTitle(QStringLiteral("Korvane"));
    setAccessibleName(QString::fromStdString(alert.message));
    setAccessibleDescription(QString::fromStdString(alert.informative));

    auto *picture = new QLabel;
    QtIcons icons;
    picture->setPixmap(
        QPixmap::fromImage(toQImage(*icons.ownIcon())
                               .scaled(alertIconSide, alertIconSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    picture->setAlignment(Qt::AlignTop);

    column = new QVBoxLayout;
    column->addWidget(makeLabel(alert.message, true));
    if (!alert.informative.empty())
        column->addWidget(makeLabel(alert.informative, false));

    // The buttons are laid out against the reading order, so that the first button stands at the end of the row. The
    // reader looks there after the text.
    auto *buttonRow = new QHBoxLayout;
    buttonRow->setDirection(QBoxLayout::RightToLeft);
    const std::vector<std::string> titles = alert.buttons.empty() ? std::vector<std::string>{"OK"} : alert.buttons;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        auto *button =
            new QPushButton(QString::fromStdString(titles[i]).replace(QLatin1Char('&'), QLatin1String("&&")));
        const int answer = firstAnswer + static_cast<int>(i);
        connect(button, &QPushButton::clicked, this, [this, answer] { done(answer); });
        button->setAutoDefault(true);
        button->setDefault(i == 0);
        if (titles[i] == "Cancel" || titles.size() == 1)
            escapeAnswer = answer;
        buttonRow->addWidget(button);
        if (i == 0)
            button->setFocus();
    }
    buttonRow->addStretch();

    auto *texts = new QHBoxLayout;
    texts->addWidget(picture, 0, Qt::AlignTop);
    texts->addLayout(column, 1);
    auto *all = new QVBoxLayout(this);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addLayout(texts);
    all->addLayout(buttonRow);
}

void AlertBox::setAccessory(QWidget *accessory)
{
    column->addWidget(accessory);
}

void AlertBox::reject()
{
    // Escape must not close a question by accident when there is no button that says no.
    if (escapeAnswer != 0)
        done(escapeAnswer);
}

void AlertBox::place(double horizontalCenterFraction)
{
    const QWidget *active = QApplication::activeWindow();
    const QScreen *where = active != nullptr ? active->screen() : QGuiApplication::primaryScreen();
    if (where == nullptr)
        return;
    const QRectF visible = where->availableGeometry();
    const double fraction =
        std::isfinite(horizontalCenterFraction) ? std::clamp(horizontalCenterFraction, 0.0, 1.0) : 0.5;
    adjustSize();
    const QSizeF frame = frameGeometry().size();
    const double left = visible.left() + visible.width() * fraction - frame.width() / 2;
    const double bottom = visible.bottom() - std::max(lowestGap, visible.height() * gapOfHeight);
    move(QPointF(left, bottom - frame.height()).toPoint());
}

int AlertBox::run(double horizontalCenterFraction, Panels *panels)
{
    setResult(0);
    place(horizontalCenterFraction);
    if (panels != nullptr) {
        PanelTraits traits;
        traits.level = Level::alert;
        traits.canBecomeKey = true;
        panels->apply(winId(), traits);
    }
    setModal(true);
    show();
    if (panels != nullptr)
        panels->makeKeyAndOrderFront(winId());
    activateWindow();
    exec();
    const int answer = result();
    return answer >= firstAnswer ? answer : 0;
}

}  // namespace korvane::platform
