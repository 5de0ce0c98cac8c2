#include "tests/Platform/Linux/SampleApplications.h"

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    korvane::platform::installSampleApplications();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
