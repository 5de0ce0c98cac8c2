#include "Views/TaskbarView.h"

#include "Models/PanelGeometry.h"
#include "Views/Metrics.h"
#include "Views/TaskButton.h"
#include "Views/TaskRow.h"

#include <QMenu>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

namespace korvane {
namespace {

int rounded(double length)
{
    return static_cast<int>(std::lround(length));
}

}  // namespace

ViewServices::ViewServices() : tabText(systemFont(metrics::buttonFontSize)) {}

TaskbarView::TaskbarView(AppModel &appModel, ViewServices &viewServices, QWidget *parent)
    : QWidget(parent), model(appModel), services(viewServices), mainRow(new MainRowGround(this))
{}

TaskbarView::~TaskbarView()
{
    // A list that goes with its panel is not open any more.
    if (!openGroupID.empty())
        model.setGroupedListOpen(false, openGroupID);
}

TaskButton *TaskbarView::button(const std::string &entryID) const
{
    const auto found = buttons.find(entryID);
    return found == buttons.end() ? nullptr : found->second;
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
    runPass();
    arrange();
    // Several screens share the one count, and the last writer wins: each view speaks up for its own changes alone.
    if (reportedRowCount != current.rowCount) {
        reportedRowCount = current.rowCount;
        model.setTaskOverflowRowCount(current.rowCount);
    }
}

void TaskbarView::runPass()
{
    TaskbarPassInput input{.runningApps = model.runningApps(),
                           .settingsTask = model.settingsTaskItem(),
                           .settings = model.settings(),
                           .quicklyLaunchItemCount = 0,
                           .width = static_cast<double>(width()),
                           .showsAttentionIndicator = model.shouldShowTaskbarAttentionIndicator(),
                           .taskWidthOverrides = {},
                           .overflowReturnLocked = false,
                           .lockedMainWindowIDs = {}};
    current = TaskbarPass::run(input, [this](std::string_view text) { return services.tabText.width(text); });
}

void TaskbarView::arrange()
{
    arrangeRows();
    const auto targets = places();
    std::unordered_map<std::string, TaskButton *> kept;
    kept.reserve(current.entries.size());
    for (std::size_t i = 0; i < current.entries.size(); ++i) {
        const TaskbarEntry &entry = current.entries[i];
        const Place &place = targets[i];
        TaskButton *task = nullptr;
        if (const auto known = buttons.find(entry.id); known != buttons.end()) {
            task = known->second;
            buttons.erase(known);
        } else {
            task = new TaskButton(services.icons, place.row);
            connect(task, &QAbstractButton::clicked, this, [this, id = entry.id] { clicked(id); });
        }
        if (task->parentWidget() != place.row)
            task->setParent(place.row);
        if (task->geometry() != place.rectangle)
            task->setGeometry(place.rectangle);
        task->setLook(TaskButtonLooks::ofEntry(model, entry, place.overflow));
        if (task->isHidden())
            task->show();
        kept.emplace(entry.id, task);
    }
    for (const auto &[id, gone] : buttons) {
        gone->hide();
        gone->deleteLater();
    }
    buttons = std::move(kept);
}

void TaskbarView::arrangeRows()
{
    const SettingsValues &settings = model.settings();
    const GroundLook ground{settings.barOpacity, isTranslucent};
    const int mainTop = height() - metrics::barHeight;
    mainRow->setGeometry(0, mainTop, width(), metrics::barHeight);
    mainRow->setLook(ground);

    std::vector<const OverflowRow *> shown;
    for (const OverflowRow &row : current.overflowRows)
        if (row.count > 0)
            shown.push_back(&row);
    while (cards.size() > shown.size()) {
        // Its tabs move to other rows in this same pass.
        for (auto *task : cards.back()->findChildren<TaskButton *>(Qt::FindDirectChildrenOnly))
            task->setParent(mainRow);
        delete cards.back();
        cards.pop_back();
    }
    while (cards.size() < shown.size()) {
        cards.push_back(new OverflowRowCard(this));
        // Lower rows lie over higher ones.
        cards.back()->stackUnder(cards.size() > 1 ? cards[cards.size() - 2] : nullptr);
        cards.back()->show();
    }
    if (!cards.empty())
        mainRow->lower();

    double bottom = mainTop + settings.overflowCardOverlapPixels;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        const OverflowRow &row = *shown[i];
        const double cardHeight = PanelGeometry::shownHeight(row.height, settings.tuckAwayOverflowPixels,
                                                             settings.autoHideOverflow, model.taskRowsExpanded(), true);
        cards[i]->setGeometry(rounded(row.leading), rounded(bottom - cardHeight),
                              rounded(TaskbarPass::overflowCardWidth(row)), rounded(cardHeight));
        cards[i]->setLook(ground, row.height);
        bottom = bottom - cardHeight + settings.overflowCardOverlapPixels;
    }
    if (const QRegion region = drawnRegion(); region != reportedRegion) {
        reportedRegion = region;
        Q_EMIT drawnRegionChanged();
    }
}

