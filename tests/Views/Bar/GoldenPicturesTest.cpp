// The bar as it is drawn, against pictures that were looked at when they were stored. With KORVANE_STORE_PICTURES set
// the pictures are written anew, to be looked at before they are committed.
#include "Views/Bar/TaskbarView.h"
#include "Views/Kit/SymbolButton.h"
#include "Views/Tasks/TaskButton.h"
#include "Views/Tray/ClockView.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFontInfo>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QTest>

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::settle;
using testing::V;

constexpr int width = 720, height = 120;

// The part of the pixels that plainly differ; 1 for pictures of different size.
double difference(const QImage &left, const QImage &right)
{
    constexpr int tolerance = 24;  // what another version of the font engine may change
    if (left.size() != right.size())
        return 1;
    int differing = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const QRgb a = left.pixel(x, y), b = right.pixel(x, y);
            if (std::abs(qRed(a) - qRed(b)) > tolerance || std::abs(qGreen(a) - qGreen(b)) > tolerance
                || std::abs(qBlue(a) - qBlue(b)) > tolerance)
                ++differing;
        }
    }
    return static_cast<double>(differing) / (left.width() * left.height());
}

constexpr double mostDifference = 0.00015;  // of the pixels: ten, fewer than a close glyph has

class Pictures : public ModelFixture {
protected:
    void SetUp() override
    {
        if (QFontInfo(QApplication::font()).family() != "DejaVu Sans")
            GTEST_SKIP() << "the pictures show DejaVu Sans";
    }

    void show()
    {
        model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
        start();
        view = std::make_unique<TaskbarView>(*model, services, platform);
        view->resize(width, height);
        view->updateFromModel();
        view->findChild<ClockView *>()->hide();  // whose texts are the language's
        view->show();
        settle();
    }

    // On a wallpaper of one colour.
    QImage picture()
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(QColor(0x3a, 0x6e, 0xa5));
        view->render(&image, QPoint(), QRegion(0, 0, width, height), QWidget::DrawChildren);
        return image;
    }

    void expect(const QString &name)
    {
        const QString path = QStringLiteral(KORVANE_PICTURES) + "/" + name + ".png";
        const QImage actual = picture();
        if (qEnvironmentVariableIsSet("KORVANE_STORE_PICTURES")) {
            ASSERT_TRUE(actual.save(path)) << path.toStdString();
            return;
        }
        const QImage stored(path);
        ASSERT_FALSE(stored.isNull()) << "no picture " << path.toStdString();
        const double found = difference(actual, stored.convertToFormat(QImage::Format_RGB32));
        if (found > mostDifference) {
            const QString drawn = QDir::current().filePath(name + "-drawn.png");
            actual.save(drawn);
            ADD_FAILURE() << found * 100 << " % of " << name.toStdString() << " differ, drawn: " << drawn.toStdString();
        }
    }

    SymbolButton *control(const QString &name)
    {
        for (auto *button : view->findChildren<SymbolButton *>())
            if (button->accessibleName() == name)
                return button;
        return nullptr;
    }

    void badge(const std::vector<std::string> &titles)
    {
        platform::simulated::DockItem root;
        root.children.emplace();
        for (const std::string &title : titles) {
            platform::simulated::DockItem item;
            item.title = title;
            item.subrole = std::string("AXApplicationDockItem");
            item.statusLabel = std::string("1");
            root.children->push_back(item);
        }
        desktop.applications.setDock(root);
    }

    // Three programs: active, coloured, badged.
    void threeTasks()
    {
        addApplication(1, "Mail", 1);
        addApplication(2, "Notes", 1);
        addApplication(3, "Music", 1);
        badge({"Music"});
        desktop.applications.focusWindow(1, hashOf(1, 0));
        makeModel();
    }

    ViewServices services;
    std::unique_ptr<TaskbarView> view;
};

TEST_F(Pictures, OfTabsWithAStripAColourAndAMark)
{
    threeTasks();
    show();
    model->setLiveTabColorName("Custom:#8A1C5E", idOf(2, 0));
    model->refresh(true);
    view->updateFromModel();
    settle();
    expect("tabs");
}

TEST_F(Pictures, OfEachStyleOfMark)
{
    threeTasks();
    show();
    for (const auto &[style, name] : choiceTexts<NotificationBadgeStyle>) {
        if (style == NotificationBadgeStyle::none)
            continue;
        model->set(&V::notificationBadgeStyle, style);
        model->refresh(true);
        view->updateFromModel();
        settle();
        expect(QStringLiteral("mark-%1").arg(QLatin1String(name.data(), static_cast<qsizetype>(name.size()))));
    }
}

TEST_F(Pictures, OfRowsThatAreTucked)
{
    addApplication(1, "Mail", 12);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::never);
    show();
    expect("rows-tucked");
}

TEST_F(Pictures, OfRowsThatAreOpenAndLocked)
{
    addApplication(1, "Mail", 12);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::never);
    show();
    QTest::mouseClick(control("Expand all overflow"), Qt::LeftButton);
    settle();
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    advance(0);
    QTest::mouseMove(view.get(), QPoint(5, 5));
    settle();
    expect("rows-open");
}

TEST_F(Pictures, OfAGroup)
{
    addApplication(1, "Mail", 4);
    addApplication(2, "Notes", 1);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::always);
    show();
    expect("group");
}

TEST_F(Pictures, OfAnArmedGripAndOfACue)
{
    threeTasks();
    show();
    view->bar().armResize(idOf(2, 0));
    settle();
    expect("grip");
    const std::string dragged = idOf(1, 0);
    view->bar().beginDrag(dragged, {dragged});
    const QPoint over(view->geometryOfBar().tabInView(2).center());
    QMimeData payload;
    payload.setText("payload");
    QDragEnterEvent enter(over, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.get(), &enter);
    QDragMoveEvent move(over, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.get(), &move);
    settle();
    expect("cue");
}

TEST_F(Pictures, AGlyphThatIsMissingIsSeen)
{
    threeTasks();
    show();
    const QImage whole = picture();
    for (QWidget *child : view->button(idOf(2, 0))->findChildren<QWidget *>())
        child->hide();
    settle();
    EXPECT_GT(difference(whole, picture()), mostDifference);
}

}  // namespace
}  // namespace korvane
