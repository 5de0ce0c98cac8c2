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
      hover(system.loop,
            {[this](bool visible) { model.setTaskOverflowRowsVisible(visible); },
             [this](bool expanded) { model.setTaskRowsExpanded(expanded); }, [this] { arrangeRows(); }},
            appModel.settings().autoHideOverflow),
      knownGroupMembers(appModel.settings().customGroupMembers), mainRow(new MainRowView(this)),
      attention(new AttentionControlView(appModel, viewServices, system, true, mainRow)),
      clock(new ClockView(system, mainRow)), cue(new TaskDropCue(this))
{
    installTaskbarAccessibility();
    setAcceptDrops(true);
    dropActions = {
        [this](const std::string &id, const std::string &with) { model.groupTask(id, with); },
        [this](const std::string &id, const std::string &adjacentTo, bool after) {
            model.dropTaskOnRow(id, adjacentTo, after);
        },
        [this](const std::string &id, const RunningAppGroup &onto) { model.dropTask(id, onto); },
        [this](const std::string &id, const std::string &targetID) { model.dropTaskAtOverflowRowEnd(id, targetID); }};
    connect(&mainRow->arrow(), &QAbstractButton::clicked, this,
            [this] { hover.toggleArrow(model.taskRowsExpanded()); });
    connect(&mainRow->arrow(), &SymbolButton::hoverChanged, this,
            [this](bool hovered) { hover.overflowArrowHoverChanged(hovered); });
    connect(&mainRow->closeAll(), &QAbstractButton::clicked, this, [this] { model.confirmCloseAllWindows(); });
    connect(&mainRow->hideAll(), &QAbstractButton::clicked, this, [this] { model.hideVisibleWindows(); });
}

TaskbarView::~TaskbarView()
{
    // Before what they were lent.
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
    hover.setAutoHideOverflow(model.settings().autoHideOverflow);
    runPass();
    reactToChanges();
    arrange();
    // Several screens share the one count, and the last writer wins: each view speaks up for its own changes alone.
    if (reportedRowCount != current.rowCount) {
        reportedRowCount = current.rowCount;
        model.setTaskOverflowRowCount(current.rowCount);
    }
}

void TaskbarView::runPass()
{
    const TaskbarPassInput input{.runningApps = model.runningApps(),
                                 .settingsTask = model.settingsTaskItem(),
                                 .settings = model.settings(),
                                 .quicklyLaunchItemCount = 0,
                                 .width = static_cast<double>(width()),
                                 .showsAttentionIndicator = model.shouldShowTaskbarAttentionIndicator(),
                                 .taskWidthOverrides = overrides,
                                 .overflowReturnLocked = lock.overflowReturnLocked(),
                                 .lockedMainWindowIDs = lock.lockedMainWindowIDs()};
    current = TaskbarPass::run(input, [this](std::string_view text) { return services.tabText.width(text); });
}

// What the lock names and the widths set by hand follow the tasks. Most passes change nothing here.
void TaskbarView::reactToChanges()
{
    const auto settingsTask = model.settingsTaskItem();
    const auto mainCounts = [this] { return std::pair(current.mainCount, current.partitionMainCount); };
    const auto before = std::pair(overrides.size(), lock.lockedMainWindowIDs().size());
    TaskWidthOverrides::prune(overrides, model.runningApps(), model.settings().customGroupMembers,
                              settingsTask ? std::optional(settingsTask->id) : std::nullopt);
    if (knownGroupMembers != model.settings().customGroupMembers) {
        knownGroupMembers = model.settings().customGroupMembers;
        lock.retainLockedMainGroupMembers(current.entries);
    }
    if (lock.overflowReturnLocked()) {
        OverflowReturnLock::WindowIDs live;
        for (const RunningAppItem &item : model.runningApps())
            live.insert(item.id);
        if (settingsTask)
            live.insert(settingsTask->id);
        lock.pruneLockedMainWindowIDs(live);
    }
    if (before != std::pair(overrides.size(), lock.lockedMainWindowIDs().size()))
        runPass();
    // Each round takes windows away from the lock or ends it.
    while (knownMainCounts && *knownMainCounts != mainCounts()) {
        knownMainCounts = mainCounts();
        const auto named = lock.lockedMainWindowIDs().size();
        lock.ejectNonfittingLockedMainEntries(current.entries, current.mainCount);
        if (named == lock.lockedMainWindowIDs().size())
            break;
        runPass();
    }
    knownMainCounts = mainCounts();
    // The grip of a task that is gone holds nothing still any more.
    if (armedID && std::none_of(current.entries.begin(), current.entries.end(), [&](const TaskbarEntry &entry) {
            return entry.id == *armedID;
        }))
        armedID.reset();
}

void TaskbarView::arrange()
{
    arrangeRows();
    arrangeButtons();
    renewDropPlace();
}

QWidget *TaskbarView::rowWidget(int rowID)
{
    return rowID == mainRowID ? &mainRow->tabArea() : &cards[static_cast<std::size_t>(rowID) - 1]->tabArea();
}

void TaskbarView::arrangeButtons()
{
    // Most passes find every entry where the last one had it.
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
        if (!shown->second.button)
            shown->second.button = makeTaskButton(host, entry, stripAtTop, row);
        if (std::exchange(shown->second.pass, passNumber) != passNumber)
            ++kept;
        order.push_back(shown);
        TaskButton *task = shown->second.button;
        if (task->parentWidget() != row)
            task->setParent(row);
        if (task->geometry() != place.rectangle)
            task->setGeometry(place.rectangle);
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
    places = taskbarGeometry({current, settings, size(), model.taskRowsExpanded(), hover.overflowOpen()});
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
            connect(card->lockButton(), &QAbstractButton::clicked, this, &TaskbarView::clickedLock);
            connect(card->refreshButton(), &QAbstractButton::clicked, this,
                    [this] { model.manualRefreshAndRepaint(); });
        }
        cards.push_back(card);
        card->show();
        mainRow->lower();
    }
    for (std::size_t i = 0; i < cards.size(); ++i) {
        cards[i]->setLook(ground);
        cards[i]->setLocked(lock.overflowReturnLocked());
        cards[i]->arrange(places.cards[i], settings.mediaSliderDisplay == MediaSliderDisplay::overflow
                                               ? 2 * Metrics::trayButtonWidth
                                               : 0);
    }

    const bool down = settings.autoHideOverflow ? hover.overflowLatchedOpen() : model.taskRowsExpanded();
    mainRow->arrow().setLook({.symbol = down ? QStringLiteral("chevron.down.bold") : QStringLiteral("chevron.up.bold"),
                              .text = {},
                              .size = Metrics::arrowSize});
    mainRow->arrow().setTip(settings.autoHideOverflow
                                ? (down ? QStringLiteral("Tuck overflow") : QStringLiteral("Expand all overflow"))
                                : (down ? QStringLiteral("Collapse tasks") : QStringLiteral("Show remaining tasks")));
    mainRow->arrow().setVisible(current.hasOverflow);
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
    clock->setPaused(armedID.has_value());

    const Choice<MediaSliderDisplay> &display = model.settings().mediaSliderDisplay;
    const bool onCard = display == MediaSliderDisplay::overflow && !cards.empty(),
               onBar = display == MediaSliderDisplay::taskbar;
    if (!onCard && !onBar) {
        // Nobody is to be asked for levels that nobody sees.
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

void TaskbarView::clickedLock()
{
    lock.toggle(current.mainCount, current.entries);
    updateFromModel();
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
