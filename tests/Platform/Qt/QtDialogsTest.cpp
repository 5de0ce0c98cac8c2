#include "Platform/Qt/QtDialogs.h"

#include "Platform/Qt/AlertBox.h"
#include "Ports/Panels.h"

#include <QApplication>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace korvane::platform {
namespace {

const Alert question{"Clear Recents?", "Remove <b>all</b> items.", {"Clear", "Cancel"}};

// Runs `meet` on the alert once it is shown. The alert ends without an answer if that does not close it.
int answerOf(const Alert &alert, const std::function<void(AlertBox &)> &meet, double fraction = 0.5)
{
    QTimer watch;
    bool met = false;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        auto *box = dynamic_cast<AlertBox *>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible() || met)
            return;
        met = true;
        meet(*box);
        if (box->isVisible())
            box->done(0);
    });
    watch.start(1);
    const int answer = QtDialogs(nullptr).runModal(alert, fraction);
    EXPECT_TRUE(met);
    return answer;
}

void press(AlertBox &box, const char *title)
{
    for (auto *button : box.findChildren<QPushButton *>())
        if (button->text() == QLatin1String(title))
            return button->click();
    FAIL() << "no button " << title;
}

class RecordingPanels final : public Panels {
public:
    void apply(NativeView view, const PanelTraits &traits) override
    {
        applied = view;
        level = traits.level;
        takesKeys = traits.canBecomeKey;
    }
    void orderFrontRegardless(NativeView view) override { front = view; }
    void makeKeyAndOrderFront(NativeView view) override { front = view; }
    void setShape(NativeView, const PanelShape &) override {}
    void setIgnoresMouse(NativeView, bool) override {}
    void reserveStrip(NativeView, const std::optional<Rect> &) override {}
    bool translucencyAvailable() override { return false; }
    Subscription observeTranslucency(std::function<void()>) override { return nullptr; }

    NativeView applied = 0, front = 0;
    Level level = Level::floating;
    bool takesKeys = false;
};

}  // namespace

TEST(QtDialogs, TheFirstButtonAnswersAThousandAndTheNextOneMore)
{
    EXPECT_EQ(answerOf(question, [](AlertBox &box) { press(box, "Clear"); }), 1000);
    EXPECT_EQ(answerOf(question, [](AlertBox &box) { press(box, "Cancel"); }), 1001);
    EXPECT_EQ(answerOf({"?", "", {"a", "b", "c & d"}}, [](AlertBox &box) { press(box, "c && d"); }), 1002);
}

TEST(QtDialogs, ReturnPressesTheFirstButtonAndEscapeCancel)
{
    EXPECT_EQ(answerOf(question, [](AlertBox &box) { QTest::keyClick(&box, Qt::Key_Return); }), 1000);
    EXPECT_EQ(answerOf(question, [](AlertBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }), 1001);
    EXPECT_EQ(answerOf(question, [](AlertBox &box) { box.close(); }), 1001);
}

TEST(QtDialogs, AQuestionWithoutCancelIsNotDismissedByAccident)
{
    EXPECT_EQ(answerOf({"?", "", {"a", "b"}},
                       [](AlertBox &box) {
                           QTest::keyClick(&box, Qt::Key_Escape);
                           box.close();
                           EXPECT_TRUE(box.isVisible());
                       }),
              0);
}

TEST(QtDialogs, AnAlertWithoutButtonsHasOne)
{
    EXPECT_EQ(answerOf({"Done", "", {}}, [](AlertBox &box) { press(box, "OK"); }), 1000);
    EXPECT_EQ(answerOf({"Done", "", {}}, [](AlertBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }), 1000);
}

TEST(QtDialogs, TextsAreShownWithoutMarkup)
{
    bool found = false;
    answerOf(question, [&found](AlertBox &box) {
        for (const auto *label : box.findChildren<QLabel *>())
            if (label->text() == QLatin1String("Remove <b>all</b> items."))
                found = label->textFormat() == Qt::PlainText;
        EXPECT_EQ(box.accessibleName(), QLatin1String("Clear Recents?"));
    });
    EXPECT_TRUE(found);
}

TEST(QtDialogs, TheAlertStandsLowAndAtItsFractionOfTheWidth)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const double fraction : {0.5, 0.6}) {
        answerOf(
            question,
            [&](AlertBox &box) {
                const QRect frame = box.geometry();
                EXPECT_NEAR(frame.center().x(), screen.left() + screen.width() * fraction, 2);
                EXPECT_NEAR(screen.bottom() - frame.bottom(), std::max(60.0, screen.height() * 0.08), 3);
            },
            fraction);
    }
}

