#include "tests/Platform/X11/X11World.h"

namespace korvane::platform {

INSTANTIATE_TEST_SUITE_P(X11, ApplicationsContract, ::testing::Values(&makeX11World));
INSTANTIATE_TEST_SUITE_P(X11, AccessibilityContract, ::testing::Values(&makeX11World));
INSTANTIATE_TEST_SUITE_P(X11, WindowListContract, ::testing::Values(&makeX11World));
INSTANTIATE_TEST_SUITE_P(X11, ScreensContract, ::testing::Values(&makeX11World));
INSTANTIATE_TEST_SUITE_P(X11, PointerContract, ::testing::Values(&makeX11World));
INSTANTIATE_TEST_SUITE_P(X11, HotKeysContract, ::testing::Values(&makeX11World));
INSTANTIATE_TEST_SUITE_P(X11, PanelsContract, ::testing::Values(&makeX11World));

}  // namespace korvane::platform
