#include "Platform/Icu/IcuText.h"

#include "tests/Ports/TextContract.h"

namespace korvane::platform {

INSTANTIATE_TEST_SUITE_P(Icu, TextContract,
                         testing::Values([]() -> std::unique_ptr<Text> { return std::make_unique<IcuText>(); }));

TEST(IcuText, LongTextHasOnlyItsFirstCharacterTaken)
{
    IcuText text;
    EXPECT_EQ(text.firstCharacter(std::string(100000, 'x')), "x");
}

}  // namespace korvane::platform