TEST(QtDialogs, TimersGoOnWhileAnAlertWaits)
{
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(1);
    answerOf(question, [&](AlertBox &) {
        const int before = ticks;
        EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > before + 2; }));
    });
}

TEST(QtDialogs, TheEndOfTheProgramLeavesTheAlertWithoutAnAnswer)
{
    QTimer::singleShot(0, [] {
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        EXPECT_EQ(QtDialogs(nullptr).runModal(question, 0.5), 0);
    });
    QTimer::singleShot(10000, [] { QCoreApplication::exit(7); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST(QtDialogs, TheWindowIsLiftedAsAnAlertThatTakesKeys)
{
    RecordingPanels panels;
    AlertBox box(question);
    QTimer::singleShot(0, &box, [&box] { box.done(1000); });
    EXPECT_EQ(box.run(0.5, &panels), 1000);
    EXPECT_EQ(panels.level, Level::alert);
    EXPECT_TRUE(panels.takesKeys);
    EXPECT_NE(panels.applied, 0u);
    EXPECT_EQ(panels.front, panels.applied);
}

TEST(QtDialogs, ALineToTypeInHasTheKeysAndGivesItsTextBack)
{
    AlertField field;
    field.text = "📁";
    field.placeholder = "folder";
    Alert alert = question;
    alert.field = &field;
    const int answer = answerOf(alert, [](AlertBox &box) {
        auto *line = box.findChild<QLineEdit *>();
        ASSERT_TRUE(line);
        EXPECT_EQ(line->size(), QSize(220, 24));
        EXPECT_EQ(line->text(), "📁");
        EXPECT_EQ(line->placeholderText(), "folder");
        EXPECT_EQ(box.focusWidget(), line);
        // What was there is selected and gives way.
        QTest::keyClicks(line, "Ab");
        QTest::keyClick(line, Qt::Key_Return);
    });
    EXPECT_EQ(answer, 1000);
    EXPECT_EQ(field.text, "Ab");
}

class ColorPanels : public ::testing::Test {
protected:
    QColorDialog *panel()
    {
        QColorDialog *found = nullptr;
        for (QWidget *window : QApplication::topLevelWidgets())
            if (auto *dialog = qobject_cast<QColorDialog *>(window)) {
                EXPECT_FALSE(found) << "there is only one";
                found = dialog;
            }
        return found;
    }

    std::vector<Rgb> first, second;
    QtDialogs dialogs{nullptr};
};

TEST_F(ColorPanels, ThePanelTellsOfEveryColourAndBlocksNothing)
{
    dialogs.openColorPanel(Rgb{1, 0, 0}, [this](const Rgb &color) { first.push_back(color); });
    ASSERT_TRUE(panel());
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_FALSE(panel()->isModal());
    EXPECT_FALSE(panel()->testOption(QColorDialog::ShowAlphaChannel));
    EXPECT_EQ(panel()->currentColor(), QColor(Qt::red));
    EXPECT_TRUE(first.empty());
    panel()->setCurrentColor(Qt::blue);
    panel()->setCurrentColor(Qt::green);
    EXPECT_EQ(first, (std::vector<Rgb>{{0, 0, 1}, {0, 1, 0}}));
    // Colours are opaque, whatever was pasted into the panel.
    panel()->setCurrentColor(QColor(255, 0, 0, 128));
    EXPECT_EQ(first.back(), (Rgb{1, 0, 0}));
}

TEST_F(ColorPanels, OnlyTheLastOneWhoOpenedItHearsOfColours)
{
    dialogs.openColorPanel(Rgb{1, 0, 0}, [this](const Rgb &color) { first.push_back(color); });
    dialogs.openColorPanel(Rgb{0, 1, 0}, [this](const Rgb &color) { second.push_back(color); });
    EXPECT_TRUE(first.empty());
    EXPECT_TRUE(second.empty());
    panel()->setCurrentColor(Qt::blue);
    EXPECT_TRUE(first.empty());
    EXPECT_EQ(second.size(), 1u);
    // Without an initial colour it keeps its own.
    dialogs.openColorPanel(std::nullopt, [](const Rgb &) {});
    EXPECT_EQ(panel()->currentColor(), QColor(Qt::blue));
}

TEST(AlertBox, AControlOfTheCallersStandsInIt)
{
    AlertBox box(question);
    auto *field = new QLineEdit(QStringLiteral("📁"));
    box.setAccessory(field);
    EXPECT_EQ(field->window(), &box);
}

}  // namespace korvane::platform
