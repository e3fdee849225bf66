#pragma once

#include "io/FileStamp.h"

#include <tarqa/housekeeping/AbstractDocument.h>

#include <atomic>
#include <string>

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

    /// The file that the document is saved to; UTF-8. Empty if it came from one that cannot hold all there
    /// is, or would lose something.
    const std::string& own_file() const { return m_own_file; }
    /// Whether nobody needs to be asked before that file is overwritten.
    bool may_overwrite() const { return m_may_overwrite; }
    void own_file(const std::string& path, bool may_overwrite);

    /// The file that the document was read from, or was saved to last; UTF-8.
    const std::string& source_file() const { return m_source_file; }
    /// What that file was like then.
    const FileStamp& source_stamp() const { return m_source_stamp; }
    void source_file(const std::string& path, const FileStamp& stamp);
    /// The format of that file, for people; empty if unknown.
    const std::string& source_format() const { return m_source_format; }
    void source_format(const std::string& format) { m_source_format = format; }

    /// Of how many columns and rows of the source one stands for: more than 1 in an overview.
    int reduction() const { return m_reduction; }
    void reduction(int reduction) { m_reduction = reduction; }

    TerrainModel& terrain() const;

private:
    // Both are set in the thread that runs a command.
    std::atomic<bool> m_busy{false};
    std::atomic<bool> m_modified{false};
    std::string m_own_file;
    std::string m_source_file;
    std::string m_source_format;
    FileStamp m_source_stamp;
    bool m_may_overwrite = false;
    int m_reduction = 1;
};

} // namespace terrain
