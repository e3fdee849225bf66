#include "PreferencesFixture.h"
#include "preferences/ColourButton.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTabWidget>

#include <gmock/gmock.h>

#include <set>

using namespace host_test;
using housekeeping::gui::AbstractPreferencesFactory;
using housekeeping::gui::PreferencesDialog;
using terrain::ColourButton;
using testing::UnorderedElementsAre;

namespace {

const std::vector<std::string> s_products
    = {"GeneralPreferences", "ViewerPreferences", "PerformancePreferences", "AnimationPreferences"};

/// The four pages in the library's dialog.
class PreferencesLooks : public PreferencesTest
{
protected:
    void SetUp() override { start(); }

    void show_dialog()
    {
        dialog = std::make_unique<PreferencesDialog>(&owner());
        dialog->pre_show_dialog();
        dialog->show();
        QCoreApplication::processEvents();
    }

    QTabWidget& tabs() const { return *dialog->findChild<QTabWidget*>("m_tab"); }
    QWidget& page(int tab) const { return *tabs().widget(tab); }

    void apply() const { dialog->findChild<QPushButton*>("m_okButton")->click(); }

    /// The widgets that take a value.
    static QList<QWidget*> inputs(const QWidget& page)
    {
        QList<QWidget*> found;
        for (QWidget* const p_widget : page.findChildren<QWidget*>()) {
            if (qobject_cast<QAbstractButton*>(p_widget) || qobject_cast<QComboBox*>(p_widget)
                || qobject_cast<QLineEdit*>(p_widget)) {
                found.append(p_widget);
            }
        }
        return found;
    }

    QWidget& owner()
    {
        if (!m_owner) {
            m_owner = std::make_unique<QWidget>();
        }
        return *m_owner;
    }

    void TearDown() override
    {
        dialog.reset();
        m_owner.reset();
    }

    std::unique_ptr<PreferencesDialog> dialog;

private:
    std::unique_ptr<QWidget> m_owner;
};

/// Where texts of a page are cut off.
std::string cut_off(const QWidget& page)
{
    std::string found;
    const auto& area = *page.findChild<QScrollArea*>();
    for (const QWidget* const p_widget : page.findChildren<QWidget*>()) {
        if (!p_widget->isVisible() || !area.widget()->isAncestorOf(p_widget)) {
            continue;
        }
        const auto* const p_label = qobject_cast<const QLabel*>(p_widget);
        const bool is_wrapped = p_label && p_label->wordWrap();
        const int height = is_wrapped ? p_label->heightForWidth(p_label->width()) : 0;
        const bool has_text = p_label || qobject_cast<const QAbstractButton*>(p_widget)
            || qobject_cast<const QComboBox*>(p_widget);
        const int right = p_widget->mapTo(area.widget(), QPoint(p_widget->width(), 0)).x();
        if ((has_text && !is_wrapped && p_widget->width() < p_widget->sizeHint().width())
            || p_widget->height() < height || right > area.viewport()->width()) {
            found += p_widget->objectName().toStdString() + " "
                + p_widget->property("text").toString().toStdString() + "; ";
        }
    }
    return found;
}

} // namespace

// The pages

TEST_F(PreferencesLooks, FourPagesAreRegisteredUnderTheirNames)
{
    EXPECT_THAT(AbstractPreferencesFactory::products(),
        UnorderedElementsAre(
            "GeneralPreferences", "ViewerPreferences", "PerformancePreferences", "AnimationPreferences"));
}

TEST_F(PreferencesLooks, PagesHaveLabelsAndWeights)
{
    const std::vector<std::pair<QString, int>> expected
        = {{"General", 0}, {"Viewer", 10}, {"Performance", 20}, {"Animation", 30}};
    for (std::size_t i = 0; i < s_products.size(); ++i) {
        const auto one = make_page(s_products[i]);
        EXPECT_EQ(one->label(), expected[i].first);
        EXPECT_EQ(one->weight(), expected[i].second);
        EXPECT_TRUE(one->isValidPanel());
        EXPECT_EQ(AbstractPreferencesFactory::create(s_products[i])->label(), expected[i].first);
    }
}

TEST_F(PreferencesLooks, DialogHasThemInTheOrderOfTheirWeights)
{
    show_dialog();
    ASSERT_EQ(tabs().count(), 4);
    EXPECT_EQ(tabs().tabText(0), "General");
    EXPECT_EQ(tabs().tabText(1), "Viewer");
    EXPECT_EQ(tabs().tabText(2), "Performance");
    EXPECT_EQ(tabs().tabText(3), "Animation");
}

TEST_F(PreferencesLooks, ApplyAppliesThePageOnTopOnly)
{
    show_dialog();
    enter(page(0), "showEntityIds2", "false");
    tabs().setCurrentIndex(1);
    enter(page(1), "animate_jumps", "false");
    apply();
    EXPECT_FALSE(manager().animateCameraJumps());
    EXPECT_TRUE(manager().showEntityIds());
    tabs().setCurrentIndex(0);
    EXPECT_EQ(shown(page(0), "showEntityIds2"), "true") << "dropped when the page was left";
}

