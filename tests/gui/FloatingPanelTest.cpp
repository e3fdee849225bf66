#include "PanelFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

#include <functional>
#include <utility>

// Tearing panels off: the floating window, the rules for titles and stretches, and what becomes of the tabs.

using tarqa::housekeeping::gui::ChildDockWidget;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FloatingPanel : public PanelFixture
{
protected:
    /// A panel with this layout, added to the window.
    QWidget* add_with(QLayout* p_layout)
    {
        auto* const p_panel = new QWidget;
        p_panel->setWindowTitle("Panel");
        p_panel->setLayout(p_layout);
        m_window->addPanel(p_panel, QString());
        return p_panel;
    }
};

/// Calls a function when a floating window is about to be seen.
class ShowWatch : public QObject
{
public:
    explicit ShowWatch(std::function<void(ChildDockWidget&)> on_show)
        : m_on_show(std::move(on_show))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* p_watched, QEvent* p_event) override
    {
        auto* const p_window = qobject_cast<ChildDockWidget*>(p_watched);
        if (p_window && p_event->type() == QEvent::Show) {
            m_on_show(*p_window);
        }
        return false;
    }

private:
    std::function<void(ChildDockWidget&)> m_on_show;
};

/// A spacer unlike any that the window makes of it.
QSpacerItem* spacer()
{
    return new QSpacerItem(40, 17, QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void expect_spacer(const QSpacerItem& spacer, const QSize& size, QSizePolicy::Policy horizontal,
    QSizePolicy::Policy vertical)
{
    EXPECT_EQ(spacer.sizeHint().width(), size.width());
    EXPECT_EQ(spacer.sizeHint().height(), size.height());
    EXPECT_EQ(spacer.sizePolicy().horizontalPolicy(), horizontal);
    EXPECT_EQ(spacer.sizePolicy().verticalPolicy(), vertical);
}

void expect_untouched(const QSpacerItem& spacer)
{
    expect_spacer(spacer, QSize(40, 17), QSizePolicy::Expanding, QSizePolicy::Fixed);
}

} // namespace

// --- the window

TEST_F(FloatingPanel, WindowIsMadeAsStated)
{
    const ChildDockWidget window("A title", m_window.get());
    EXPECT_EQ(window.windowTitle(), "A title");
    EXPECT_EQ(window.parentWidget(), m_window.get());
    const Qt::WindowFlags flags
        = Qt::Window | Qt::MSWindowsFixedSizeDialogHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint;
    EXPECT_EQ(window.windowFlags() & flags, flags);
    EXPECT_EQ(window.windowFlags(), QWidget(nullptr, flags).windowFlags()); // Qt adds what these need
    EXPECT_TRUE(window.isHidden());
    const auto* const p_layout = qobject_cast<QVBoxLayout*>(window.layout());
    ASSERT_NE(p_layout, nullptr);
    EXPECT_EQ(p_layout->sizeConstraint(), QLayout::SetFixedSize);
    ASSERT_EQ(p_layout->count(), 1);
    const auto* const p_stack = qobject_cast<QStackedWidget*>(p_layout->itemAt(0)->widget());
    ASSERT_NE(p_stack, nullptr);
    EXPECT_EQ(p_stack->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(p_stack->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(p_stack->count(), 0);
    EXPECT_STREQ(ChildDockWidget::staticMetaObject.className(), "tarqa::housekeeping::gui::ChildDockWidget");
}

TEST_F(FloatingPanel, TornOffPanelIsInAWindowOfItsOwn)
{
    add("Home");
    QWidget* const p_panel = add("Panel");
    m_window->tear_off("Panel");
    ASSERT_THAT(m_window->floating(), ElementsAre(p_panel));
    ChildDockWidget& window = float_of(p_panel);
    EXPECT_EQ(panel_in(window), p_panel);
    EXPECT_TRUE(window.isAncestorOf(p_panel));
    EXPECT_TRUE(window.isWindow());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(p_panel->isVisible());
    EXPECT_EQ(window.parentWidget(), m_window.get());
    EXPECT_EQ(window.windowTitle(), "Panel");
    EXPECT_EQ(window.objectName(), "Panel");
    EXPECT_EQ(m_window->stack().indexOf(p_panel), -1);
    EXPECT_EQ(m_window->tabs(), QStringList("Home"));
    EXPECT_TRUE(stored_keys().isEmpty());
}

TEST_F(FloatingPanel, WindowIsShownWhenAllIsDoneButItsEntry)
{
    QWidget* const p_other = add_floating("Other");
    auto* const p_box = new QVBoxLayout;
    QSpacerItem* const p_spacer = spacer();
    p_box->addItem(p_spacer);
    QWidget* const p_panel = add_with(p_box);
    m_window->tear_off("Panel");
    float_of(p_panel).move(52, 64);
    m_window->writeSettings();
    float_of(p_panel).close();
    settle();
    int calls = 0;
    const ShowWatch watch([&](ChildDockWidget& window) {
        ++calls;
        EXPECT_EQ(window.windowTitle(), "Panel");
        EXPECT_EQ(window.objectName(), "Panel");
        EXPECT_EQ(window.pos(), QPoint(52, 64));
        EXPECT_EQ(panel_in(window), p_panel);
        EXPECT_EQ(p_panel->maximumWidth(), 9999);
        EXPECT_EQ(p_spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
        EXPECT_THAT(m_window->floating(), ElementsAre(p_other));
    });
    m_window->tear_off("Panel");
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(m_window->floating(), ElementsAre(p_other, p_panel));
}

TEST_F(FloatingPanel, PanelOfAnUnseenPageIsVisibleInItsWindow)
{
    add("Home");
    m_window->show();
    QWidget* const p_panel = add("Panel");
    ASSERT_FALSE(p_panel->isVisible());
    m_window->tear_off("Panel");
    EXPECT_TRUE(p_panel->isVisible());
}

TEST_F(FloatingPanel, FloatingPanelMayBe9999PixelsWide)
{
    EXPECT_EQ(add_floating("Panel")->maximumWidth(), 9999);
}

TEST_F(FloatingPanel, WindowIsAsLargeAsItsPanelWants)
{
    QWidget* const p_panel = add("Panel");
    p_panel->setMinimumSize(700, 150);
    m_window->tear_off("Panel");
    EXPECT_GE(p_panel->width(), 700);
    EXPECT_GE(p_panel->height(), 150);
    EXPECT_EQ(float_of(p_panel).minimumSize(), float_of(p_panel).maximumSize());
}

TEST_F(FloatingPanel, FloatingPanelsAreInTheOrderOfTearingOff)
{
    QWidget* const p_first = add("First");
    QWidget* const p_second = add("Second");
    QWidget* const p_third = add("Third");
    m_window->tear_off("Second");
    m_window->tear_off("Third");
    m_window->tear_off("First");
    EXPECT_THAT(m_window->floating(), ElementsAre(p_second, p_third, p_first));
    EXPECT_EQ(m_window->stack().count(), 0);
    EXPECT_EQ(m_window->tab_bar().count(), 0);
}

// --- the gesture

TEST_F(FloatingPanel, HomeNeverFloats)
{
    QWidget* const p_home = add("Home");
    add("Panel");
    QSignalSpy detaching(m_window.get(), SIGNAL(detachingPanel(int)));
    m_window->tear_off("Home");
    EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Panel"}));
    EXPECT_EQ(m_window->indexOf(p_home), 0);
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(p_home->maximumWidth(), 600);
    EXPECT_EQ(detaching.count(), 0);
}

TEST_F(FloatingPanel, PanelThatIsDeletedOnItsWayOutDoesNotFloat)
{
    QWidget* const p_panel = add("Panel");
    QObject::connect(m_window.get(), &PanelWindow::detachingPanel, [p_panel] { delete p_panel; });
    m_window->tear_off("Panel");
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(m_window->tabs(), QStringList());
    EXPECT_EQ(m_window->stack().count(), 0);
}

TEST_F(FloatingPanel, PanelThatIsRemovedOnItsWayOutDoesNotFloat)
{
    QWidget* const p_panel = add("Panel");
    QObject::connect(
        m_window.get(), &PanelWindow::detachingPanel, [this](int index) { m_window->removePanel(index); });
    m_window->tear_off("Panel");
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(m_window->indexOf(p_panel), -1);
}

TEST_F(FloatingPanel, OnlyExactlyHomeStays)
{
    for (const QString title : {"home", "HOME", "Home ", " Home", "&Home"}) {
        QWidget* const p_panel = add_floating(title);
        EXPECT_NE(m_window->window_of(p_panel), nullptr) << title.toStdString();
    }
}

TEST_F(FloatingPanel, UnknownTextTearsNothingOff)
{
    add("Home");
    add("Panel");
    QSignalSpy detaching(m_window.get(), SIGNAL(detachingPanel(int)));
    for (const char* const text : {"", "panel", "Panel ", "Pan", "&Panel"}) {
        m_window->tear_off(text);
    }
    EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Panel"}));
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(detaching.count(), 0);
}

TEST_F(FloatingPanel, TabWithoutPanelStays)
{
    add("Home");
    m_window->tab_bar().addTab("Of the host");
    QSignalSpy detaching(m_window.get(), SIGNAL(detachingPanel(int)));
    m_window->tear_off("Of the host");
    EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Of the host"}));
    EXPECT_EQ(detaching.count(), 0);
}

TEST_F(FloatingPanel, OfEqualTitlesTheFirstTabAndTheFirstPageGo)
{
    QWidget* const p_first = add("Twice");
    add("Other");
    QWidget* const p_second = add("Twice");
    m_window->tear_off("Twice");
    EXPECT_THAT(m_window->floating(), ElementsAre(p_first));
    EXPECT_EQ(m_window->tabs(), QStringList({"Other", "Twice"}));
    m_window->tear_off("Twice");
    EXPECT_THAT(m_window->floating(), ElementsAre(p_first, p_second));
    EXPECT_EQ(m_window->tabs(), QStringList("Other"));
}

TEST_F(FloatingPanel, DetachingComesWhenTheTabIsGoneAndThePanelStillInTheStack)
{
    add("First");
    QWidget* const p_panel = add("Panel");
    QWidget* const p_third = add("Third");
    m_window->tab_bar().setCurrentIndex(1);
    int calls = 0;
    QObject::connect(m_window.get(), &PanelWindow::detachingPanel, [&](int index) {
        ++calls;
        EXPECT_EQ(index, 1);
        EXPECT_EQ(m_window->stack().widget(1), p_panel);
        EXPECT_EQ(m_window->tabs(), QStringList({"First", "Third"}));
        EXPECT_EQ(m_window->stack().currentWidget(), p_third);
        EXPECT_THAT(m_window->floating(), IsEmpty());
        EXPECT_EQ(p_panel->maximumWidth(), 600);
    });
    m_window->tear_off("Panel");
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
}

TEST_F(FloatingPanel, DetachingNamesThePageNotTheTab)
{
    add("First");
    add("Panel");
    m_window->tab_bar().moveTab(1, 0);
    QSignalSpy detaching(m_window.get(), SIGNAL(detachingPanel(int)));
    m_window->tear_off("Panel");
    ASSERT_EQ(detaching.count(), 1);
    EXPECT_EQ(detaching.at(0).at(0).toInt(), 1);
}

TEST_F(FloatingPanel, TabBarIsSilentWhileItsTabGoes)
{
    add("First");
    QWidget* const p_second = add("Second");
    QSignalSpy current(&m_window->tab_bar(), &QTabBar::currentChanged);
    m_window->tear_off("First");
    EXPECT_EQ(current.count(), 0);
    EXPECT_FALSE(m_window->tab_bar().signalsBlocked());
    EXPECT_EQ(m_window->stack().currentWidget(), p_second);
}

TEST_F(FloatingPanel, PanelOfTheTabThatIsCurrentThenIsShown)
{
    QWidget* const p_first = add("First");
    add("Second");
    QWidget* const p_third = add("Third");
    m_window->tab_bar().setCurrentIndex(0);
    m_window->stack().setCurrentWidget(p_third);
    m_window->tear_off("Second");
    EXPECT_EQ(m_window->stack().currentWidget(), p_first);
}

TEST_F(FloatingPanel, LastTabCanBeTornOff)
{
    QWidget* const p_panel = add_floating("Panel");
    EXPECT_EQ(m_window->tab_bar().count(), 0);
    EXPECT_EQ(m_window->stack().count(), 0);
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
}

TEST_F(FloatingPanel, HiddenFloatingWindowsAreShownAgain)
{
    ChildDockWidget& first = float_of(add_floating("First"));
    ChildDockWidget& second = float_of(add_floating("Second"));
    first.hide();
    second.hide();
    m_window->restoreChildWidgets();
    EXPECT_TRUE(first.isVisible());
    EXPECT_TRUE(second.isVisible());
}

TEST_F(FloatingPanel, NothingToShowAgainWithoutFloatingWindows)
{
    add("Panel");
    m_window->restoreChildWidgets();
    EXPECT_EQ(m_window->tabs(), QStringList("Panel"));
    EXPECT_FALSE(m_window->isVisible());
}

// --- ampersands

TEST_F(FloatingPanel, DoubledAmpersandBetweenBlanksMakesTheRoundTrip)
{
    QWidget* const p_panel = add_floating("A && B");
    EXPECT_EQ(float_of(p_panel).windowTitle(), "A & B");
    EXPECT_EQ(float_of(p_panel).objectName(), "A & B");
    EXPECT_EQ(p_panel->windowTitle(), "A && B");
    float_of(p_panel).close();
    EXPECT_EQ(m_window->tabs(), QStringList("A && B"));
    m_window->tear_off("A && B");
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
}

TEST_F(FloatingPanel, SingleAmpersandBetweenBlanksComesBackDoubled)
{
    QWidget* const p_panel = add_floating("A & B");
    EXPECT_EQ(float_of(p_panel).windowTitle(), "A & B");
    float_of(p_panel).close();
    EXPECT_EQ(m_window->tabs(), QStringList("A && B"));
    EXPECT_EQ(p_panel->windowTitle(), "A & B");
    EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
    m_window->tear_off("A && B"); // no panel has that title
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(m_window->tabs(), QStringList("A && B"));
}

TEST_F(FloatingPanel, DoubledAmpersandWithoutBlanksComesBackSingle)
{
    QWidget* const p_panel = add_floating("A&&B");
    EXPECT_EQ(float_of(p_panel).windowTitle(), "A&B");
    float_of(p_panel).close();
    EXPECT_EQ(m_window->tabs(), QStringList("A&B"));
}

TEST_F(FloatingPanel, EveryAmpersandIsTreated)
{
    QWidget* const p_panel = add_floating("A && B && C&&D");
    EXPECT_EQ(float_of(p_panel).windowTitle(), "A & B & C&D");
    float_of(p_panel).close();
    EXPECT_EQ(m_window->tabs(), QStringList("A && B && C&D"));
}

// --- the stretch at a panel's end

TEST_F(FloatingPanel, LastSpacerOfABoxGivesUpItsWidth)
{
    for (const auto direction : {QBoxLayout::TopToBottom, QBoxLayout::LeftToRight}) {
        auto* const p_box = new QBoxLayout(direction);
        QSpacerItem* const p_first = spacer();
        QSpacerItem* const p_last = spacer();
        p_box->addItem(p_first);
        p_box->addWidget(new QLabel("Text"));
        p_box->addItem(p_last);
        QWidget* const p_panel = add_with(p_box);
        expect_untouched(*p_last);
        m_window->tear_off("Panel");
        expect_spacer(*p_last, QSize(0, 17), QSizePolicy::Minimum, QSizePolicy::Minimum);
        float_of(p_panel).close();
        expect_spacer(*p_last, QSize(0, 17), QSizePolicy::MinimumExpanding, QSizePolicy::Minimum);
        expect_untouched(*p_first);
        m_window->removePanel(m_window->indexOf(p_panel));
        delete p_panel;
    }
}

TEST_F(FloatingPanel, SpacerThatIsTheOnlyItemIsTheLast)
{
    auto* const p_box = new QVBoxLayout;
    QSpacerItem* const p_spacer = spacer();
    p_box->addItem(p_spacer);
    add_with(p_box);
    m_window->tear_off("Panel");
    expect_spacer(*p_spacer, QSize(0, 17), QSizePolicy::Minimum, QSizePolicy::Minimum);
}

TEST_F(FloatingPanel, SpacerBeforeTheLastItemIsUntouched)
{
    auto* const p_box = new QVBoxLayout;
    QSpacerItem* const p_spacer = spacer();
    p_box->addItem(p_spacer);
    p_box->addWidget(new QLabel("Text"));
    QWidget* const p_panel = add_with(p_box);
    m_window->tear_off("Panel");
    expect_untouched(*p_spacer);
    float_of(p_panel).close();
    expect_untouched(*p_spacer);
}

TEST_F(FloatingPanel, SpacerOfAGridIsUntouched)
{
    auto* const p_grid = new QGridLayout;
    QSpacerItem* const p_spacer = spacer();
    p_grid->addWidget(new QLabel("Text"), 0, 0);
    p_grid->addItem(p_spacer, 1, 0);
    QWidget* const p_panel = add_with(p_grid);
    m_window->tear_off("Panel");
    expect_untouched(*p_spacer);
    float_of(p_panel).close();
    expect_untouched(*p_spacer);
}

TEST_F(FloatingPanel, SpacerOfAnInnerLayoutIsUntouched)
{
    auto* const p_box = new QVBoxLayout;
    auto* const p_inner = new QHBoxLayout;
    QSpacerItem* const p_spacer = spacer();
    p_inner->addItem(p_spacer);
    p_box->addLayout(p_inner);
    QWidget* const p_panel = add_with(p_box);
    m_window->tear_off("Panel");
    expect_untouched(*p_spacer);
    float_of(p_panel).close();
    expect_untouched(*p_spacer);
}

TEST_F(FloatingPanel, PanelWithEmptyOrNoLayoutComesAndGoes)
{
    for (QLayout* const p_layout : {static_cast<QLayout*>(new QVBoxLayout), static_cast<QLayout*>(nullptr)}) {
        QWidget* const p_panel = add_with(p_layout);
        m_window->tear_off("Panel");
        float_of(p_panel).close();
        EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
        m_window->removePanel(0);
        delete p_panel;
    }
}
