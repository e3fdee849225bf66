#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>

#include <QtCore/QCoreApplication>

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainModel;
struct Mesh;

/**
 * A command that changes the raster of a terrain document, as a whole or not at all: derived commands compute
 * what is new beside what is old and put it in place at the end, so a run that fails or is cancelled has
 * changed nothing. A triangulation that goes with the old heights comes back when the command is undone.
 *
 * Derived commands give the change, the way back and a text of their parameters.
 */
class RasterCommand : public housekeeping::AbstractCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::RasterCommand)

public:
    void rollback() override;

    /// Why the last run failed, for the user; empty if it did not.
    const std::string& failure() const { return m_failure; }

    /// The memory held for undo, in bytes; that of the old triangulation, to which derived commands add
    /// theirs.
    virtual std::size_t undo_bytes() const;

protected:
    RasterCommand(housekeeping::DocumentId document_id, const QString& name);

    /// The change. Calls report() every now and then, which is where the command may be cancelled, and
    /// changes nothing before its last call. A redo does it again, from the same raster as before.
    /// @return what came out, for the description
    /// @throws FailedCommandException if there is no way to do it
    virtual QString change(TerrainModel& model) = 0;
    /// Puts back what change() changed, and forgets it; nothing if it changed nothing, or was taken back.
    /// Cannot fail. The triangulation comes back by itself.
    virtual void take_back(TerrainModel& model) = 0;

    /// The parameters as the description shows them, for example "radius 2"; empty for none.
    virtual QString parameters() const = 0;

    /// Between runs: whether the last run came to its end and was not undone.
    bool is_done() const { return m_sp_old_mesh.has_value(); }

    /// Reports that @p done of @p total are done. @throws CancelCommandException if cancellation was
    /// requested
    void report(std::size_t done, std::size_t total) const;

    void finished(bool succeeded) override;

    /// A height with the document's unit, for people.
    QString height_text(double height) const;

    /// @throws FailedCommandException, always
    [[noreturn]] static void fail(const QString& reason, const char* source, unsigned int line);

private:
    void remember() override;
    void do_command() override;
    void undo_command() override;

    std::string m_failure;
    std::optional<boost::shared_ptr<const Mesh>> m_sp_old_mesh; // from the run until it is undone
};

/// Why the last run of a command failed, or, for a composite, of the first of its children that did; empty if
/// none did.
std::string failure_of(const housekeeping::AbstractCommand& command);

} // namespace terrain
