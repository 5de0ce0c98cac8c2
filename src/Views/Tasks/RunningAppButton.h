// The button of a task that stands by itself.
#pragma once

#include "Views/Tasks/TaskButton.h"

namespace korvane {

class RunningAppButton final : public TaskButton {
    Q_OBJECT

public:
    RunningAppButton(const TaskButtonHost &host, QWidget *parent);

    void setEntry(const TaskbarEntry &entry, bool stripAtTop) override;
    void setItem(const RunningAppItem &item, bool stripAtTop);

protected:
    Menu contextMenu() const override;
    Drag drag() const override;
    void closeEntry() override;

private:
    RunningAppItem item;
};

}  // namespace korvane