TEST_F(PreferencesLooks, ClosingDropsWhatWasNotApplied)
{
    show_dialog();
    enter(page(1), "animate_jumps", "false");
    dialog->close();
    dialog->pre_show_dialog();
    dialog->show();
    EXPECT_EQ(shown(page(1), "animate_jumps"), "true");
    apply();
    EXPECT_TRUE(stored_paths().empty());
}

// For everybody

TEST_F(PreferencesLooks, EverySettingIsExplained)
{
    for (const std::string& product : s_products) {
        const auto one = make_page(product);
        for (const QWidget* const p_widget : inputs(*one)) {
            if (p_widget->objectName().isEmpty() || p_widget->objectName() == "browse"
                || p_widget->objectName().startsWith("qt_")) {
                continue;
            }
            const std::string name = p_widget->objectName().toStdString();
            EXPECT_FALSE(p_widget->toolTip().isEmpty()) << name;
            EXPECT_FALSE(p_widget->whatsThis().isEmpty()) << name;
            EXPECT_FALSE(p_widget->accessibleDescription().isEmpty()) << name;
        }
    }
}

TEST_F(PreferencesLooks, EveryPageHasGroupsWithTitles)
{
    for (const std::string& product : s_products) {
        const auto one = make_page(product);
        const auto groups = one->findChildren<QGroupBox*>();
        EXPECT_FALSE(groups.isEmpty());
        for (const QGroupBox* const p_group : groups) {
            EXPECT_FALSE(p_group->title().isEmpty()) << product;
        }
    }
}

TEST_F(PreferencesLooks, MnemonicsAreThereAndUnique)
{
    for (const std::string& product : s_products) {
        const auto one = make_page(product);
        std::set<std::string> keys;
        const auto note = [&keys, &product](const QString& text) {
            const std::string key = QKeySequence::mnemonic(text).toString().toStdString();
            EXPECT_NE(key, "") << product << ": " << text.toStdString();
            EXPECT_TRUE(keys.insert(key).second) << product << ": " << text.toStdString();
        };
        for (const QWidget* const p_widget : inputs(*one)) {
            const auto* const p_button = qobject_cast<const QAbstractButton*>(p_widget);
            if (p_button && !qobject_cast<const ColourButton*>(p_button)) {
                note(p_button->text());
            }
        }
        for (const QLabel* const p_label : one->findChildren<QLabel*>()) {
            if (p_label->buddy()) {
                note(p_label->text());
            }
        }
    }
}

TEST_F(PreferencesLooks, WhatHasNoTextOfItsOwnHasALabelThatLeadsToIt)
{
    int labelled = 0;
    for (const std::string& product : s_products) {
        const auto one = make_page(product);
        for (const QLabel* const p_label : one->findChildren<QLabel*>()) {
            if (p_label->buddy()) {
                ++labelled;
                EXPECT_FALSE(p_label->buddy()->accessibleName().isEmpty());
                EXPECT_NE(p_label->buddy()->focusPolicy(), Qt::NoFocus) << p_label->text().toStdString();
            }
        }
    }
    EXPECT_EQ(labelled, 6) << "two lists, two colours, the quality, the program";
}

TEST_F(PreferencesLooks, TheTabKeyReachesEverySetting)
{
    show_dialog();
    dialog->activateWindow();
    for (int tab = 0; tab < tabs().count(); ++tab) {
        tabs().setCurrentIndex(tab);
        QCoreApplication::processEvents();
        tabs().setFocus();
        std::set<const QWidget*> reached;
        for (int presses = 0; presses < 40; ++presses) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            reached.insert(QApplication::focusWidget());
        }
        for (const QWidget* const p_widget : inputs(page(tab))) {
            EXPECT_EQ(reached.count(p_widget), 1u) << p_widget->objectName().toStdString();
        }
    }
}

TEST_F(PreferencesLooks, TheTabKeyGoesThroughThePageBeforeTheButtons)
{
    show_dialog();
    dialog->activateWindow();
    tabs().setCurrentIndex(0);
    tabs().setFocus();
    const QWidget* const p_start = QApplication::focusWidget();
    QStringList stops;
    do {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        stops.append(QApplication::focusWidget()->objectName());
    } while (QApplication::focusWidget() != p_start && stops.size() < 40);
    EXPECT_EQ(stops.first(), "mouse_mode");
    EXPECT_EQ(stops.mid(stops.size() - 4, 3), QStringList({"m_okButton", "m_cancelButton", "helpButton"}));
    dialog->findChild<QPushButton*>("m_okButton")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(page(0).isAncestorOf(QApplication::focusWidget()));
}

