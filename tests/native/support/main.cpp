// Runs the native tests. Every test is a leak test: it leaves as many objects of the library as it found.
#include "scripted_data_array.h"

#include <gtest/gtest.h>

namespace {

class LeakCheck : public testing::EmptyTestEventListener {
    long m_before = 0;

    void OnTestStart(testing::TestInfo const&) override
    {
        scripted_reset();
        m_before = scripted_live_objects();
    }

    void OnTestEnd(testing::TestInfo const&) override
    {
        EXPECT_EQ(scripted_live_objects(), m_before) << "objects of the library that nobody freed";
    }
};

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new LeakCheck);
    return RUN_ALL_TESTS();
}
