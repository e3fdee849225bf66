#include <pkBaseQt/QPKProxyStyle.h>

#include "support/App.h"

#include <gtest/gtest.h>

#include <QtCore/QPointer>
#include <QtWidgets/QPushButton>

using pkBase::QPKProxyStyle;

namespace {

/// As programs derive their own style.
class ProgramStyle : public QPKProxyStyle
{ };

} // namespace

TEST(QPKProxyStyle, StandsOnThePlatformsStyle)
{
    const support::App app;
    const QPKProxyStyle style;
    ASSERT_NE(style.baseStyle(), nullptr);
    EXPECT_EQ(style.baseStyle()->metaObject()->className(),
        static_cast<const char*>(QApplication::style()->metaObject()->className()));
}

TEST(QPKProxyStyle, MenusScroll)
{
    const support::App app;
    const QPKProxyStyle style;
    EXPECT_EQ(style.styleHint(QStyle::SH_Menu_Scrollable), 1);
}

TEST(QPKProxyStyle, OtherHintsAreThoseOfThePlatformsStyle)
{
    const support::App app;
    const QPKProxyStyle style;
    for (const QStyle::StyleHint hint : {QStyle::SH_ToolTip_WakeUpDelay, QStyle::SH_ToolTip_FallAsleepDelay,
             QStyle::SH_DialogButtonLayout, QStyle::SH_ComboBox_Popup, QStyle::SH_TabBar_ElideMode}) {
        EXPECT_EQ(style.styleHint(hint), style.baseStyle()->styleHint(hint)) << hint;
    }
}

TEST(QPKProxyStyle, NextToolTipComesAtOnceWhereOneIsOpen)
{
    const support::App app;
    const QPKProxyStyle style;
    EXPECT_GT(style.styleHint(QStyle::SH_ToolTip_FallAsleepDelay), 0);
}

TEST(QPKProxyStyle, ApplicationOwnsTheStyleThatItIsGiven)
{
    QPointer<QPKProxyStyle> style;
    {
        const support::App app;
        style = new ProgramStyle;
        QApplication::setStyle(style);
        EXPECT_EQ(QApplication::style(), style);
        QPushButton button("A button");
        button.show();
        EXPECT_EQ(button.style(), style);
        EXPECT_FALSE(button.grab().isNull());
    }
    EXPECT_TRUE(style.isNull());
}
