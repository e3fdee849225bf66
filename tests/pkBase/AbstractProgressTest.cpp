#include <pkBase/AbstractProgress.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using testing::InSequence;
using testing::StrictMock;

namespace {

class Progress : public pkBase::AbstractProgress
{
public:
    ~Progress() override { deleted(); }
    MOCK_METHOD(void, open_run, (unsigned int), (override));
    MOCK_METHOD(void, set_percentage, (unsigned int), (override));
    MOCK_METHOD(void, set_text, (const QString&), (override));
    MOCK_METHOD(void, close_run, (), (override));
    MOCK_METHOD(void, deleted, ());
};

} // namespace

TEST(AbstractProgress, ReachesTheHostsSinkAndIsDeletedThroughTheBase)
{
    auto* const p_progress = new StrictMock<Progress>;
    const std::unique_ptr<pkBase::AbstractProgress> progress(p_progress);
    const InSequence in_this_order;
    EXPECT_CALL(*p_progress, open_run(0));
    EXPECT_CALL(*p_progress, set_text(QString::fromUtf8("Gel\xc3\xa4nde")));
    EXPECT_CALL(*p_progress, set_percentage(4294967295u));
    EXPECT_CALL(*p_progress, close_run());
    EXPECT_CALL(*p_progress, deleted());
    progress->open_run(0);
    progress->set_text(QString::fromUtf8("Gel\xc3\xa4nde"));
    progress->set_percentage(4294967295u);
    progress->close_run();
}
