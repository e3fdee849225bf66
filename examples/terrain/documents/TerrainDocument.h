#pragma once

#include <tarqa/housekeeping/AbstractDocument.h>

#include <atomic>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainModel;

/// An open elevation raster. Registered as "Terrain", the default document. See open_terrain() for how one
/// comes about.
class TerrainDocument : public housekeeping::AbstractDocument
{
public:
    static const char* const product_name;

    TerrainDocument();

    void buildModel() override;
    void set_busy(bool busy) override;
    bool is_busy() const override;
    /// Refuses while a command runs on the document.
    bool request_close(bool first, bool second) override;
    void set_modified(bool modified) override;
    void document_created() override;
    void title_changed() override;

    bool is_modified() const { return m_modified; }
    TerrainModel& terrain() const;

private:
    // Both are set in the thread that runs a command.
    std::atomic<bool> m_busy{false};
    std::atomic<bool> m_modified{false};
};

} // namespace terrain
