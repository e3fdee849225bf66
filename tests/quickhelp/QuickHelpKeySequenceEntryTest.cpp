#include "QuickHelpFixture.h"

namespace {

using namespace quickhelp_test;

QString shown(const QKeySequence& keys)
{
    return QuickHelpKeySequenceEntry(nullptr, doc(7), keys, "text", QuickHelpSection::View).input();
}

TEST(QuickHelpKeySequenceEntry, KeepsWhatItIsGiven)
{
    QObject parent;
    const auto* const p_entry = new QuickHelpKeySequenceEntry(
        &parent, doc(7), QKeySequence(Qt::CTRL | Qt::Key_K), "text", QuickHelpSection::Editing);
    EXPECT_EQ(p_entry->parent(), &parent);
    EXPECT_TRUE(p_entry->documentId() == 7);
    EXPECT_EQ(p_entry->keySequence(), QKeySequence(Qt::CTRL | Qt::Key_K));
    EXPECT_EQ(p_entry->description(), "text");
    EXPECT_EQ(p_entry->section(), QuickHelpSection::Editing);
    EXPECT_FALSE(p_entry->attached());
}

TEST(QuickHelpKeySequenceEntry, ShowsTheNativeText)
{
    EXPECT_EQ(shown(QKeySequence(Qt::Key_A)), "A");
    EXPECT_EQ(shown(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)), "Ctrl+Shift+Z");
    EXPECT_EQ(shown(QKeySequence(Qt::CTRL | Qt::Key_K, Qt::CTRL | Qt::Key_C)), "Ctrl+K, Ctrl+C");
    EXPECT_EQ(shown(QKeySequence()), "");
    EXPECT_EQ(shown(QKeySequence(Qt::Key_Up)), "Up");
}

TEST(QuickHelpKeySequenceEntry, SinglePlusSignStays)
{
    EXPECT_EQ(shown(QKeySequence(Qt::Key_Plus)), "+");
}

TEST(QuickHelpKeySequenceEntry, LongerTextLosesItsLastPlusSign)
{
    ASSERT_EQ(QKeySequence(Qt::CTRL | Qt::Key_Plus).toString(QKeySequence::NativeText), "Ctrl++");
    EXPECT_EQ(shown(QKeySequence(Qt::CTRL | Qt::Key_Plus)), "Ctrl+");
    EXPECT_EQ(shown(QKeySequence(Qt::CTRL)), "Ctrl");
    EXPECT_EQ(shown(QKeySequence(Qt::Key_Plus, Qt::Key_Plus)), "+, ");
}

TEST(QuickHelpKeySequenceEntry, FourControlCharactersBecomeArrows)
{
    ASSERT_EQ(QKeySequence(1).toString(QKeySequence::NativeText), QString(QChar(1)));
    EXPECT_EQ(shown(QKeySequence(1)), "&uarr;");
    EXPECT_EQ(shown(QKeySequence(2)), "&darr;");
    EXPECT_EQ(shown(QKeySequence(3)), "&larr;");
    EXPECT_EQ(shown(QKeySequence(4)), "&rarr;");
    EXPECT_EQ(shown(QKeySequence(5)), QString(QChar(5)));
    EXPECT_EQ(shown(QKeySequence(Qt::CTRL | 1, 4)), "Ctrl+&uarr;, &rarr;");
}

} // namespace
