#pragma once

#include <tarqa/housekeeping/AbstractDataInformation.h>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// How a raster file is read: which band holds the heights. Registered as "raster".
class RasterInformation : public housekeeping::AbstractDataInformation
{
public:
    static const char* const product_name;

    /// @param band the band's number, counted from 1
    explicit RasterInformation(int band = 1);

    int band() const { return m_band; }

    /// One entry, the band; a missing or wrong entry leaves the band as it was.
    void info(const QStringList& list, int first) override;
    QStringList info() override;

protected:
    /// One line, the band; as info().
    std::istream& serialise(std::istream& stream) override;
    std::ostream& serialise(std::ostream& stream) const override;

private:
    void read_band(const QString& text);

    int m_band;
};

} // namespace terrain
