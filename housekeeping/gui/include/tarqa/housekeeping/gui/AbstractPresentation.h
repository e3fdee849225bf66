#pragma once

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/Updateable.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QPointer>

#include <string>

namespace tarqa::housekeeping {
class TestAccess;
} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

/**
 * The face of one controller in the window: it owns the actions, menus and widgets through which the user
 * drives that controller, and refreshes them when the controller's data or state changes.
 *
 * The host derives its presentations from it and registers a factory for each; the PresentationManager makes
 * one of each at start-up, initialises them all, then builds them all. So every init_presentation() has run
 * before the first build_presentation(). It normally lives until shutdown; its destructor takes it out of its
 * controller's views. Main thread.
 */
class TQ_HK_EXPORT AbstractPresentation : public Updateable
{
public:
    AbstractPresentation();
    AbstractPresentation(const AbstractPresentation&);
    AbstractPresentation& operator=(const AbstractPresentation&);
    ~AbstractPresentation() override;

private:
    /// Refreshes, unless receive_updates() was switched off.
    void update() override;

protected:
    /// Refreshes actions and widgets from the controller's state.
    virtual void update_presentation() = 0;
    /// The first set-up, which other presentations may rely on when they build.
    virtual void init_presentation() = 0;
    /// Makes actions, menus and widgets and puts them into the main window.
    virtual void build_presentation() = 0;
    /// The name of the controller that is shown.
    virtual std::string controller_name() const = 0;
    /// The controller; null before init(), and if there is none of that name. Derived classes give their own
    /// controller's type.
    virtual AbstractController* controller() const;

private:
    virtual void connect_controller();

public:
    /// Connects the controller, then calls init_presentation().
    void init();
    /// Calls build_presentation().
    void build();

protected:
    /// While false, changes of the controller refresh nothing.
    void receive_updates(bool receive) { m_receive_updates = receive; }

private:
    friend class housekeeping::TestAccess;

    /// Refreshes in any case.
    void update_presentation_private();

    QPointer<AbstractController> m_p_controller; // the controller manager's
    bool m_receive_updates = true;
};

} // namespace tarqa::housekeeping::gui
