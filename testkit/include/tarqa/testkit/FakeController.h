#pragma once

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <boost/shared_ptr.hpp>

#include <string>

namespace tarqa::housekeeping::testkit {

/**
 * A controller that counts what it is told and has a state with one value in every document, for tests of
 * views and documents:
 *
 *     FakeController::register_factory("fake");
 *     FakeController::make_controllers();
 *     FakeDocument& document = FakeDocument::create();
 *     FakeController::of("fake").current_state()->value = 3;
 *
 * The controller manager owns it. Main thread.
 */
class TQ_HK_TESTKIT_EXPORT FakeController : public AbstractController
{
    Q_OBJECT

public:
    /// What it remembers about one document.
    class TQ_HK_TESTKIT_EXPORT State : public AbstractState
    {
    public:
        using AbstractState::AbstractState;
        ~State() override;

        int value = 0; ///< for the test to set
    };

    FakeController();
    ~FakeController() override;

    /// Registers a factory of these that stays for ever, before the controllers are made.
    /// @throws std::runtime_error if the name is taken
    static void register_factory(const std::string& name);
    /// Makes the controllers that are registered, the library's own among them, and calls their post_init();
    /// only the first call does. For a test whose program does not start a host that does it.
    static void make_controllers();
    /// @throws std::bad_cast if the controller of that name is no FakeController, or there is none
    static FakeController& of(const std::string& name);

    /// The state of the current document; empty if there is none.
    const boost::shared_ptr<State>& current_state() const { return m_current_state; }
    /// How many states it was asked for.
    int states_made() const { return m_states_made; }
    /// How often it was told of another state, or of none.
    int updates() const { return m_updates; }
    /// Whether post_init() was called.
    bool was_initialised() const { return m_was_initialised; }

    void post_init() override;
    /// Redraws the views, see AbstractController.
    void refresh() { force_update(); }

protected:
    boost::shared_ptr<AbstractState> create_state(AbstractDocument& document) override;
    void update_state(boost::shared_ptr<AbstractState> state) override;

private:
    boost::shared_ptr<State> m_current_state;
    int m_states_made = 0;
    int m_updates = 0;
    bool m_was_initialised = false;
};

} // namespace tarqa::housekeeping::testkit
