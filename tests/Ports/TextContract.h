// What every text service has to do.
#pragma once

#include "Ports/Text.h"

#include <gtest/gtest.h>
#include <memory>

namespace korvane::platform {

using MakeText = std::unique_ptr<Text> (*)();

class TextContract : public testing::TestWithParam<MakeText> {
protected:
    std::unique_ptr<Text> text = GetParam()();
};

}  // namespace korvane::platform
