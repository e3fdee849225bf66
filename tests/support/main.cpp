#include "support/LogCapture.h"
#include "support/PrivateHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// Fails a test that leaves an entry in the error log that it did not announce with a LogCapture.
class UnannouncedEntries : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        for (const std::string& line : support::unannounced_log_lines()) {
            ADD_FAILURE() << "unannounced entry in the error log: " << line;
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    const support::PrivateHome home;
    testing::UnitTest::GetInstance()->listeners().Append(new UnannouncedEntries);
    return RUN_ALL_TESTS();
}
