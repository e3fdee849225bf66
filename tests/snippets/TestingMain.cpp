// docs/testing-a-host.md

//! [main]
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/testkit/LogCapture.h>
#include <tarqa/testkit/PrivateHome.h>
#include <tarqa/testkit/StartedApplication.h>

#include <gtest/gtest.h>

namespace testkit = tarqa::housekeeping::testkit;

/// Fails a test that leaves an entry in the error log that no LogCapture accounted for.
class UnannouncedEntries : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        for (const std::string& line : testkit::unannounced_log_lines()) {
            ADD_FAILURE() << "unannounced entry in the error log: " << line;
        }
    }
};

int main(int argc, char** argv)
{
    const testkit::PrivateHome home; // before anything else: logs and preferences go there
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new UnannouncedEntries); // which the list deletes
    pkBase::pkProductInfo::instance().product_name("HostTests"); // before anything is logged
    const testkit::StartedApplication started; // at its end all goes that the tests left, in its order
    return RUN_ALL_TESTS();
}
//! [main]
