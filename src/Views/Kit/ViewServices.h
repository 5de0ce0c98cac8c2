// What all bars of the program share.
#pragma once

#include "Views/Kit/Painting.h"
#include "Views/Kit/TitleText.h"

namespace korvane {

struct ViewServices {
    IconPixmaps icons;
    TextMeasurer tabText;  // in the font of the tabs
    ViewServices();
};

}  // namespace korvane
