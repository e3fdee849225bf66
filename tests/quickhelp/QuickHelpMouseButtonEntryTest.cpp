#include "QuickHelpFixture.h"

#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::QuickHelpMouseButtonEntry;

QString shown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    return QuickHelpMouseButtonEntry(nullptr, doc(7), button, modifiers, "text", QuickHelpSection::View)
        .input();
}

TEST(QuickHelpMouseButtonEntry, KeepsWhatItIsGiven)
{
    QObject parent;
    const auto* const p_plain = new QuickHelpMouseButtonEntry(
        &parent, doc(7), Qt::RightButton, "text", QuickHelpSection::Selection);
    EXPECT_EQ(p_plain->parent(), &parent);
    EXPECT_TRUE(p_plain->documentId() == 7);
    EXPECT_EQ(p_plain->mouseButton(), Qt::RightButton);
    EXPECT_EQ(p_plain->modifiers(), Qt::NoModifier);
    EXPECT_EQ(p_plain->description(), "text");
    EXPECT_EQ(p_plain->section(), QuickHelpSection::Selection);
    const QuickHelpMouseButtonEntry modified(
        nullptr, doc(7), Qt::LeftButton, Qt::ShiftModifier, "other", QuickHelpSection::File);
    EXPECT_EQ(modified.mouseButton(), Qt::LeftButton);
    EXPECT_EQ(modified.modifiers(), Qt::ShiftModifier);
    EXPECT_EQ(modified.description(), "other");
    EXPECT_EQ(modified.section(), QuickHelpSection::File);
}

TEST(QuickHelpMouseButtonEntry, NamesTheButtons)
{
    EXPECT_EQ(shown(Qt::LeftButton, Qt::NoModifier), "LMB");
    EXPECT_EQ(shown(Qt::RightButton, Qt::NoModifier), "RMB");
    EXPECT_EQ(shown(Qt::MiddleButton, Qt::NoModifier), "MMB");
    for (const Qt::MouseButton other : {Qt::NoButton, Qt::BackButton, Qt::ForwardButton, Qt::ExtraButton24}) {
        EXPECT_EQ(shown(other, Qt::NoModifier), "Unknown button");
    }
    EXPECT_EQ(shown(static_cast<Qt::MouseButton>(3), Qt::NoModifier), "Unknown button");
    const QuickHelpMouseButtonEntry plain(nullptr, doc(7), Qt::LeftButton, "text", QuickHelpSection::View);
    EXPECT_EQ(plain.input(), "LMB");
}

TEST(QuickHelpMouseButtonEntry, SixCombinationsHaveAPrefix)
{
    EXPECT_EQ(shown(Qt::LeftButton, Qt::ShiftModifier), "Shift+LMB");
    EXPECT_EQ(shown(Qt::LeftButton, Qt::ControlModifier), "Ctrl+LMB");
    EXPECT_EQ(shown(Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier), "Ctrl+Shift+LMB");
    EXPECT_EQ(shown(Qt::LeftButton, Qt::AltModifier), "Alt+LMB");
    EXPECT_EQ(shown(Qt::LeftButton, Qt::MetaModifier), "Alt+Shift+LMB");
    EXPECT_EQ(shown(Qt::LeftButton, Qt::MetaModifier | Qt::ShiftModifier), "Ctrl+Alt+LMB");
    EXPECT_EQ(shown(Qt::RightButton, Qt::ShiftModifier), "Shift+RMB");
    EXPECT_EQ(shown(Qt::MiddleButton, Qt::AltModifier), "Alt+MMB");
    EXPECT_EQ(shown(Qt::BackButton, Qt::ControlModifier), "Ctrl+Unknown button");
}

TEST(QuickHelpMouseButtonEntry, OtherCombinationsHaveNone)
{
    const unsigned int all[]
        = {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier, Qt::KeypadModifier};
    int without = 0;
    for (unsigned int bits = 0; bits < 32; ++bits) {
        Qt::KeyboardModifiers modifiers;
        for (unsigned int i = 0; i < 5; ++i) {
            modifiers.setFlag(static_cast<Qt::KeyboardModifier>(all[i]), (bits >> i & 1) != 0);
        }
        without += shown(Qt::LeftButton, modifiers) == "LMB";
    }
    EXPECT_EQ(without, 32 - 6);
    EXPECT_EQ(shown(Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier), "LMB");
    EXPECT_EQ(shown(Qt::LeftButton, Qt::ShiftModifier | Qt::KeypadModifier), "LMB");
}

} // namespace
