#include "QuickHelpFixture.h"

#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::MouseWheelDelta;
using tarqa::housekeeping::QuickHelpMouseWheelEntry;
using tarqa::housekeeping::WheelDown;
using tarqa::housekeeping::WheelEither;
using tarqa::housekeeping::WheelUp;

QString shown(MouseWheelDelta delta, Qt::KeyboardModifiers modifiers)
{
    return QuickHelpMouseWheelEntry(nullptr, doc(7), delta, modifiers, "text", QuickHelpSection::View)
        .input();
}

TEST(QuickHelpMouseWheelEntry, KeepsWhatItIsGiven)
{
    QObject parent;
    const auto* const p_plain
        = new QuickHelpMouseWheelEntry(&parent, doc(7), WheelUp, "text", QuickHelpSection::Selection);
    EXPECT_EQ(p_plain->parent(), &parent);
    EXPECT_TRUE(p_plain->documentId() == 7);
    EXPECT_EQ(p_plain->wheelDelta(), WheelUp);
    EXPECT_EQ(p_plain->modifiers(), Qt::NoModifier);
    EXPECT_EQ(p_plain->description(), "text");
    EXPECT_EQ(p_plain->section(), QuickHelpSection::Selection);
    const QuickHelpMouseWheelEntry modified(
        nullptr, doc(7), WheelDown, Qt::AltModifier, "other", QuickHelpSection::File);
    EXPECT_EQ(modified.wheelDelta(), WheelDown);
    EXPECT_EQ(modified.modifiers(), Qt::AltModifier);
    EXPECT_EQ(modified.description(), "other");
    EXPECT_EQ(modified.section(), QuickHelpSection::File);
}

TEST(QuickHelpMouseWheelEntry, NamesTheDirections)
{
    EXPECT_EQ(shown(WheelUp, Qt::NoModifier), "Wheel &#9650;");
    EXPECT_EQ(shown(WheelDown, Qt::NoModifier), "Wheel &#960;");
    EXPECT_EQ(shown(WheelEither, Qt::NoModifier), "Wheel");
    EXPECT_EQ(shown(static_cast<MouseWheelDelta>(3), Qt::NoModifier), "Wheel");
    const QuickHelpMouseWheelEntry plain(nullptr, doc(7), WheelUp, "text", QuickHelpSection::View);
    EXPECT_EQ(plain.input(), "Wheel &#9650;");
}

TEST(QuickHelpMouseWheelEntry, SixCombinationsHaveAPrefix)
{
    EXPECT_EQ(shown(WheelDown, Qt::ShiftModifier), "Shift+Wheel &#960;");
    EXPECT_EQ(shown(WheelUp, Qt::ControlModifier), "Ctrl+Wheel &#9650;");
    EXPECT_EQ(shown(WheelEither, Qt::ControlModifier | Qt::ShiftModifier), "Ctrl+Shift+Wheel");
    EXPECT_EQ(shown(WheelEither, Qt::AltModifier), "Alt+Wheel");
    EXPECT_EQ(shown(WheelEither, Qt::MetaModifier), "Alt+Shift+Wheel");
    EXPECT_EQ(shown(WheelEither, Qt::MetaModifier | Qt::ShiftModifier), "Ctrl+Alt+Wheel");
}

TEST(QuickHelpMouseWheelEntry, OtherCombinationsHaveNone)
{
    EXPECT_EQ(shown(WheelUp, Qt::ControlModifier | Qt::AltModifier), "Wheel &#9650;");
    EXPECT_EQ(shown(WheelUp, Qt::ShiftModifier | Qt::AltModifier), "Wheel &#9650;");
    EXPECT_EQ(shown(WheelUp, Qt::ControlModifier | Qt::MetaModifier), "Wheel &#9650;");
}

} // namespace
