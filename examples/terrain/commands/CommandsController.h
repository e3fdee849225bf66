#pragma once

#include "commands/CommandRunner.h"
#include "commands/ResampleCommand.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractState.h>

#include <boost/shared_ptr.hpp>

#include <optional>
#include <string>
#include <utility>

namespace terrain {

/**
 * What the Tools menu works with: the parameters that the user chose last, for each document, and the one who
 * runs the commands. Registered as "CommandsController". Main thread.
 */
class CommandsController : public housekeeping::AbstractController
{
    Q_OBJECT

public:
    static const char* const product_name;

    /// Parameters as the user left them.
    class State : public housekeeping::AbstractState
    {
    public:
        using AbstractState::AbstractState;

        int radius = 2; ///< of smoothing, in cells
        std::optional<std::pair<double, double>> bounds; ///< of clamping; none before the first time
        double factor = 2; ///< of scaling
        double cell_factor = 2; ///< of resampling
        Resampling resampling = Resampling::Bilinear;
        double brush_radius = 10; ///< of the brushes, in cells
        std::optional<double> brush_height; ///< none before the first time
        std::optional<double> tolerance; ///< of triangulating; none before the first time
    };

    CommandsController();
    ~CommandsController() override;

    /// The controller manager's.
    static CommandsController& instance();

    /// The current document's; null if there is none.
    State* state() const { return m_sp_state.get(); }
    CommandRunner& runner() { return m_runner; }

private:
    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override;
    void update_state(boost::shared_ptr<housekeeping::AbstractState> sp_state) override;

    boost::shared_ptr<State> m_sp_state;
    CommandRunner m_runner;
};

} // namespace terrain
