#pragma once

namespace tarqa::housekeeping {

/// How finely seismic sections are drawn; stored as its number.
enum SeismicRenderQuality
{
    LOW_SEISMIC_RENDER_QUALITY = 0, ///< without shaders
    MEDIUM_SEISMIC_RENDER_QUALITY = 1, ///< what a software renderer can carry
    HIGH_SEISMIC_RENDER_QUALITY = 2 ///< the highest
};

} // namespace tarqa::housekeeping
