// The content of one panel: the main row along the bottom, the overflow rows stacked above it. Runs a layout pass, then
// brings its widgets to it; a tab keeps its widget for as long as its entry lives.
#pragma once

#include "Models/AppModel.h"
#include "Models/TaskbarPass.h"
#include "Views/Painting.h"
#include "Views/TitleText.h"

#include <QRegion>
#include <QWidget>
#include <unordered_map>
#include <vector>

namespace korvane {

class MainRowGround;
class OverflowRowCard;
class TaskButton;

// What all bars of the program share.
struct ViewServices {
    IconPixmaps icons;
    TextMeasurer tabText;
    ViewServices();
};

class TaskbarView final : public QWidget {
    Q_OBJECT

public:
    TaskbarView(AppModel &model, ViewServices &services, QWidget *parent = nullptr);
    ~TaskbarView() override;

    // One pass. Widgets whose part did not change are left alone.
    void updateFromModel();
    // Whether the desktop can shine through.
    void setTranslucent(bool translucent);

    const TaskbarLayout &taskbarLayout() const { return current; }
    // Null when no entry has that identifier.
    TaskButton *button(const std::string &entryID) const;
    // The part of the view that is drawn; the rest belongs to the desktop behind it.
    QRegion drawnRegion() const;

Q_SIGNALS:
    void drawnRegionChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Place {
        QWidget *row = nullptr;
        QRect rectangle;
        bool overflow = false;
    };

    void runPass();
    void arrange();
    void arrangeRows();
    std::vector<Place> places() const;
    void clicked(const std::string &entryID);
    void showWindowMenu(const RunningAppGroup &group, TaskButton &opener);

    AppModel &model;
    ViewServices &services;
    TaskbarLayout current;
    int reportedRowCount = 0;
    bool isTranslucent = false;
    MainRowGround *mainRow;
    std::vector<OverflowRowCard *> cards;  // nearest the bar first; one for each row that holds tasks
    std::unordered_map<std::string, TaskButton *> buttons;
    QRegion reportedRegion;
    std::string openGroupID;  // of the group whose list is open; empty for none
};

}  // namespace korvane
