#pragma once

#include "documents/CellChanges.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/Updateable.h>

#include <QtCore/QString>

#include <functional>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainController;

/**
 * Tells its owner what has changed in a document's terrain, when that is to be drawn; as long as it exists.
 * The terrain controller must exist, and outlive it. What the owner throws then goes to the log: the others
 * are to hear of the change, too. Main thread.
 */
class TerrainWatch : private housekeeping::Updateable
{
public:
    /// Told what changed since it was told last.
    typedef std::function<void(const CellChanges& changes)> Tell;
    /// Told what it threw then, for the user.
    typedef std::function<void(const QString& problem)> Fail;

    TerrainWatch(
        const housekeeping::DocumentId& document, Tell tell, Fail fail = [](const QString&) {});
    ~TerrainWatch() override;
    TerrainWatch(const TerrainWatch&) = delete;
    TerrainWatch& operator=(const TerrainWatch&) = delete;

private:
    void update() override;

    TerrainController& m_controller; // the controller manager's
    housekeeping::DocumentId m_document;
    Tell m_tell;
    Fail m_fail;
};

} // namespace terrain
