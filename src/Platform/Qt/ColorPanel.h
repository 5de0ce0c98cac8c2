// The one colour panel of the program. What it is opened for takes every colour while it is being tried.
#pragma once

#include "Ports/Values/Color.h"

#include <QColorDialog>
#include <functional>
#include <optional>

namespace korvane::platform {

class Panels;

class ColorPanel final : public QColorDialog {
public:
    // `panels` lifts it above the other windows; may be null.
    explicit ColorPanel(Panels *panels);

    void open(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed);

private:
    Panels *panels;
    std::function<void(const Rgb &)> apply;
};

}  // namespace korvane::platform
