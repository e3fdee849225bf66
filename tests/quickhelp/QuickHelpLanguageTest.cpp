#include "QuickHelpFixture.h"

#include "support/App.h"

#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>

#include <QtCore/QMap>
#include <QtCore/QTranslator>

// The quick help in the user's language.

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::MouseWheelDelta;
using tarqa::housekeeping::QuickHelpMouseButtonEntry;
using tarqa::housekeeping::QuickHelpMouseWheelEntry;

/// Knows the keys of a keyboard, and translates every text of the framework into its class and the text.
class Language : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        const QString name = QString::fromUtf8(context);
        if (name == "QShortcut") {
            return keys.value(QString::fromUtf8(text));
        }
        const QString space = "tarqa::housekeeping::";
        return name.startsWith(space) ? name.mid(space.size()) + '|' + QString::fromUtf8(text) : QString();
    }
    bool isEmpty() const override { return false; }

    QMap<QString, QString> keys{{"Ctrl", "Strg"}, {"Shift", "Umschalt"}, {"Alt", "Wahl"}};
};

class QuickHelpLanguage : public testing::Test
{
protected:
    QuickHelpLanguage() { QCoreApplication::installTranslator(&language); }
    ~QuickHelpLanguage() override { QCoreApplication::removeTranslator(&language); }

    static QString keys(const QKeySequence& keys)
    {
        return QuickHelpKeySequenceEntry(nullptr, doc(7), keys, "text", QuickHelpSection::View).input();
    }
    static QString button(Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return QuickHelpMouseButtonEntry(nullptr, doc(7), button, modifiers, "text", QuickHelpSection::View)
            .input();
    }
    static QString wheel(MouseWheelDelta delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return QuickHelpMouseWheelEntry(nullptr, doc(7), delta, modifiers, "text", QuickHelpSection::View)
            .input();
    }

    support::App app;
    Language language;
};

typedef QuickHelpLanguage QuickHelpKeySequenceEntryLanguage;
typedef QuickHelpLanguage QuickHelpMouseButtonEntryLanguage;
typedef QuickHelpLanguage QuickHelpMouseWheelEntryLanguage;
typedef QuickHelpLanguage QuickHelpManagerLanguage;

TEST_F(QuickHelpKeySequenceEntryLanguage, KeysAreCalledAsOnTheUsersKeyboard)
{
    EXPECT_EQ(keys(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K)), "Strg+Umschalt+K");
    EXPECT_EQ(keys(QKeySequence(Qt::ALT)), "Wahl");
}

TEST_F(QuickHelpKeySequenceEntryLanguage, TwoCharactersAreEnoughToLoseAPlusSign)
{
    language.keys["Ctrl"] = "S";
    ASSERT_EQ(QKeySequence(Qt::CTRL).toString(QKeySequence::NativeText), "S+");
    EXPECT_EQ(keys(QKeySequence(Qt::CTRL)), "S");
}

TEST_F(QuickHelpLanguage, ModifiersOfButtonsAndWheelsAreCalledAsOnTheUsersKeyboard)
{
    EXPECT_EQ(button(Qt::LeftButton, Qt::ShiftModifier), "Umschalt+QuickHelpMouseButtonEntry|LMB");
    EXPECT_EQ(button(Qt::LeftButton, Qt::MetaModifier | Qt::ShiftModifier),
        "Strg+Wahl+QuickHelpMouseButtonEntry|LMB");
    EXPECT_EQ(
        wheel(tarqa::housekeeping::WheelEither, Qt::ControlModifier), "Strg+QuickHelpMouseWheelEntry|Wheel");
}

TEST_F(QuickHelpMouseButtonEntryLanguage, ButtonsAreTranslated)
{
    EXPECT_EQ(button(Qt::LeftButton), "QuickHelpMouseButtonEntry|LMB");
    EXPECT_EQ(button(Qt::RightButton), "QuickHelpMouseButtonEntry|RMB");
    EXPECT_EQ(button(Qt::MiddleButton), "QuickHelpMouseButtonEntry|MMB");
    EXPECT_EQ(button(Qt::BackButton), "QuickHelpMouseButtonEntry|Unknown button");
}

TEST_F(QuickHelpMouseWheelEntryLanguage, WheelsAreTranslated)
{
    EXPECT_EQ(wheel(tarqa::housekeeping::WheelUp), "QuickHelpMouseWheelEntry|Wheel &#9650;");
    EXPECT_EQ(wheel(tarqa::housekeeping::WheelDown), "QuickHelpMouseWheelEntry|Wheel &#960;");
    EXPECT_EQ(wheel(tarqa::housekeeping::WheelEither), "QuickHelpMouseWheelEntry|Wheel");
}

TEST_F(QuickHelpManagerLanguage, SectionsAreTranslated)
{
    const char* const names[]
        = {"Current Tool", "View", "Navigator", "Selection", "Visibility", "Tools", "Editing", "File"};
    unsigned int section = 0;
    for (const char* const name : names) {
        EXPECT_EQ(list(static_cast<QuickHelpSection>(section++)).headerData(0, Qt::Horizontal).toString(),
            QString("QuickHelpManager|") + name);
    }
}

} // namespace
