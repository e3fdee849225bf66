#include "TranslationFile.h"

#include "translations/PseudoText.h"

#include <QtCore/QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

using namespace host_test;
using pseudo_locale::translation;
using testing::IsEmpty;

namespace {

/// What a failure asks for.
const char* const s_advice = "run: cmake --build build/dev --target update_translations, then translate what "
                             "is \"unfinished\" there";

struct Catalogue
{
    const char* name;
    const char* german; ///< what is kept
    const char* texts; ///< what the sources ask for now
};

/// For the name of a test.
void PrintTo(const Catalogue& catalogue, std::ostream* p_stream)
{
    *p_stream << catalogue.name;
}

class Translations : public testing::TestWithParam<Catalogue>
{
protected:
    std::vector<TranslatedMessage> german() const { return read_translations(GetParam().german); }

    /// Expects that @p part finds the same in a text and in what stands for it, in any order.
    void expect_same(const std::function<QStringList(const QString& text)>& part) const
    {
        for (const TranslatedMessage& message : german()) {
            QStringList expected = part(message.source);
            expected.sort();
            for (const QString& text : message.translations) {
                QStringList found = part(text);
                found.sort();
                EXPECT_EQ(found.join(' ').toStdString(), expected.join(' ').toStdString())
                    << message.name() << '\n'
                    << text.toStdString();
            }
        }
    }
};

QStringList all_of(const QRegularExpression& part, const QString& text)
{
    QStringList found;
    for (auto match = part.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured());
    }
    return found;
}

std::set<std::string> names(const std::vector<TranslatedMessage>& messages)
{
    std::set<std::string> found;
    for (const TranslatedMessage& message : messages) {
        found.insert(message.name());
    }
    return found;
}

std::vector<std::string> missing(const std::set<std::string>& wanted, const std::set<std::string>& there)
{
    std::vector<std::string> found;
    std::set_difference(wanted.begin(), wanted.end(), there.begin(), there.end(), std::back_inserter(found));
    return found;
}

/// Whether a text has a mnemonic, not counting entities and "&&".
QStringList mnemonics(const QString& text)
{
    QString rest = text;
    rest.remove("&&").remove(QRegularExpression("&#?\\w+;"));
    return rest.contains(QRegularExpression("&[\\p{L}\\p{N}]")) ? QStringList("&") : QStringList();
}

