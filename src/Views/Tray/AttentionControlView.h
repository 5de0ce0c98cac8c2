// The mark that some application wants attention, and the list of these applications.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Models/Tray/Tray.h"
#include "Views/Kit/SymbolButton.h"
#include "Views/Kit/ViewServices.h"

#include <QPointer>

class QVBoxLayout;

namespace korvane {

class Popover;

class AttentionControlView final : public SymbolButton {
    Q_OBJECT

public:
    AttentionControlView(AppModel &model, ViewServices &services, platform::Platform &platform, bool compact,
                         QWidget *parent);
    ~AttentionControlView() override;

    // Updates its mark, its tool tip and an open list from the model.
    void updateFromModel();
    // Null while it is closed.
    Popover *openList() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void showList(bool showing);
    void fillList();

    AppModel &model;
    ViewServices &services;
    platform::Platform &platform;
    bool compact;
    HoverList hover;
    bool clicked = false;  // opened by a click; then the list takes the keys
    Choice<NotificationBadgeStyle> markStyle = NotificationBadgeStyle::none;
    std::vector<AttentionAppItem> listed;
    QPointer<Popover> popover;
    QVBoxLayout *column = nullptr;
};

}  // namespace korvane
