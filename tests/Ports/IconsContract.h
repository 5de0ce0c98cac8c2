// What every source of pictures has to give.
#pragma once

#include "Ports/Icons.h"

#include <gtest/gtest.h>
#include <memory>

namespace korvane::platform {

using MakeIcons = std::unique_ptr<Icons> (*)();

class IconsContract : public testing::TestWithParam<MakeIcons> {
protected:
    std::unique_ptr<Icons> icons = GetParam()();
};

}  // namespace korvane::platform
