#include <QtCore/QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

// Programs that register their factories while they are loaded.

using testing::HasSubstr;

namespace {

/// What a program left behind.
struct End
{
    explicit End(const char* program)
    {
        QProcess process;
        process.start(program, QStringList());
        const bool ended = process.waitForFinished(60000);
        EXPECT_TRUE(ended);
        of_its_own_accord = ended && process.exitStatus() == QProcess::NormalExit;
        output = process.readAllStandardOutput().toStdString();
        errors = process.readAllStandardError().toStdString();
    }

    bool of_its_own_accord = false;
    std::string output;
    std::string errors;
};

} // namespace

TEST(NamedFactoryFamilies, ProgramWithTwoProductsOfOneNameEndsWhileItIsLoaded)
{
    const End end(PROBE_OF_ONE_NAME);
    EXPECT_FALSE(end.of_its_own_accord);
    EXPECT_EQ("", end.output); // before its main function
    EXPECT_THAT(end.errors,
        HasSubstr("Two products with name 'terrain' are attempting to register with abstract factory "
                  "'AbstractModelFactory'. Please contact Velmor Stade with a bug-report."));
}

TEST(NamedFactoryFamilies, ProgramWithProductsOfTwoNamesIsLoaded)
{
    const End end(PROBE_OF_TWO_NAMES);
    EXPECT_TRUE(end.of_its_own_accord);
    EXPECT_EQ("loaded 1\n", end.output);
    EXPECT_EQ("", end.errors);
}
