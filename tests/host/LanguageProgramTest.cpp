#include "BatchProcess.h"
#include "RasterFiles.h"
#include "support/VirtualScreen.h"
#include "tour/TourReport.h"
#include "tour/TourSteps.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host_test;
using testing::HasSubstr;
using testing::Not;

// The language of the program as it is started: by an option, or by the system.

namespace {

const char* const s_script
    = "info\nscale 1.5\nsmooth 1\nexport out.tif\nexport out.asc\nexport out.gpkg 12.5\n"
      "crop 0 3 0 3\nundo\nundo 5\ninfo\n";

/// A program on a system that speaks German.
class GermanSystem : public BatchProcess
{
public:
    GermanSystem()
    {
        set_variable("LC_ALL", "de_DE.UTF-8");
        set_variable("LANGUAGE", "de");
    }
};

struct Outcome
{
    int code;
    std::string out;
    std::vector<std::string> files;
};

/// Runs the script with the options in front, in a folder of its own.
Outcome run(BatchProcess& process, const std::string& folder, std::vector<std::string> options)
{
    const std::string raster = make_terrain_file("language.tif");
    make_directory(folder);
    write_text(scratch("language.batch"),
        QString(s_script).replace("out.", QString::fromStdString(scratch(folder) + "/out.")).toStdString());
    for (const std::string& word : {std::string("--batch"), scratch("language.batch"), raster}) {
        options.push_back(word);
    }
    process.set_variable("OGR_CURRENT_DATE", "2020-01-01T00:00:00.000Z"); // which a GeoPackage holds
    process.start(options);
    const int code = process.finish();
    EXPECT_EQ(code, 0) << process.error();
    Outcome outcome{code, process.out(), {}};
    for (const std::string& name : names_in(scratch(folder))) {
        outcome.files.push_back(name + '\n' + read_text(scratch(folder) + '/' + name));
    }
    EXPECT_GE(outcome.files.size(), 3u);
    return outcome;
}

/// Without the path of the log, which is another one each time.
std::string comparable(const std::string& out)
{
    return QString::fromStdString(out).remove(QRegularExpression("error log: .*")).toStdString();
}

/// All numbers of a text that have a fraction.
QStringList fractions(const std::string& text)
{
    QStringList found;
    static const QRegularExpression s_fraction("\\d+[.,]\\d+");
    for (auto match = s_fraction.globalMatch(QString::fromStdString(text)); match.hasNext();) {
        found.append(match.next().captured());
    }
    return found;
}

/// The steps of a tour that ended well, with the options in front.
QJsonArray tour(BatchProcess& process, std::vector<std::string> options)
{
    const support::VirtualScreen screen;
    process.show_on(screen.display());
    options.insert(options.end(), {"--tour", scratch("pictures")});
    process.start(options);
    EXPECT_EQ(process.finish(), 0) << process.error();
    const std::string text = read_text(scratch("pictures") + "/" + terrain::TourReport::list_name);
    const QJsonArray steps
        = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object().value("steps").toArray();
    EXPECT_EQ(steps.size(), static_cast<int>(terrain::tour_steps().size()));
    return steps;
}

std::string first_check(const QJsonArray& steps)
{
    return steps[0].toObject()["checks"].toArray()[0].toObject()["text"].toString().toStdString();
}

} // namespace

TEST(LanguageOfABatch, IsEnglishOnEverySystem)
{
    BatchProcess plain;
    GermanSystem german;
    const Outcome expected = run(plain, "one", {});
    const Outcome found = run(german, "two", {});
    EXPECT_EQ(comparable(found.out).substr(0, 20), comparable(expected.out).substr(0, 20));
    EXPECT_THAT(found.out, HasSubstr("cell size: "));
    EXPECT_EQ(QString::fromStdString(comparable(found.out)).replace("/two/", "/one/").toStdString(),
        comparable(expected.out));
    EXPECT_EQ(found.files, expected.files);
}