TEST_F(PreferencesLooks, ScrollingFollowsTheTabKey)
{
    show_dialog();
    dialog->activateWindow();
    tabs().setCurrentIndex(1);
    QCoreApplication::processEvents();
    QWidget& last = *widget_of(page(1), "shader_rendering");
    ASSERT_TRUE(last.visibleRegion().isEmpty()) << "the page is to be higher than the dialog here";
    widget_of(page(1), "useTriPanelViewFrame")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &last);
    EXPECT_EQ(last.visibleRegion().boundingRect(), last.rect());
}

TEST_F(PreferencesLooks, EnterInAFieldAppliesAndOpensNothing)
{
    show_dialog();
    dialog->activateWindow();
    tabs().setCurrentIndex(3);
    auto& edit = *page(3).findChild<QLineEdit*>();
    edit.setFocus();
    edit.setText("/bin/sh");
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(manager().linkToFFMPEG(), "/bin/sh");
}

TEST_F(PreferencesLooks, NothingIsCutOffInLargeAndSmallTexts)
{
    QFont font = QApplication::font();
    for (const int size : {9, 11, 14}) {
        font.setPointSize(size);
        QApplication::setFont(font);
        show_dialog();
        EXPECT_LE(dialog->width(), 800) << size;
        for (int tab = 0; tab < tabs().count(); ++tab) {
            tabs().setCurrentIndex(tab);
            QCoreApplication::processEvents();
            EXPECT_EQ(cut_off(page(tab)), "") << size;
        }
        dialog.reset();
    }
}

TEST_F(PreferencesLooks, NothingIsCutOffWhenTheTextsGrowWhileThePageShows)
{
    show_dialog();
    QFont font = QApplication::font();
    font.setPointSize(14);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
    dialog->adjustSize();
    QCoreApplication::processEvents();
    EXPECT_EQ(cut_off(page(1)), "");
}

// Colour buttons

TEST_F(PreferencesLooks, ColourButtonShowsItsColour)
{
    ColourButton button;
    button.set_colour(QColor("#336699"));
    EXPECT_EQ(button.text(), "#336699");
    const QImage sample = button.icon().pixmap(button.iconSize()).toImage();
    EXPECT_EQ(sample.pixelColor(sample.rect().center()), QColor("#336699"));
    button.set_colour(QColor());
    EXPECT_EQ(button.colour(), QColor("#336699"));
}

TEST_F(PreferencesLooks, ColourButtonsSampleGrowsWithTheText)
{
    ColourButton button;
    const QSize before = button.iconSize();
    QFont font = button.font();
    font.setPointSize(font.pointSize() * 2);
    button.setFont(font);
    EXPECT_GT(button.iconSize().height(), before.height());
}

TEST_F(PreferencesLooks, ColourIsChosenInADialogAndAppliedLater)
{
    show_dialog();
    auto& button = dynamic_cast<ColourButton&>(*widget_of(page(1), "background_color"));
    support::DialogDriver dialogs;
    dialogs.answer([](QDialog& shown_dialog) {
        auto& colours = dynamic_cast<QColorDialog&>(shown_dialog);
        EXPECT_EQ(colours.currentColor(), QColor(Qt::white));
        colours.setCurrentColor(QColor("#123456"));
        colours.accept();
    });
    button.click();
    ASSERT_TRUE(support::wait_until([&button] { return button.colour() == QColor("#123456"); }));
    EXPECT_EQ(dialogs.shown().at(0).title, "Background");
    EXPECT_EQ(manager().viewBackgroundColour(), QColor(Qt::white));
    apply();
    EXPECT_EQ(manager().viewBackgroundColour(), QColor("#123456"));
    EXPECT_EQ(stored("viewer_options/background_color"), "#123456");
}

TEST_F(PreferencesLooks, ColourStaysWhenTheDialogIsCancelled)
{
    show_dialog();
    auto& button = dynamic_cast<ColourButton&>(*widget_of(page(1), "highlight_color"));
    support::DialogDriver dialogs;
    dialogs.cancel();
    button.click();
    ASSERT_TRUE(support::wait_until([&] { return dialogs.shown().size() == 1; }));
    ASSERT_TRUE(support::wait_until([&] { return !button.findChild<QDialog*>(); }));
    EXPECT_EQ(button.colour(), QColor(Qt::yellow));
}

// Hints

TEST_F(PreferencesLooks, MouseModeIsExplainedAsItIsChosen)
{
    const auto one = make_page("GeneralPreferences");
    const auto told = [&one](const QString& text) {
        for (const QLabel* const p_label : one->findChildren<QLabel*>()) {
            if (p_label->text().startsWith(text)) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(told("Left selects, middle moves"));
    enter(*one, "mouse_mode", "1");
    EXPECT_TRUE(told("Left selects, right turns the view, left with Alt moves it."));
    enter(*one, "mouse_mode", "2");
    EXPECT_TRUE(told("Left turns the view, right moves it, left with Alt selects."));
    EXPECT_FALSE(told("Left selects"));
}
