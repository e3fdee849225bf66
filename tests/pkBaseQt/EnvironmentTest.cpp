#include <pkBaseQt/Environment.h>

#include <QtCore/QByteArray>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using pkBase::Environment;

namespace {

const char* const s_name = "HK_ENVIRONMENT_TEST";

/// What the process and Qt see; "(unset)" if there is none.
std::string value_of(const char* name)
{
    const char* p_value = std::getenv(name);
    EXPECT_EQ(qEnvironmentVariableIsSet(name), p_value != nullptr);
    return p_value ? p_value : "(unset)";
}

/// What a program that is started now gets.
std::string inherited(const char* name)
{
    QProcess process;
    process.start("printenv", {name});
    process.waitForFinished(-1);
    return process.readAllStandardOutput().toStdString();
}

} // namespace

TEST(Environment, SetsAVariable)
{
    EXPECT_TRUE(Environment::putQEnv("HK_ENVIRONMENT_TEST=a value"));
    EXPECT_EQ(value_of(s_name), "a value");
    EXPECT_EQ(inherited(s_name), "a value\n");
}

TEST(Environment, NameMayBeOneLetter)
{
    EXPECT_TRUE(Environment::putQEnv("Q=a value"));
    EXPECT_EQ(value_of("Q"), "a value");
}

TEST(Environment, ReplacesAnOlderValue)
{
    setenv(s_name, "old", 1);
    EXPECT_TRUE(Environment::putQEnv("HK_ENVIRONMENT_TEST=new"));
    EXPECT_EQ(value_of(s_name), "new");
    EXPECT_TRUE(Environment::putQEnv("HK_ENVIRONMENT_TEST=newer"));
    EXPECT_EQ(value_of(s_name), "newer");
}

TEST(Environment, DoesNotReferToTheTextLater)
{
    QByteArray text("HK_ENVIRONMENT_TEST=kept");
    EXPECT_TRUE(Environment::putQEnv(text));
    text.fill('x');
    EXPECT_EQ(value_of(s_name), "kept");
}

TEST(Environment, EmptyValueIsSetAsSuch)
{
    setenv(s_name, "old", 1);
    EXPECT_TRUE(Environment::putQEnv("HK_ENVIRONMENT_TEST="));
    EXPECT_EQ(value_of(s_name), "");
}

TEST(Environment, ValueMayHoldEqualSignsAndAnyByte)
{
    EXPECT_TRUE(Environment::putQEnv("HK_ENVIRONMENT_TEST==a=b\n\xff\xfe%1"));
    EXPECT_EQ(value_of(s_name), "=a=b\n\xff\xfe%1");
}

TEST(Environment, HugeValueIsSetWhole)
{
    EXPECT_TRUE(Environment::putQEnv("HK_ENVIRONMENT_TEST=" + QByteArray(1024 * 1024, 'x')));
    EXPECT_EQ(value_of(s_name), std::string(1024 * 1024, 'x'));
}

TEST(Environment, TextWithoutAnEqualSignChangesNothing)
{
    setenv(s_name, "old", 1);
    EXPECT_FALSE(Environment::putQEnv(s_name));
    EXPECT_FALSE(Environment::putQEnv(""));
    EXPECT_FALSE(Environment::putQEnv(QByteArray()));
    EXPECT_EQ(value_of(s_name), "old");
}

TEST(Environment, TextWithoutANameChangesNothing)
{
    EXPECT_FALSE(Environment::putQEnv("=value"));
    EXPECT_FALSE(Environment::putQEnv("="));
    EXPECT_EQ(value_of(""), "(unset)");
}

TEST(Environment, TextWithANullCharacterChangesNothing)
{
    setenv(s_name, "old", 1);
    EXPECT_FALSE(Environment::putQEnv(QByteArray("HK_ENVIRONMENT_TEST=a\0b", 23)));
    EXPECT_FALSE(Environment::putQEnv(QByteArray("HK_ENVIRONMENT_TEST=\0", 21)));
    EXPECT_FALSE(Environment::putQEnv(QByteArray("HK_ENVIRONMENT\0_TEST=a", 22)));
    EXPECT_EQ(value_of(s_name), "old");
    EXPECT_EQ(value_of("HK_ENVIRONMENT"), "(unset)");
}
