#include "support/App.h"
#include "support/Controllers.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtCore/QPointer>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

// docs/shell.md

namespace presentation_guide {

namespace housekeeping = tarqa::housekeeping;
namespace gui = tarqa::housekeeping::gui;

//! [controller]
class SurveyController : public housekeeping::AbstractController
{
    Q_OBJECT

public:
    SurveyController() { housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection); }

    /// How many wells the current document has.
    unsigned long long wells() const
    {
        auto& documents = housekeeping::DocumentManager::instance();
        const bool exists = documents.current_document_id() != housekeeping::DocumentId::null();
        return exists ? documents.current_document().size() : 0;
    }

private slots:
    void handle_message(housekeeping::DocumentMessage& message)
    {
        if (message.doc_change_type() == housekeeping::DocumentMessage::Idle) { // do, undo or redo has ended
            force_update(); // redraws the views of this controller
        }
    }

private:
    /// Another document is current, or none.
    void update_state(boost::shared_ptr<housekeeping::AbstractState>) override { force_update(); }
};
//! [controller]

class SurveyControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    SurveyControllerFactory()
        : AbstractControllerFactory("SurveyController", false)
    { }
    boost::shared_ptr<housekeeping::AbstractController> create_product() override
    {
        return boost::make_shared<SurveyController>();
    }
    housekeeping::AbstractController* create_unmanaged_product() override { return new SurveyController; }
};

const SurveyControllerFactory s_controller_factory;

//! [presentation]
class SurveyPresentation : public gui::AbstractPresentation
{
public:
    QLabel* label() const { return m_p_label; } // null when the window is gone

private:
    void init_presentation() override { m_p_label = new QLabel; }
    void build_presentation() override
    {
        gui::AbstractMainWindow::instance()->statusBar()->addWidget(m_p_label); // owns it from now on
        update_presentation();
    }
    void update_presentation() override // the controller has redrawn its views
    {
        const auto* const p_survey = dynamic_cast<const SurveyController*>(controller());
        if (m_p_label && p_survey) {
            m_p_label->setText(QObject::tr("%1 wells").arg(p_survey->wells()));
        }
    }
    std::string controller_name() const override { return "SurveyController"; }

    QPointer<QLabel> m_p_label;
};

class SurveyPresentationFactory : public gui::AbstractPresentationFactory
{
public:
    SurveyPresentationFactory()
        : AbstractPresentationFactory("SurveyPresentation", false)
    { }
    boost::shared_ptr<gui::AbstractPresentation> create_product() override
    {
        return boost::make_shared<SurveyPresentation>();
    }
    gui::AbstractPresentation* create_unmanaged_product() override { return new SurveyPresentation; }
};

const SurveyPresentationFactory s_factory; // registers itself
//! [presentation]

QLabel* label_of_presentation()
{
    //! [find]
    const auto sp_survey = boost::dynamic_pointer_cast<SurveyPresentation>(
        gui::PresentationManager::instance().presentation("SurveyPresentation"));
    //! [find]
    return sp_survey->label();
}

boost::shared_ptr<support::FakeCommand> add_well(support::FakeDocument& document)
{
    const auto sp_command = support::make_command(document.id(), "Add well");
    sp_command->on_do = [&document] { ++document.fake_model().items; };
    sp_command->on_undo = [&document] { --document.fake_model().items; };
    return sp_command;
}

} // namespace presentation_guide

TEST(PresentationGuide, LabelFollowsTheDocument)
{
    using namespace presentation_guide;
    auto& commands = housekeeping::CommandManager::instance();
    auto& documents = housekeeping::DocumentManager::instance();
    const support::App app;
    support::init_controllers();
    gui::AbstractMainWindow window;
    gui::PresentationManager::instance().init();
    const QLabel* const p_label = label_of_presentation();
    EXPECT_EQ(p_label->text(), "0 wells");

    support::FakeDocument& document = support::create_document();
    const housekeeping::DocumentId id = document.id();
    commands.insert(add_well(document), false);
    commands.insert(add_well(document), false);
    EXPECT_EQ(p_label->text(), "2 wells");
    commands.undo(id);
    EXPECT_EQ(p_label->text(), "1 wells");
    commands.redo(id);
    EXPECT_EQ(p_label->text(), "2 wells");

    const housekeeping::DocumentId second = support::create_document().id();
    EXPECT_EQ(p_label->text(), "0 wells");
    documents.current_document(id);
    EXPECT_EQ(p_label->text(), "2 wells");
    documents.destroy_document(second, true, false, false, housekeeping::DocumentId::null());
    documents.destroy_document(id, true, false, false, housekeeping::DocumentId::null());
    EXPECT_EQ(p_label->text(), "0 wells");
}

TEST(PresentationGuide, OutlivesTheWindow)
{
    using namespace presentation_guide;
    const support::App app;
    support::init_controllers();
    {
        const gui::AbstractMainWindow window;
        gui::PresentationManager::instance().init();
    }
    EXPECT_EQ(label_of_presentation(), nullptr);
    support::create_document(); // which redraws
}

#include "PresentationSnippets.moc"
