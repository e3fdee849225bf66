#pragma once

#include "Borehole.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <optional>

namespace boreholes {

namespace housekeeping = tarqa::housekeeping; // without it Qt does not find handle_message()

class BoreholesDocument;

/**
 * What menu, map and table work with: the current document, which borehole is selected in it, and the unit of
 * the lengths that are shown. It has commands run, and the views redrawn when something changed. Widgets know
 * it, it knows no widgets.
 *
 * The controller manager makes, owns and destroys it; its factory is in the source file. Main thread.
 */
class BoreholesController : public housekeeping::AbstractController
{
    Q_OBJECT

public:
    static const char* const product_name;

    enum class Unit
    {
        Metres,
        Feet
    };

    BoreholesController();
    /// The controller manager's.
    static BoreholesController& instance();

    /// Null if there is none.
    BoreholesDocument* document() const;
    /// The current document's; none without a document.
    const Boreholes& boreholes() const;

    std::optional<std::size_t> selected() const;
    void select(std::optional<std::size_t> index);

    // Each is one step for undo. Nothing happens without a document, or without a selected borehole.
    void add(const Borehole& borehole);
    void delete_selected();

    Unit unit() const { return m_unit; }
    void unit(Unit unit);
    /// Metres in the unit.
    double in_unit(double metres) const;
    double in_metres(double length) const;
    QString unit_text() const;

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    /// What is remembered for each document; the framework keeps it there.
    class State : public housekeeping::AbstractState
    {
    public:
        using AbstractState::AbstractState;

        std::optional<std::size_t> selected;
    };

    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override;
    void update_state(boost::shared_ptr<housekeeping::AbstractState> sp_state) override;

    boost::shared_ptr<State> m_sp_state; // the current document's; null without one
    Unit m_unit = Unit::Metres;
};

} // namespace boreholes