std::vector<TaskbarView::Place> TaskbarView::places() const
{
    std::vector<Place> result(current.entries.size());
    const auto put = [&](std::size_t index, QWidget *row, double x, double rowHeight, bool overflow) {
        // Edges are rounded, not widths, so that the gaps between the tabs stay even.
        const int left = rounded(x), right = rounded(x + current.widths[index]);
        const int top = rounded((rowHeight - metrics::buttonHeight) / 2);
        result[index] = {row, QRect(left, top, right - left, metrics::buttonHeight), overflow};
    };
    double x = current.quicklyLaunchRightEdge;
    for (std::size_t i = 0; i < current.mainCount; ++i) {
        put(i, mainRow, x, metrics::barHeight, false);
        x += current.widths[i] + metrics::buttonSpacing;
    }
    std::size_t cardIndex = 0;
    for (const OverflowRow &row : current.overflowRows) {
        if (row.count == 0)
            continue;
        double right = metrics::cardPadding;
        for (const double width : row.widths)
            right += width;
        right += metrics::buttonSpacing * (row.count - 1);
        for (int i = 0; i < row.count; ++i) {
            const auto index = static_cast<std::size_t>(row.lower + i);
            right -= current.widths[index];
            put(index, cards[cardIndex], right, row.height, true);
            right -= metrics::buttonSpacing;
        }
        ++cardIndex;
    }
    return result;
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

void TaskbarView::clicked(const std::string &entryID)
{
    const auto entry = std::find_if(current.entries.begin(), current.entries.end(),
                                    [&](const TaskbarEntry &candidate) { return candidate.id == entryID; });
    if (entry == current.entries.end())
        return;
    if (entry->item) {
        if (entry->item->id != identifiers::settingsTask)
            model.activate(*entry->item);
    } else if (!entry->group->isCustom && entry->group->windows.size() == 1) {
        model.activate(entry->group->windows.front());
    } else if (TaskButton *opener = button(entryID)) {
        showWindowMenu(*entry->group, *opener);
    }
}

void TaskbarView::showWindowMenu(const RunningAppGroup &group, TaskButton &opener)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(displayText(group.displayName()));
    for (const RunningAppItem &item : group.windows) {
        QString title = fontMetrics().elidedText(displayText(item.name), Qt::ElideRight, metrics::widestMenuText);
        title.replace(u'&', QStringLiteral("&&"));
        auto *action = menu->addAction(QIcon(services.icons.pixmap(item.icon, metrics::buttonIconSize, 1)), title);
        connect(action, &QAction::triggered, this, [this, item] { model.activate(item); });
    }
    openGroupID = group.id;
    model.setGroupedListOpen(true, group.id);
    connect(menu, &QMenu::aboutToHide, this, [this, id = group.id] {
        openGroupID.clear();
        model.setGroupedListOpen(false, id);
    });
    menu->popup(opener.mapToGlobal(QPoint(0, -menu->sizeHint().height())));
}

}  // namespace korvane
