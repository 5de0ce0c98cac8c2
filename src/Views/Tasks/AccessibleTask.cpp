#include "Views/Tasks/AccessibleTask.h"

#include "Views/Tasks/RunningAppGroupButton.h"

#include <QAccessibleWidget>

namespace korvane {
namespace {

class AccessibleTask final : public QAccessibleWidget {
public:
    explicit AccessibleTask(TaskButton *button) : QAccessibleWidget(button, QAccessible::Button) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const auto *group = qobject_cast<const RunningAppGroupButton *>(object())) {
            state.expandable = true;
            state.expanded = group->listIsOpen();
            state.collapsed = !group->listIsOpen();
        }
        state.hasPopup = true;
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), showMenuAction()}; }
    // Called later: both actions may open something that waits for an answer, and the program that asked waits for us.
    void doAction(const QString &name) override
    {
        auto *button = static_cast<TaskButton *>(object());
        if (name == pressAction())
            QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
        else if (name == showMenuAction())
            QMetaObject::invokeMethod(button, &TaskButton::openMenu, Qt::QueuedConnection);
    }
};

QAccessibleInterface *accessibleOf(const QString &className, QObject *object)
{
    // A widget without an interface of its own would appear in the tree as mere filling.
    if (className == QLatin1String("korvane::TaskbarPanel"))
        return new QAccessibleWidget(qobject_cast<QWidget *>(object), QAccessible::Window);
    if (className == QLatin1String("korvane::TaskbarView"))
        return new QAccessibleWidget(qobject_cast<QWidget *>(object), QAccessible::ToolBar);
    auto *button = qobject_cast<TaskButton *>(object);
    return button ? new AccessibleTask(button) : nullptr;
}

}  // namespace

void installTaskbarAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(accessibleOf);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace korvane
