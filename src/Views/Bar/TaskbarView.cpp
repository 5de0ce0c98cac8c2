#include "Views/Bar/TaskbarView.h"

#include "Views/Bar/MainRowView.h"
#include "Views/Bar/OverflowRowCard.h"
#include "Views/Bar/TaskDropCue.h"
#include "Views/Bar/TaskResizeHandle.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/SymbolButton.h"
#include "Views/Tasks/AccessibleTask.h"
#include "Views/Tasks/TaskButton.h"
#include "Views/Tray/AttentionControlView.h"
#include "Views/Tray/ClockView.h"
#include "Views/Tray/LevelControlView.h"

#include <QResizeEvent>
#include <algorithm>

namespace korvane {

ViewServices::ViewServices() : tabText(systemFont(Metrics::buttonFontSize)) {}

TaskbarView::TaskbarView(AppModel &appModel, ViewServices &viewServices, platform::Platform &system, QWidget *parent)
    : QWidget(parent), model(appModel), services(viewServices), platform(system),
      ownBar(appModel, system.loop, [this](std::string_view text) { return services.tabText.width(text); },
             {[this] { updateFromModel(); }, [this] { arrangeRows(); }, [this] { showCue(); }}),
      host{model,
           services,
           platform,
           [this](const std::string &dragID, const std::set<std::string> &windowIDs, bool first) {
               ownBar.setTaskPosition(dragID, windowIDs, first);
           },
           [this] {
               if (showSettings)
                   showSettings();
           },
           [this](const std::string &entryID) { ownBar.armResize(entryID); },
           [this](QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs) {
               beginDrag(source, dragID, windowIDs);
           }},
      mainRow(new MainRowView(this)),
      attention(new AttentionControlView(appModel, viewServices, system, true, mainRow)),
      clock(new ClockView(system, mainRow)), cue(new TaskDropCue(this))
{
    installTaskbarAccessibility();
    setAcceptDrops(true);
    connect(&mainRow->arrow(), &QAbstractButton::clicked, this, [this] { ownBar.clickOverflowArrow(); });
    connect(&mainRow->arrow(), &SymbolButton::hoverChanged, this,
            [this](bool hovered) { ownBar.overflowArrowHoverChanged(hovered); });
    connect(&mainRow->closeAll(), &QAbstractButton::clicked, this, [this] { model.confirmCloseAllWindows(); });
    connect(&mainRow->hideAll(), &QAbstractButton::clicked, this, [this] { model.hideVisibleWindows(); });
}

TaskbarView::~TaskbarView()
{
    // Deleted first, because the grip and the buttons refer to the bar and to the host, which end before this widget's
    // children do.
    delete resizeHandle;
    qDeleteAll(findChildren<TaskButton *>());
}

TaskButton *TaskbarView::button(const std::string &entryID) const
{
    const auto found = buttons.find(entryID);
    return found == buttons.end() ? nullptr : found->second.button;
}

void TaskbarView::setTranslucent(bool translucent)
{
    if (isTranslucent == translucent)
        return;
    isTranslucent = translucent;
    arrangeRows();
}

void TaskbarView::updateFromModel()
{
    ownBar.update(width());
    arrange();
}

void TaskbarView::arrange()
{
    arrangeRows();
    arrangeButtons();
    // The tabs under a drag can change even when the pointer does not move.
    if (dragPoint)
        ownBar.dragRestsOver(dropPlaceAt(*dragPoint), dragPoint->x());
    showCue();
}

QWidget *TaskbarView::rowWidget(int rowID)
{
    return rowID == mainRowID ? &mainRow->tabArea() : &cards[static_cast<std::size_t>(rowID) - 1]->tabArea();
}

void TaskbarView::arrangeButtons()
{
    const TaskbarLayout &current = ownBar.layout();
    // Most passes find every entry in the same order as the last pass.
    std::vector<Buttons::value_type *> order;
    order.reserve(current.entries.size());
    ++passNumber;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < current.entries.size(); ++i) {
        const TaskbarEntry &entry = current.entries[i];
        const TabPlace &place = places.places[i];
        QWidget *row = rowWidget(place.rowID);
        const bool stripAtTop = place.rowID != mainRowID;
        Buttons::value_type *shown = i < buttonsInOrder.size() ? buttonsInOrder[i] : nullptr;
        if (!shown || shown->first != entry.id)
            shown = &*buttons.try_emplace(entry.id).first;
        const bool isNew = !shown->second.button;
        if (isNew)
            shown->second.button = makeTaskButton(host, entry, stripAtTop, row);
        if (std::exchange(shown->second.pass, passNumber) != passNumber)
            ++kept;
        order.push_back(shown);
        TaskButton *task = shown->second.button;
        if (task->parentWidget() != row)
            task->setParent(row);
        if (task->geometry() != place.rectangle)
            task->setGeometry(place.rectangle);
        const bool sameEdge = std::exchange(shown->second.stripAtTop, stripAtTop) == stripAtTop;
        if (!isNew && (ownBar.buttonChanged(i) || !sameEdge))
            task->setEntry(entry, stripAtTop);
        if (task->isHidden())
            task->show();
    }
    buttonsInOrder = std::move(order);
    if (buttons.size() == kept)
        return;
    std::erase_if(buttons, [this](const Buttons::value_type &gone) {
        if (gone.second.pass == passNumber)
            return false;
        gone.second.button->hide();
        gone.second.button->deleteLater();
        return true;
    });
}

