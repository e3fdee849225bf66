#include "language/Language.h"
#include "RasterFiles.h"
#include "ShownTexts.h"
#include "WindowFixture.h"
#include "commands/ScaleCommand.h"
#include "documents/TerrainDocument.h"
#include "language/NumberText.h"
#include "panels/HistogramPlot.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/LayersPanel.h"
#include "panels/ProfilePlot.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "panels/StatisticsPanel.h"
#include "presentations/CommandsPresentation.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "translations/PseudoText.h"
#include "views/TerrainView.h"
#include "windows/Questions.h"

#include <pkBaseQt/QLogFileViewer.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QLocale>
#include <QtWidgets/QAction>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>

#include <stdexcept>

using namespace host_test;
using support::DialogDriver;
using terrain::CommandsPresentation;
using terrain::Deed;
using terrain::Language;
using terrain::number_text;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_file = "language.tif";

/// The main window in a language.
class LanguageWindowTest : public WindowTest
{
protected:
    explicit LanguageWindowTest(const char* language)
        : m_language(language)
    {
        Language::use_numbers(language);
    }
    ~LanguageWindowTest() override { Language::use_plain_numbers(); }

    QStringList titles() const
    {
        QStringList titles;
        for (const QAction* const p_action : window->menuBar()->actions()) {
            titles.append(p_action->text());
        }
        return titles;
    }
    QStringList tabs() const
    {
        QStringList tabs;
        for (int tab = 0; tab < window->panel_tabs().count(); ++tab) {
            tabs.append(window->panel_tabs().tabText(tab));
        }
        return tabs;
    }
    /// Opens a file, which the log tells in the language.
    void open()
    {
        ASSERT_TRUE(window->open(terrain_file(s_file)));
        log.take_all();
    }
    void show_panels()
    {
        for (const Deed panel : {Deed::QuickHelp, Deed::Statistics, Deed::Layers}) {
            window->action(panel).trigger();
        }
    }
    QMenu& tools() const { return menu(CommandsPresentation::tr("&Tools")); }
    DialogDriver dialogs;

private:
    Language m_language;
};

class GermanWindow : public LanguageWindowTest
{
protected:
    GermanWindow()
        : LanguageWindowTest(Language::german)
    { }
};

/// The window in the language that nobody speaks. What is not in it did not go through tr().
class PseudoWindow : public LanguageWindowTest
{
protected:
    PseudoWindow()
        : LanguageWindowTest(Language::pseudo)
    { }

    /// Expects that there is nothing but translated texts and data in a widget.
    void expect_translated(const QWidget& widget) const
    {
        // The library looks for a panel with this name; the others are names of programs, formats and
        // languages.
        const QStringList data{"Home", "Tarq Terrain", "TarqTerrain", QString::fromStdString(scratch("")),
            s_file, "language", "WGS 84", "UTM zone", "EPSG", "GeoTIFF", "Float", "Qt"};
        EXPECT_THAT(untranslated(texts_of(widget), data).join(" | ").toStdString(), IsEmpty())
            << widget.metaObject()->className();
    }
    /// The next dialog has such texts only; closes it.
    void expect_translated_dialog()
    {
        dialogs.answer([this](QDialog& dialog) {
            expect_translated(dialog);
            dialog.reject();
        });
    }
};

} // namespace

// The languages

TEST(Language, HasNames)
{
    EXPECT_EQ(Language::names(), QStringList({"de", "en", "pseudo"}));
}

TEST(Language, IsTheFirstOneThatThereIs)
{
    EXPECT_EQ(Language::best_of({"de-AT", "en"}), "de");
    EXPECT_EQ(Language::best_of({"fr-FR", "de-DE", "en"}), "de");
    EXPECT_EQ(Language::best_of({"fr-FR", "en-US", "de"}), "en");
    EXPECT_EQ(Language::best_of({"de_CH.UTF-8"}), "de");
    EXPECT_EQ(Language::best_of({"DE"}), "de");
}

TEST(Language, IsEnglishWhereThereIsNoOther)
{
    EXPECT_EQ(Language::best_of({}), "en");
    EXPECT_EQ(Language::best_of({"C"}), "en");
    EXPECT_EQ(Language::best_of({"", "nds", "deu", "fr"}), "en");
    EXPECT_EQ(Language::best_of({"pseudo"}), "en") << "nobody gets it unasked";
}

