// Controls of the tray on a bar, on a simulated desktop.
#pragma once

#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QTest>
#include <QWidget>
#include <utility>

namespace korvane::testing {

class TrayFixture : public ModelFixture {
protected:
    TrayFixture()
    {
        qputenv("TZ", "UTC");
        bar.resize(400, 34);
        bar.move(0, 500);
        makeModel();
    }
    template <typename View, typename... Arguments> View *add(Arguments &&...arguments)
    {
        auto *view = new View(std::forward<Arguments>(arguments)..., &bar);
        bar.show();
        view->show();
        settle();
        return view;
    }

    QWidget bar;
};

}  // namespace korvane::testing