TEST(LanguageOfABatch, ChangesWithTheOption)
{
    BatchProcess process;
    const Outcome german = run(process, "one", {"--language", "de"});
    EXPECT_THAT(german.out, HasSubstr("Zellengröße: "));
    EXPECT_THAT(german.out, HasSubstr("Skalieren: Faktor 1.5"));
    EXPECT_THAT(german.out, HasSubstr("checksum: ")) << "scripts look for it";
}

TEST(LanguageOfABatch, NeitherTouchesNumbersNorFiles)
{
    BatchProcess plain;
    const Outcome expected = run(plain, "plain", {});
    for (const char* const language : {"en", "de", "pseudo"}) {
        GermanSystem process;
        const Outcome found = run(process, language, {"--language", language});
        EXPECT_EQ(fractions(found.out), fractions(expected.out)) << language;
        EXPECT_EQ(found.files, expected.files) << language;
    }
}

TEST(LanguageOfTheUsage, IsThatOfTheSystem)
{
    GermanSystem german;
    german.start({"--help"});
    EXPECT_EQ(german.finish(), 0);
    EXPECT_THAT(german.out(), HasSubstr("Aufruf: tarq-terrain"));
    BatchProcess plain;
    plain.start({"--help"});
    EXPECT_EQ(plain.finish(), 0);
    EXPECT_THAT(plain.out(), HasSubstr("Usage: tarq-terrain"));
}

TEST(LanguageOfTheUsage, ChangesWithTheOption)
{
    GermanSystem english;
    english.start({"--language", "en", "--help"});
    EXPECT_EQ(english.finish(), 0);
    EXPECT_THAT(english.out(), HasSubstr("Usage: tarq-terrain"));
    BatchProcess german;
    german.start({"--language", "de", "--help"});
    EXPECT_EQ(german.finish(), 0);
    EXPECT_THAT(german.out(), HasSubstr("Aufruf: tarq-terrain"));
}

TEST(LanguageOption, IsOneOfAList)
{
    for (const char* const unknown : {"fr", "DE", "de_DE", "englisch", "ä"}) {
        BatchProcess process;
        process.start({"--language", unknown, "--batch", "-"});
        EXPECT_EQ(process.finish(), 2) << unknown;
        EXPECT_THAT(process.error(),
            HasSubstr("there is no language \"" + std::string(unknown) + "\"; there are: de, en, pseudo"));
    }
}

TEST(LanguageOption, NeedsALanguage)
{
    for (const std::vector<std::string>& arguments :
        {std::vector<std::string>{"--language"}, {"--language", ""}, {"--language", "--help"},
            {"--help", "--language", "de"}, {"--language", "de", "--language", "en"}}) {
        BatchProcess process;
        process.start(arguments);
        EXPECT_EQ(process.finish(), 2);
        EXPECT_THAT(process.error(), HasSubstr("Usage: "));
    }
}

TEST(LanguageOption, HoldsForWhatGoesWrong)
{
    BatchProcess process;
    process.start({"--language", "de"});
    EXPECT_EQ(process.finish(), 1);
    EXPECT_THAT(process.error(), HasSubstr("Es gibt keinen Bildschirm"));
}

TEST(LanguageOfTheTour, IsEnglishOnEverySystem)
{
    GermanSystem process;
    const QJsonArray steps = tour(process, {});
    EXPECT_EQ(first_check(steps), "open documents: 1, expected 1");
}

TEST(LanguageOfTheTour, CanBeGerman)
{
    BatchProcess process;
    const QJsonArray steps = tour(process, {"--language", "de"});
    EXPECT_EQ(first_check(steps), "offene Dokumente: 1, erwartet 1");
}

TEST(LanguageOfTheTour, CanRunFromRightToLeft)
{
    BatchProcess process;
    tour(process, {"--language", "pseudo"});
}