TEST(Language, CanBeUnknown)
{
    const support::App application;
    EXPECT_THROW(Language("fr"), std::runtime_error);
    EXPECT_THROW(Language(""), std::runtime_error);
}

TEST(Language, EndsWithItsObject)
{
    const support::App application;
    {
        const Language german(Language::german);
        EXPECT_EQ(CommandsPresentation::tr("Smooth"), "Glätten");
    }
    EXPECT_EQ(CommandsPresentation::tr("Smooth"), "Smooth");
}

TEST(Language, OfNumbersIsWhatPeopleRead)
{
    Language::use_numbers(Language::german);
    EXPECT_EQ(number_text(1234.5), "1234,5");
    EXPECT_EQ(number_text(-0.75, 'f', 1), "-0,8");
    Language::use_numbers(Language::pseudo);
    EXPECT_EQ(number_text(1234.5), "1234.5");
    Language::use_plain_numbers();
    for (const double number : {0.0, -1.5, 1e300, 1e-9, 123456789.0}) {
        EXPECT_EQ(number_text(number), QString::number(number));
    }
}

// German

TEST_F(GermanWindow, HasGermanMenus)
{
    EXPECT_THAT(titles(), ElementsAre("&Datei", "&Bearbeiten", "&Ansicht", "&Werkzeuge", " &Hilfe"));
    EXPECT_EQ(window->action(Deed::Open).text(), "&Öffnen…");
    EXPECT_EQ(window->action(Deed::Open).statusTip(), "Höhenraster öffnen");
}

TEST_F(GermanWindow, HasAMnemonicForOneEntryOfAMenu)
{
    open();
    EXPECT_THAT(ambiguous_mnemonics(*window->menuBar()).join(" | ").toStdString(), IsEmpty());
}

TEST_F(GermanWindow, HasGermanPanels)
{
    show_panels();
    EXPECT_THAT(tabs(), testing::IsSupersetOf({"Kurzhilfe", "Verlauf", "Statistik", "Ebenen"}));
}

TEST_F(GermanWindow, HasDecimalCommas)
{
    open();
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 1.01));
    const QString reading = window->view()->reading_text(window->view()->rect().center());
    EXPECT_TRUE(reading.contains(QRegularExpression("^\\d+,\\d+ Meter   bei Spalte ")))
        << reading.toStdString();
    dialogs.answer([](QDialog& dialog) {
        const auto* const p_factor = dialog.findChild<QDoubleSpinBox*>();
        EXPECT_TRUE(p_factor && p_factor->text().contains(',')) << p_factor->text().toStdString();
        dialog.reject();
    });
    CommandsPresentation::instance().scale_action()->trigger();
}

TEST_F(GermanWindow, TellsInGermanWhatWasDone)
{
    open();
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 1.5));
    EXPECT_EQ(
        housekeeping::gui::UndoRedoPresentation::instance()->undo_action()->text(), "&Rückgängig Skalieren");
    QStringList lines;
    for (const terrain::HistoryLine& line : window->history().model().lines()) {
        lines.append(line.text);
    }
    EXPECT_TRUE(lines.join('\n').contains("Faktor 1,5")) << lines.join('\n').toStdString();
}

TEST_F(GermanWindow, HasGermanDialogs)
{
    open();
    dialogs.answer([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Glätten");
        const QPushButton* const p_cancel
            = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel);
        EXPECT_EQ(p_cancel->text().remove('&'), "Abbrechen") << "one of Qt's own texts";
        dialog.reject();
    });
    CommandsPresentation::instance().smooth_action()->trigger();
    window->action(Deed::Preferences).trigger();
    EXPECT_EQ(window->preferences()->windowTitle(), "Einstellungen") << "one of the library's texts";
}

TEST_F(GermanWindow, GivesTheLogAGermanTitle)
{
    pkBase::QLogFileViewer::instance().present();
    EXPECT_EQ(pkBase::QLogFileViewer::instance().windowTitle(), "Protokolldatei");
    pkBase::QLogFileViewer::instance().close();
}

// From right to left