QString edges(const QString& text)
{
    return QRegularExpression("^\\s*").match(text).captured()
        + QRegularExpression("\\s*$").match(text).captured();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(German, Translations,
    testing::Values(
        Catalogue{"Library", LIBRARY_GERMAN, LIBRARY_TEXTS}, Catalogue{"Host", HOST_GERMAN, HOST_TEXTS}),
    [](const auto& catalogue) { return std::string(catalogue.param.name); });

TEST_P(Translations, AllTextsOfTheSourcesAreThere)
{
    const std::set<std::string> wanted = names(read_translations(GetParam().texts));
    EXPECT_THAT(missing(wanted, names(german())), IsEmpty()) << s_advice;
}

TEST_P(Translations, NothingElseIsThere)
{
    const std::set<std::string> wanted = names(read_translations(GetParam().texts));
    EXPECT_THAT(missing(names(german()), wanted), IsEmpty()) << s_advice;
}

TEST_P(Translations, AllAreFinished)
{
    for (const TranslatedMessage& message : german()) {
        EXPECT_TRUE(message.is_finished && !message.translations.contains(QString()))
            << message.name() << '\n'
            << s_advice;
    }
}

TEST_P(Translations, KeepPlaceholders)
{
    const QRegularExpression placeholder("%L?(\\d|n)");
    expect_same([&](const QString& text) {
        QStringList found = all_of(placeholder, text);
        found.removeDuplicates();
        return found;
    });
}

TEST_P(Translations, KeepTagsAndEntities)
{
    const QRegularExpression tag("</?\\w[^<>]*>|&#?\\w+;");
    expect_same([&](const QString& text) { return all_of(tag, text); });
}

TEST_P(Translations, KeepMnemonics)
{
    expect_same(&mnemonics);
}

TEST_P(Translations, KeepDotsAndColons)
{
    const QRegularExpression end("(…|\\.\\.\\.|:)$");
    for (const TranslatedMessage& message : german()) {
        if (mnemonics(message.source).isEmpty()) {
            continue; // entries and labels, not sentences
        }
        for (const QString& text : message.translations) {
            EXPECT_EQ(all_of(end, text), all_of(end, message.source)) << message.name();
        }
    }
}

/// Some texts are put together.
TEST_P(Translations, KeepBlanksAtTheEnds)
{
    expect_same([](const QString& text) { return QStringList(edges(text)); });
}

TEST_P(Translations, KeepPatternsOfFileNamesAndTheMarkOfChanges)
{
    const QRegularExpression pattern("\\([^()]*\\*[^()]*\\)|;;|\\[\\*\\]");
    expect_same([&](const QString& text) { return all_of(pattern, text); });
}

/// The library finds the host's Edit menu by its title.
TEST(Translations, AgreeOnTheEditMenu)
{
    const auto edit_in = [](const char* path) {
        for (const TranslatedMessage& message : read_translations(path)) {
            if (message.source == "&Edit") {
                return message.translations.value(0);
            }
        }
        return QString("none");
    };
    EXPECT_EQ(edit_in(HOST_GERMAN), edit_in(LIBRARY_GERMAN));
}

// The pseudo-locale

TEST(PseudoText, IsInBrackets)
{
    const QString text = translation("terrain::MapStatus", "Heights");
    EXPECT_TRUE(text.contains(QString("%1Ĥ").arg(pseudo_locale::opening_bracket))) << text.toStdString();
    EXPECT_TRUE(text.contains(pseudo_locale::closing_bracket));
}

TEST(PseudoText, RunsFromRightToLeftInEachLine)
{
    const QStringList lines = translation("", "One\nTwo").split('\n');
    ASSERT_EQ(lines.size(), 2);
    for (const QString& line : lines) {
        EXPECT_TRUE(line.isRightToLeft());
        EXPECT_EQ(line[1], QChar(0x202b));
        EXPECT_EQ(line.back(), QChar(0x202c));
    }
}

TEST(PseudoText, IsLonger)
{
    const QString source = "Wait until the running command has ended";
    EXPECT_GE(translation("", source).size(), source.size() * 5 / 4);
    EXPECT_LE(translation("", source).size(), source.size() * 3 / 2);
    EXPECT_GE(translation("", "GB").size(), 2);
}

TEST(PseudoText, KeepsWhatProgramsRead)
{
    for (const char* const part : {"%1", "%L2", "%n", "%12", "<a href=\"%1\">", "</a>", "&lt;", "&#9650;",
             "(*.tif *.tiff)", ";;", "[*]", "&&", "…", "..."}) {
        const QString text = translation("", QString("Left %1 right").arg(part));
        EXPECT_TRUE(text.contains(part)) << part << " in " << text.toStdString();
    }
    EXPECT_TRUE(translation("", "&Open").contains(QString::fromUtf8("&Ó")));
}

TEST(PseudoText, LeavesKeysAlone)
{
    EXPECT_EQ(translation("any", "Ctrl+Z"), "Ctrl+Z");
    EXPECT_EQ(translation("any", "F1"), "F1");
    EXPECT_EQ(translation("QShortcut", "Page Up"), "Page Up");
}

TEST(PseudoText, TurnsTheWindowsRound)
{
    EXPECT_EQ(translation("QGuiApplication", "QT_LAYOUT_DIRECTION"), "RTL");
}

TEST(PseudoText, OfNothingIsMarkedToo)
{
    EXPECT_EQ(translation("", "").size(), 5);
}
