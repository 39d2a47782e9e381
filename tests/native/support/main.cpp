// Runs the native tests. Every test is a leak test: it leaves no object of the library.
#include "scripted_data_array.h"

#include <gtest/gtest.h>

namespace {

class LeakCheck : public testing::EmptyTestEventListener {
    void OnTestStart(testing::TestInfo const&) override { scripted_reset(); }

    void OnTestEnd(testing::TestInfo const&) override
    {
        EXPECT_EQ(scripted_live_objects(), 0) << "objects of the library that nobody freed";
    }
};

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new LeakCheck);
    return RUN_ALL_TESTS();
}
