// The one colour panel of the program. The caller gets every colour while the user tries it.
#pragma once

#include "Ports/Values/Color.h"

#include <QColorDialog>
#include <functional>
#include <optional>

namespace korvane::platform {

class Panels;

class ColorPanel final : public QColorDialog {
public:
    // `panels` keeps the panel above the other windows; it may be null.
    explicit ColorPanel(Panels *panels);

    void open(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed);

private:
    Panels *panels;
    std::function<void(const Rgb &)> apply;
};

}  // namespace korvane::platform
