#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QMutex>
#include <QtCore/QObject>

#include <boost/shared_ptr.hpp>

#include <atomic>
#include <string>

namespace tarqa::housekeeping {

class AbstractDocument;
class AbstractState;

/**
 * The object behind one tool or panel: holds its logic, keeps a state in every document, and tells the views
 * that show it when to redraw.
 *
 * The host derives its controllers from it and registers a factory for each; the controller manager makes one
 * of each at start-up, names it and owns it until shutdown. Data of a controller is changed under its
 * recursive lock, held with a ControllerLocker, on the main thread when views are to be redrawn.
 */
class TQ_HK_EXPORT AbstractController : public QObject
{
    Q_OBJECT

public:
    AbstractController();
    ~AbstractController() override;

    /// Called once, when all controllers exist.
    virtual void post_init();
    /// Whether the controller has a state to work on; the base: whether the last state that it was given was
    /// not empty.
    virtual bool state_exists() const;

    /// The name of the controller's product; logged if it has none yet.
    const std::string& controller_name() const;
    /// Gives the name, once. A second one, and the reserved "AbstractController", are logged and taken all
    /// the same.
    void controller_name(const std::string& name);

    /// Makes this controller's state for a new document; empty for a controller without states.
    boost::shared_ptr<AbstractState> create_associated_state(AbstractDocument& document);
    /// Switches to the state of the current document; empty if there is none.
    void update_associated_state(boost::shared_ptr<AbstractState> state);

    /// Whether somebody holds the lock. Deliberately cleared by the inner of two nested releases: do not rely
    /// on it there.
    bool is_locked() const { return m_locked.load(std::memory_order_acquire); }

protected:
    /// The base gives none.
    virtual boost::shared_ptr<AbstractState> create_state(AbstractDocument& document);
    /// @p state is empty after the last document was destroyed: the owner() of a state that was kept until
    /// then is gone. The base does nothing.
    virtual void update_state(boost::shared_ptr<AbstractState> state);

    /// Redraws all views of this controller, under the lock, in the calling thread.
    void force_update();

private:
    friend class ControllerLocker;
    friend class TestAccess;

    void acquire();
    void release(bool update);

    std::string m_controller_name;
    QMutex m_mutex; // recursive
    std::atomic<bool> m_state_exists{false};
    std::atomic<bool> m_locked{false};
};

} // namespace tarqa::housekeeping
