#include "support/App.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <pkBaseQt/pkProductInfo.h>

#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>
#include <vector>

using pkBase::pkProductInfo;

/// Hears what the button asks for.
class QPKHelpButton : public testing::Test
{
protected:
    QStringList asked_for() const
    {
        QStringList keys;
        for (const QList<QVariant>& arguments : m_opened) {
            keys.append(arguments.at(0).toString());
        }
        return keys;
    }

    support::App m_app;
    QSignalSpy m_opened{&pkProductInfo::instance(), &pkProductInfo::openHelp};
    QSignalSpy m_opened_outside{&pkProductInfo::instance(), &pkProductInfo::openHelpExternal};
};

TEST_F(QPKHelpButton, ClickOpensItsHelpKeyOnce)
{
    pkBase::QPKHelpButton button("TARQ_KEY");
    EXPECT_EQ(button.helpKey(), "TARQ_KEY");
    button.click();
    EXPECT_EQ(asked_for(), QStringList("TARQ_KEY"));
    EXPECT_EQ(m_opened_outside.size(), 0);
}

TEST_F(QPKHelpButton, ClickWithoutAKeyDoesNothing)
{
    pkBase::QPKHelpButton button;
    EXPECT_EQ(button.helpKey(), QString());
    button.click();
    pkBase::QPKHelpButton empty{QString()};
    empty.click();
    button.setHelpKey("TARQ_KEY");
    button.setHelpKey("");
    button.click();
    EXPECT_EQ(asked_for(), QStringList());
}

TEST_F(QPKHelpButton, OpensTheKeyThatWasSetLast)
{
    pkBase::QPKHelpButton button;
    button.setHelpKey("TARQ_FIRST");
    button.click();
    button.setHelpKey(QString::fromUtf8("Gel\xc3\xa4nde.htm#%1"));
    button.click();
    EXPECT_EQ(asked_for(), QStringList({"TARQ_FIRST", QString::fromUtf8("Gel\xc3\xa4nde.htm#%1")}));
}

TEST_F(QPKHelpButton, KeyIsAProperty)
{
    pkBase::QPKHelpButton button;
    EXPECT_TRUE(button.setProperty("helpKey", "TARQ_KEY"));
    EXPECT_EQ(button.helpKey(), "TARQ_KEY");
    EXPECT_EQ(button.property("helpKey").toString(), "TARQ_KEY");
    button.click();
    EXPECT_EQ(asked_for(), QStringList("TARQ_KEY"));
}

TEST_F(QPKHelpButton, TakesAParent)
{
    QWidget parent;
    const auto* const p_plain = new pkBase::QPKHelpButton(&parent);
    const auto* const p_with_key = new pkBase::QPKHelpButton("TARQ_KEY", &parent);
    EXPECT_EQ(p_plain->parentWidget(), &parent);
    EXPECT_EQ(p_with_key->parentWidget(), &parent);
}

TEST_F(QPKHelpButton, ShowsWhatItIsFor)
{
    const pkBase::QPKHelpButton button("TARQ_KEY");
    EXPECT_EQ(button.text(), "Help");
}

TEST_F(QPKHelpButton, WorksByMouseAndKeyboard)
{
    pkBase::QPKHelpButton button("TARQ_KEY");
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(asked_for(), QStringList({"TARQ_KEY", "TARQ_KEY"}));
}

TEST_F(QPKHelpButton, DisabledButtonOpensNothing)
{
    pkBase::QPKHelpButton button("TARQ_KEY");
    button.setEnabled(false);
    button.click();
    EXPECT_EQ(asked_for(), QStringList());
}

TEST_F(QPKHelpButton, SeveralButtonsOpenTheirOwnKeys)
{
    pkBase::QPKHelpButton one("TARQ_ONE");
    pkBase::QPKHelpButton two("TARQ_TWO");
    two.click();
    one.click();
    EXPECT_EQ(asked_for(), QStringList({"TARQ_TWO", "TARQ_ONE"}));
}

TEST_F(QPKHelpButton, MayGoWhileItsPageIsShown)
{
    auto button = std::make_unique<pkBase::QPKHelpButton>("TARQ_KEY");
    std::vector<char> in_its_place;
    QObject receiver;
    QString shown;
    QObject::connect(&pkProductInfo::instance(), &pkProductInfo::openHelp, &receiver, [&] {
        button.reset();
        in_its_place.assign(sizeof(pkBase::QPKHelpButton), 'x');
    });
    QObject::connect(&pkProductInfo::instance(), &pkProductInfo::openHelp, &receiver,
        [&](const QString& key) { shown = key; }); // the next who hears it
    button->click();
    EXPECT_FALSE(button);
    EXPECT_EQ(shown, "TARQ_KEY");
    EXPECT_EQ(asked_for(), QStringList("TARQ_KEY"));
}

TEST_F(QPKHelpButton, MayGetAnotherKeyWhileItsPageIsShown)
{
    pkBase::QPKHelpButton button("TARQ_KEY");
    QObject receiver;
    QStringList shown;
    QObject::connect(&pkProductInfo::instance(), &pkProductInfo::openHelp, &receiver,
        [&] { button.setHelpKey("TARQ_NEXT"); });
    QObject::connect(&pkProductInfo::instance(), &pkProductInfo::openHelp, &receiver,
        [&](const QString& key) { shown.append(key); });
    button.click();
    button.click();
    EXPECT_EQ(shown, QStringList({"TARQ_KEY", "TARQ_NEXT"}));
}