TEST_F(PseudoWindow, RunsFromRightToLeft)
{
    open();
    EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(window->layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(window->menuBar()->layoutDirection(), Qt::RightToLeft);
    EXPECT_GT(window->home().mapTo(window.get(), QPoint()).x(), window->width() / 2)
        << "the panels are at the other side";
}

TEST_F(PseudoWindow, LeavesMapsAndPlotsAsTheyAre)
{
    open();
    EXPECT_EQ(window->view()->layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(window->statistics().layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(window->statistics().histogram().layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(window->statistics().profile().layoutDirection(), Qt::LeftToRight);
}

TEST_F(PseudoWindow, HasNoOtherTextsWhileNothingIsOpen)
{
    show_panels();
    expect_translated(*window);
}

TEST_F(PseudoWindow, HasNoOtherTextsWithADocument)
{
    open();
    show_panels();
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 1.5));
    window->show_panel(window->statistics());
    ASSERT_TRUE(support::wait_until([this] { return window->statistics().is_up_to_date(); }));
    expect_translated(*window);
}

TEST_F(PseudoWindow, HasNoOtherTextsInTheQuickHelp)
{
    open();
    const terrain::QuickHelpSheet& sheet = window->quick_help().sheet();
    EXPECT_TRUE(sheet.description().contains(pseudo_locale::opening_bracket));
    int rows = 0;
    for (const QVariant& section : sheet.sections()) {
        const QVariantMap map = section.toMap();
        EXPECT_TRUE(map.value("name").toString().contains(pseudo_locale::opening_bracket))
            << map.value("name").toString().toStdString();
        const auto* const p_inputs
            = qobject_cast<const QAbstractItemModel*>(map.value("inputs").value<QObject*>());
        ASSERT_NE(p_inputs, nullptr);
        const int role = p_inputs->roleNames().key("description");
        for (int row = 0; row < p_inputs->rowCount(); ++row, ++rows) {
            const QString text = p_inputs->index(row, 0).data(role).toString();
            EXPECT_TRUE(text.contains(pseudo_locale::opening_bracket)) << text.toStdString();
        }
    }
    EXPECT_GT(rows, 0);
}

TEST_F(PseudoWindow, HasNoOtherTextsInTheDialogsOfCommands)
{
    open();
    int count = 0;
    for (QAction* const p_action : tools().actions()) {
        if (p_action->text().contains("…") && p_action->isEnabled()) {
            expect_translated_dialog();
            p_action->trigger();
            ++count;
        }
    }
    EXPECT_EQ(static_cast<int>(dialogs.shown().size()), count);
    EXPECT_GE(count, 5);
}

TEST_F(PseudoWindow, HasNoOtherTextsInThePreferences)
{
    window->action(Deed::Preferences).trigger();
    expect_translated(*window->preferences());
}

TEST_F(PseudoWindow, HasNoOtherTextsInLogAndAboutBox)
{
    pkBase::QLogFileViewer& viewer = pkBase::QLogFileViewer::instance();
    viewer.present();
    expect_translated(viewer);
    viewer.close();
    expect_translated_dialog();
    window->menuBar()->actions().last()->menu()->actions().last()->trigger();
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(PseudoWindow, HasNoOtherTextsInQuestions)
{
    expect_translated_dialog();
    terrain::ask_for_interval(window.get(), 25, QString());
    expect_translated_dialog();
    terrain::ask_about_changes(window.get(), s_file);
    expect_translated_dialog();
    terrain::ask_about_own_file(window.get(), QString());
    expect_translated_dialog();
    terrain::ask_for_overview(window.get(), QString(), 4);
    EXPECT_EQ(dialogs.shown().size(), 4u);
}

TEST_F(PseudoWindow, HasNoOtherTextsWhenAFileCannotBeRead)
{
    write_text(scratch(s_file), "rubbish");
    expect_translated_dialog();
    EXPECT_FALSE(window->open(QString::fromStdString(scratch(s_file))));
    log.take_all();
}

TEST_F(PseudoWindow, AsksForFilesInItsLanguage)
{
    open();
    for (const Deed deed : {Deed::Open, Deed::SaveAs, Deed::Export}) {
        dialogs.answer([](QDialog& dialog) {
            EXPECT_TRUE(dialog.windowTitle().contains(pseudo_locale::opening_bracket));
            const QStringList filters = dynamic_cast<QFileDialog&>(dialog).nameFilters();
            EXPECT_TRUE(filters.join("").contains(pseudo_locale::opening_bracket));
            for (const QString& filter : filters) {
                EXPECT_TRUE(filter.contains("(*")) << filter.toStdString();
            }
            dialog.reject();
        });
        window->action(deed).trigger();
    }
}
