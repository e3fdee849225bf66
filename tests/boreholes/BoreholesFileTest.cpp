#include "BoreholesFile.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

// The files of the host with boreholes.

using boreholes::Borehole;
using boreholes::Boreholes;
using boreholes::read_boreholes;
using boreholes::write_boreholes;
using testing::IsEmpty;

namespace {

class BoreholesFile : public testing::Test
{
protected:
    QString path() const { return m_folder.path() + "/holes.csv"; }
    void write(const QByteArray& text) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QByteArray text() const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(BoreholesFile, GivesBackWhatWasWritten)
{
    const Boreholes list = {{"Mühle, alt", 0.1, -1e7, 1.0 / 3}, {"B", 0, 0, 0}};
    write_boreholes(path(), list);
    EXPECT_EQ(read_boreholes(path()), list);
    EXPECT_TRUE(text().startsWith("x,y,depth,name\n0.1,-1e+07,"));
}

TEST_F(BoreholesFile, MayBeEmptyAndHaveEmptyLines)
{
    write_boreholes(path(), {});
    EXPECT_THAT(read_boreholes(path()), IsEmpty());
    write("x,y,depth,name\r\n\r\n1,2,3,Mill\r\n");
    EXPECT_EQ(read_boreholes(path()), (Boreholes{{"Mill", 1, 2, 3}}));
}

TEST_F(BoreholesFile, IsRefusedWithTheLineThatIsNone)
{
    for (const char* line : {"1,2,Mill", "1,2,3,", "1,2,deep,Mill", "1;2;3;Mill", "nan?,2,3,Mill"}) {
        write(QByteArray("x,y,depth,name\n1,2,3,Oak\n") + line + '\n');
        try {
            read_boreholes(path());
            ADD_FAILURE() << line;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), std::string("This line holds no borehole: ") + line);
        }
    }
}

TEST_F(BoreholesFile, ThatCannotBeHadIsToldWithItsName)
{
    EXPECT_THROW(read_boreholes(path()), std::runtime_error);
    write("old");
    EXPECT_THROW(write_boreholes(path() + "/below-a-file.csv", {{"Mill", 1, 2, 3}}), std::runtime_error);
    EXPECT_EQ(text(), "old");
}