void TaskbarView::arrangeRows()
{
    const SettingsValues &settings = model.settings();
    places = taskbarGeometry(
        {ownBar.layout(), settings, size(), model.taskRowsExpanded(), ownBar.overflowHover().overflowOpen()});
    const GroundLook ground{settings.barOpacity, isTranslucent};
    mainRow->setLook(ground);
    mainRow->arrange(places);

    while (cards.size() > places.cards.size()) {
        // Its tabs and its controls move to other rows in this same pass.
        for (QWidget *control : {static_cast<QWidget *>(brightness), static_cast<QWidget *>(volume)})
            if (control && control->parentWidget() == cards.back())
                control->setParent(mainRow);
        for (auto *task : cards.back()->tabArea().findChildren<TaskButton *>(Qt::FindDirectChildrenOnly))
            task->setParent(&mainRow->tabArea());
        delete cards.back();
        cards.pop_back();
    }
    while (cards.size() < places.cards.size()) {
        auto *card = new OverflowRowCard(cards.empty(), this);
        // Lower rows lie over higher ones.
        if (!cards.empty())
            card->stackUnder(cards.back());
        if (card->lockButton()) {
            connect(card->lockButton(), &QAbstractButton::clicked, this, [this] { ownBar.clickOverflowReturnLock(); });
            connect(card->refreshButton(), &QAbstractButton::clicked, this,
                    [this] { model.manualRefreshAndRepaint(); });
        }
        cards.push_back(card);
        card->show();
        mainRow->lower();
    }
    for (std::size_t i = 0; i < cards.size(); ++i) {
        cards[i]->setLook(ground);
        cards[i]->setLocked(ownBar.overflowReturnLock().overflowReturnLocked());
        cards[i]->arrange(places.cards[i], settings.mediaSliderDisplay == MediaSliderDisplay::overflow
                                               ? 2 * Metrics::trayButtonWidth
                                               : 0);
    }

    const bool down =
        settings.autoHideOverflow ? ownBar.overflowHover().overflowLatchedOpen() : model.taskRowsExpanded();
    mainRow->arrow().setLook({.symbol = down ? QStringLiteral("chevron.down.bold") : QStringLiteral("chevron.up.bold"),
                              .text = {},
                              .size = Metrics::arrowSize});
    mainRow->arrow().setTip(settings.autoHideOverflow
                                ? (down ? QStringLiteral("Tuck overflow") : QStringLiteral("Expand all overflow"))
                                : (down ? QStringLiteral("Collapse tasks") : QStringLiteral("Show remaining tasks")));
    mainRow->arrow().setVisible(ownBar.layout().hasOverflow);
    arrangeControls();
    arrangeResizeHandle();
    cue->raise();
    showCue();
    if (const QRegion region = drawnRegion(); region != reportedRegion) {
        reportedRegion = region;
        Q_EMIT drawnRegionChanged();
    }
}

void TaskbarView::arrangeControls()
{
    const auto put = [](QWidget &control, QWidget *parent, const QRect &place) {
        if (control.parentWidget() != parent)
            control.setParent(parent);
        if (control.geometry() != place)
            control.setGeometry(place);
    };
    put(*attention, mainRow, places.attention);
    attention->setVisible(model.shouldShowTaskbarAttentionIndicator());
    attention->updateFromModel();
    put(*clock, mainRow, places.clock);
    clock->setRefreshSeconds(model.settings().taskbarRefreshSeconds);
    clock->setPaused(ownBar.armedResizeID().has_value());

    const Choice<MediaSliderDisplay> &display = model.settings().mediaSliderDisplay;
    const bool onCard = display == MediaSliderDisplay::overflow && !cards.empty(),
               onBar = display == MediaSliderDisplay::taskbar;
    if (!onCard && !onBar) {
        // The system is not asked for levels that nobody sees.
        for (QWidget *control : {static_cast<QWidget *>(brightness), static_cast<QWidget *>(volume)})
            if (control) {
                control->hide();
                control->deleteLater();
            }
        brightness = nullptr;
        volume = nullptr;
        return;
    }
    if (!brightness) {
        brightness = new BrightnessControlView(model, platform, mainRow);
        volume = new VolumeControlView(model, platform, mainRow);
    }
    QWidget *const parent = onCard ? static_cast<QWidget *>(cards.front()) : mainRow;
    const QRect room = onCard ? cards.front()->mediaPlace() : places.mediaControls;
    const QSize size(Metrics::trayButtonWidth, room.height());
    put(*brightness, parent, QRect(room.topLeft(), size));
    put(*volume, parent, QRect(room.topLeft() + QPoint(Metrics::trayButtonWidth, 0), size));
    brightness->show();
    volume->show();
}

int TaskbarView::shownHeight() const
{
    int top = places.mainRow.top();
    for (const CardPlace &card : places.cards)
        top = std::min(top, card.shown.top());
    return places.mainRow.bottom() + 1 - top;
}

QRegion TaskbarView::drawnRegion() const
{
    QRegion region(mainRow->geometry());
    for (const OverflowRowCard *card : cards)
        region += card->geometry();
    return region;
}

void TaskbarView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        updateFromModel();
    else
        arrangeRows();
}

}  // namespace korvane
