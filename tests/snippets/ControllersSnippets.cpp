#include "support/App.h"
#include "support/Controllers.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/Updateable.h>

#include <QtWidgets/QLabel>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

// docs/controllers.md

namespace controllers_guide {

namespace housekeeping = tarqa::housekeeping;

//! [controller]
class WellsState : public housekeeping::AbstractState
{
public:
    using AbstractState::AbstractState;
    int chosen = -1;
};

class WellsController : public housekeeping::AbstractController
{
    Q_OBJECT

public:
    int chosen() const { return m_state ? m_state->chosen : -1; }
    void choose(int well)
    {
        if (!m_state) {
            return; // no document
        }
        housekeeping::ControllerLocker locker(*this);
        m_state->chosen = well;
        locker.finished(); // redraws the views
    }

protected:
    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override
    {
        return boost::make_shared<WellsState>(document, document.id(), controller_name());
    }
    void update_state(boost::shared_ptr<housekeeping::AbstractState> state) override
    {
        housekeeping::ControllerLocker locker(*this);
        m_state = boost::dynamic_pointer_cast<WellsState>(state);
        locker.finished(); // nobody else redraws the views when another document becomes current
    }

private:
    boost::shared_ptr<WellsState> m_state; // the current document's
};
//! [controller]

//! [controller factory]
class WellsControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    WellsControllerFactory()
        : AbstractControllerFactory("WellsController", false)
    { }
    boost::shared_ptr<housekeeping::AbstractController> create_product() override
    {
        return boost::make_shared<WellsController>();
    }
    housekeeping::AbstractController* create_unmanaged_product() override { return new WellsController; }
};

const WellsControllerFactory s_factory; // registers itself
//! [controller factory]

//! [view]
class WellsLabel : public QLabel, public housekeeping::Updateable
{
public:
    explicit WellsLabel(WellsController& controller)
        : m_controller(controller)
    {
        register_controller(&controller);
    }
    ~WellsLabel() override { unregister(); } // it goes before the controller

private:
    void update() override { setText(tr("Well %1").arg(m_controller.chosen())); }

    WellsController& m_controller; // the controller manager's
};
//! [view]

} // namespace controllers_guide

TEST(ControllersGuide, EachDocumentHasAStateAndTheViewShowsTheCurrentOne)
{
    const support::App app;
    support::init_controllers();
    auto& controller = dynamic_cast<controllers_guide::WellsController&>(
        *tarqa::housekeeping::ControllerManager::instance().controller("WellsController"));
    const controllers_guide::WellsLabel label(controller);
    controller.choose(1); // there is no document
    EXPECT_EQ(controller.chosen(), -1);
    EXPECT_EQ(label.text(), "");
    const tarqa::housekeeping::DocumentId one = support::create_document().id();
    controller.choose(2);
    EXPECT_EQ(label.text(), "Well 2");
    support::create_document();
    EXPECT_EQ(controller.chosen(), -1);
    EXPECT_EQ(label.text(), "Well -1");
    controller.choose(3);
    EXPECT_EQ(label.text(), "Well 3");
    tarqa::housekeeping::DocumentManager::instance().current_document(one);
    EXPECT_EQ(controller.chosen(), 2);
    EXPECT_EQ(label.text(), "Well 2");
}

#include "ControllersSnippets.moc"
