#include "Views/Tasks/GroupWindowList.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Tasks/GroupListRows.h"
#include "Views/Tasks/TaskCommands.h"

#include <QApplication>
#include <QFocusEvent>
#include <QFrame>
#include <QLineEdit>
#include <QPalette>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

namespace korvane {
namespace {

QWidget *makeDivider(QWidget *parent)
{
    auto *divider = new QWidget(parent);
    divider->setFixedHeight(Metrics::listDividerHeight);
    divider->setAutoFillBackground(true);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor::fromRgbF(1, 1, 1, static_cast<float>(Metrics::dividerOpacity)));
    divider->setPalette(palette);
    return divider;
}

QVBoxLayout *makeColumn(QWidget *parent, int padding)
{
    auto *column = new QVBoxLayout(parent);
    column->setSpacing(Metrics::listSpacing);
    column->setContentsMargins(0, padding, 0, padding);
    return column;
}

}  // namespace

GroupWindowList::GroupWindowList(const TaskButtonHost &listHost, const RunningAppGroup &shown)
    : host(listHost), group(shown), header(new GroupListHeader(host, shown, this)), hideAllRow(new HideAllRow(this)),
      rowArea(new QWidget(this)), column(makeColumn(this, Metrics::listPadding)), rowColumn(makeColumn(rowArea, 0))
{
    setFont(systemFont(Metrics::popoverFontSize));
    column->addWidget(add(header));
    column->addWidget(makeDivider(this));
    column->addWidget(rowArea);
    column->addWidget(makeDivider(this));
    column->addWidget(add(hideAllRow));
    // The list closes first, because the action may bring another window forward.
    connect(header, &QAbstractButton::clicked, this, [this] {
        const RunningAppGroup chosen = group;
        AppModel &model = host.model;
        Q_EMIT done();
        if (!chosen.isCustom)
            model.activateApplication(chosen.processIdentifier());
    });
    connect(hideAllRow, &QAbstractButton::clicked, this, [this] {
        const RunningAppGroup chosen = group;
        AppModel &model = host.model;
        Q_EMIT done();
        model.minimizeAllWindows(chosen);
    });
    arrangeRows();
}

GroupWindowList::~GroupWindowList()
{
    // While the children are deleted, the focus still moves from one to the next.
    disconnect(keys);
}

ListButton *GroupWindowList::add(ListButton *button)
{
    connect(button, &ListButton::menuClosed, this, &GroupWindowList::menuClosed);
    return button;
}

GroupWindowRow *GroupWindowList::addRow(const RunningAppItem &item)
{
    auto *row = new GroupWindowRow(host, item, rowArea);
    add(row);
    connect(row, &QAbstractButton::clicked, this, [this, row] {
        const RunningAppItem chosen = row->shownItem();
        AppModel &model = host.model;
        Q_EMIT done();
        model.activate(chosen);
    });
    return row;
}

void GroupWindowList::setGroup(const RunningAppGroup &newGroup)
{
    group = newGroup;
    header->setGroup(group);
    arrangeRows();
}

void GroupWindowList::arrangeRows()
{
    QWidget *const focused = window()->focusWidget();
    const auto focusedRow = std::find(rows.begin(), rows.end(), focused);
    const auto focusedIndex = static_cast<std::size_t>(focusedRow - rows.begin());
    const bool rowHadFocus = focusedRow != rows.end();

    std::unordered_map<std::string, GroupWindowRow *> known;
    for (GroupWindowRow *row : rows)
        known.emplace(row->shownItem().id, row);
    std::vector<GroupWindowRow *> arranged;
    for (const RunningAppItem &item : group.windows) {
        if (const auto found = known.find(item.id); found != known.end()) {
            found->second->setItem(item);
            arranged.push_back(found->second);
            known.erase(found);
        } else {
            arranged.push_back(addRow(item));
        }
    }
    const bool sameRows = arranged == rows;
    rows = std::move(arranged);
    if (sameRows)
        return;
    for (const auto &[id, gone] : known) {
        gone->hide();
        gone->deleteLater();
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rowColumn->indexOf(rows[i]) != static_cast<int>(i))
            rowColumn->insertWidget(static_cast<int>(i), rows[i]);
        rows[i]->show();
    }
    for (const auto &[id, gone] : known)
        rowColumn->removeWidget(gone);
    arrangeScrolling();

    // Assistive programs and the Tab key go through the rows in the order that is shown.
    for (GroupWindowRow *row : rows)
        row->raise();
    hideAllRow->raise();
    QWidget *before = header->nameField() ? static_cast<QWidget *>(header->nameField()) : header;
    setTabOrder(header, before);
    for (GroupWindowRow *row : rows) {
        setTabOrder(before, row);
        before = row;
    }
    setTabOrder(before, hideAllRow);
    // The focus stays on its row. If the row is gone, the row in its place gets the focus.
    if (rowHadFocus && !rows.empty()) {
        const bool stays = std::find(rows.begin(), rows.end(), focused) != rows.end();
        (stays ? focused : rows[std::min(focusedIndex, rows.size() - 1)])->setFocus();
    }
}

void GroupWindowList::arrangeScrolling()
{
    if (GroupButtons::listScrolls(group) && !scroll) {
        scroll = new QScrollArea(this);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setFocusPolicy(Qt::NoFocus);
        scroll->setWidgetResizable(true);
        scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        scroll->viewport()->setAutoFillBackground(false);
        scroll->verticalScrollBar()->setPalette(QPalette(Qt::white, Metrics::popoverControl, Metrics::popoverControl,
                                                         Metrics::popoverTrack, Metrics::popoverControl, Qt::white,
                                                         Qt::white, Metrics::popoverTrack, Metrics::popoverTrack));
        delete column->replaceWidget(rowArea, scroll);  // deletes the layout item, which nobody else owns
        scroll->setWidget(rowArea);
        rowArea->setAutoFillBackground(false);
        scroll->show();
    } else if (!GroupButtons::listScrolls(group) && scroll) {
        scroll->takeWidget();
        delete column->replaceWidget(scroll, rowArea);
        rowArea->setParent(this);
        rowArea->show();
        delete std::exchange(scroll, nullptr);
    }
    if (scroll) {
        const QSize all = rowColumn->totalSizeHint();
        scroll->setFixedHeight(std::min(all.height(), Metrics::listScrollHeight));
        scroll->setMinimumWidth(all.width() + scroll->verticalScrollBar()->sizeHint().width());
    }
}

void GroupWindowList::followKeys(QWindow &keyWindow)
{
    keys = connect(&keyWindow, &QWindow::focusObjectChanged, this, &GroupWindowList::keysMoved);
    keysMoved(window()->focusWidget());
}

void GroupWindowList::keysMoved(QObject *child)
{
    auto *button = qobject_cast<ListButton *>(child);
    if (button != highlighted) {
        if (highlighted)
            highlighted->setHighlighted(false);
        highlighted = button;
        if (highlighted)
            highlighted->setHighlighted(true);
    }
    // The toolkit tells a field about the focus only in the active window, and this window never is active.
    auto *field = qobject_cast<QLineEdit *>(child);
    if (field != focusedField && !isActiveWindow()) {
        if (focusedField) {
            QFocusEvent left(QEvent::FocusOut);
            QApplication::sendEvent(focusedField, &left);
        }
        if (field) {
            QFocusEvent came(QEvent::FocusIn);
            QApplication::sendEvent(field, &came);
        }
    }
    focusedField = field;
    if (scroll && button && rowArea->isAncestorOf(button))
        scroll->ensureWidgetVisible(button, 0, Metrics::listSpacing);
}

}  // namespace korvane
