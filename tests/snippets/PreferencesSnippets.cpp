// docs/preferences.md

//! [page]
#include <tarqa/housekeeping/gui/AbstractPreferences.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <QtCore/QSettings>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QSpinBox>

#include <boost/make_shared.hpp>

namespace gui = tarqa::housekeeping::gui;

class ContourPreferences : public gui::AbstractPreferences
{
public:
    explicit ContourPreferences(QWidget* p_parent = nullptr)
        : AbstractPreferences(p_parent)
        , m_p_interval(new QSpinBox)
    {
        label(tr("Contours"));
        weight(40);
        m_p_interval->setRange(1, 1000);
        auto* const p_form = new QFormLayout(this);
        p_form->addRow(tr("&Interval in metres:"), m_p_interval);
    }
    void accept() override { write("contours"); }
    void aboutToShow() override { read("contours"); }

protected:
    void read(const std::string& path) override
    {
        const QSettings settings;
        m_p_interval->setValue(settings.value(key(path), 50).toInt());
    }
    void write(const std::string& path) override
    {
        QSettings settings;
        settings.setValue(key(path), m_p_interval->value());
    }

private:
    static QString key(const std::string& path) { return QString::fromStdString(path) + "/interval"; }

    QSpinBox* m_p_interval; // a child
};

class ContourPreferencesFactory : public gui::AbstractPreferencesFactory
{
public:
    ContourPreferencesFactory()
        : AbstractPreferencesFactory("ContourPreferences", false)
    { }
    boost::shared_ptr<gui::AbstractPreferences> create_product() override
    {
        return boost::make_shared<ContourPreferences>();
    }
    gui::AbstractPreferences* create_unmanaged_product() override { return new ContourPreferences; }
};

const ContourPreferencesFactory s_factory; // registers itself
//! [page]

#include "support/App.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtCore/QEvent>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>

#include <gtest/gtest.h>

namespace preferences_guide {

//! [effects]
namespace housekeeping = tarqa::housekeeping;
using housekeeping::ApplicationMessage;

const auto preferences_changed = static_cast<ApplicationMessage::OpType>(2);

void send_preferences_changed() // a page calls it in accept(), after the setters
{
    ApplicationMessage* const p_message = ApplicationMessage::instance();
    p_message->opType(preferences_changed);
    housekeeping::Message::dispatch(p_message); // deletes it
}

class View : public QWidget
{
    Q_OBJECT
public:
    View() { ApplicationMessage::subscribe(this, Qt::AutoConnection); }

private slots:
    void handle_message(housekeeping::ApplicationMessage& message)
    {
        if (message.opType() == preferences_changed) {
            update(); // paintEvent() asks the ApplicationManager for the colour
        }
    }
};
//! [effects]

} // namespace preferences_guide

namespace {

class PaintingCount : public QObject
{
public:
    int count = 0;

private:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        count += p_event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace

TEST(PreferencesGuide, PageShowsAndStoresItsValue)
{
    const support::App app;
    QCoreApplication::setOrganizationName("Guide");
    QWidget window;
    gui::PreferencesDialog dialog(&window);
    dialog.pre_show_dialog();
    auto* const p_interval = dialog.findChild<QSpinBox*>();
    ASSERT_TRUE(p_interval);
    EXPECT_EQ(p_interval->value(), 50);
    EXPECT_EQ(dialog.findChild<QTabWidget*>()->tabText(0), "Contours");
    p_interval->setValue(20);
    EXPECT_FALSE(QSettings().contains("contours/interval"));
    dialog.accept();
    EXPECT_EQ(QSettings().value("contours/interval").toInt(), 20);
}

TEST(PreferencesGuide, ViewIsPaintedAnewWhenPreferencesChange)
{
    const support::App app;
    preferences_guide::View view;
    view.show();
    QCoreApplication::processEvents();
    PaintingCount paintings;
    view.installEventFilter(&paintings);
    QCoreApplication::processEvents();
    EXPECT_EQ(paintings.count, 0);
    preferences_guide::send_preferences_changed();
    QCoreApplication::processEvents();
    EXPECT_EQ(paintings.count, 1);
}

#include "PreferencesSnippets.moc"
