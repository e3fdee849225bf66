#include "scene/ReliefTexture.h"

#include "scene/Graphics.h"
#include "views/HillShade.h"

#include <osg/AlphaFunc>
#include <osg/ColorMask>
#include <osg/StateSet>
#include <osg/TexEnv>

#include <array>

namespace terrain {

namespace {

const float s_least_alpha = 0.2F; ///< leaves the corners of cells whole whose neighbours are transparent
const float s_anisotropy = 8; ///< keeps the picture sharp where one looks along the ground

/// What a transparent pixel is coloured: as what is beside, or edges would be seen through the blur.
QRgb colour_beside(const QImage& picture, const QPoint& pixel)
{
    std::array<int, 3> sum{};
    int count = 0;
    for (int v = pixel.y() - 1; v <= pixel.y() + 1; ++v) {
        for (int u = pixel.x() - 1; u <= pixel.x() + 1; ++u) {
            if (u < 0 || v < 0 || u >= picture.width() || v >= picture.height()) {
                continue;
            }
            const QRgb colour = reinterpret_cast<const QRgb*>(picture.constScanLine(v))[u];
            if (qAlpha(colour) != 0) {
                sum = {sum[0] + qRed(colour), sum[1] + qGreen(colour), sum[2] + qBlue(colour)};
                ++count;
            }
        }
    }
    return count == 0 ? qRgba(0, 0, 0, 0) : qRgba(sum[0] / count, sum[1] / count, sum[2] / count, 0);
}

} // namespace

ReliefTexture::ReliefTexture()
    : m_image(new osg::Image)
    , m_texture(new osg::Texture2D(m_image))
{
    m_texture->setResizeNonPowerOfTwoHint(false);
    m_texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::LINEAR_MIPMAP_LINEAR);
    m_texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
    m_texture->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
    m_texture->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    if (!is_drawn_by_processor()) {
        m_texture->setMaxAnisotropy(s_anisotropy);
    }
    m_texture->setDataVariance(osg::Object::DYNAMIC);
    m_texture->setUnRefImageDataAfterApply(false);
}

void ReliefTexture::refresh(const HillShade& shade)
{
    const QSize size = shade.picture().size().expandedTo(QSize(1, 1)); // an empty one has a texture too
    m_cells = QSizeF(size) * shade.cells_per_pixel();
    if (m_image->s() != size.width() || m_image->t() != size.height()) {
        m_image->allocateImage(size.width(), size.height(), 1, GL_RGBA, GL_UNSIGNED_BYTE);
        m_texture->dirtyTextureObject();
    }
    copy(shade, shade.picture().rect());
    m_image->dirty();
}

void ReliefTexture::refresh(const HillShade& shade, const QRect& pixels)
{
    copy(shade, pixels.adjusted(-1, -1, 1, 1) & shade.picture().rect());
    m_image->dirty();
}

void ReliefTexture::copy(const HillShade& shade, const QRect& pixels)
{
    const QImage& picture = shade.picture();
    for (int row = pixels.top(); row <= pixels.bottom(); ++row) {
        const auto* const p_colours = reinterpret_cast<const QRgb*>(picture.constScanLine(row));
        unsigned char* p_target
            = m_image->data(static_cast<unsigned int>(pixels.left()), static_cast<unsigned int>(row));
        for (int column = pixels.left(); column <= pixels.right(); ++column) {
            const QRgb colour
                = qAlpha(p_colours[column]) == 0 ? colour_beside(picture, {column, row}) : p_colours[column];
            *p_target++ = static_cast<unsigned char>(qRed(colour));
            *p_target++ = static_cast<unsigned char>(qGreen(colour));
            *p_target++ = static_cast<unsigned char>(qBlue(colour));
            *p_target++ = static_cast<unsigned char>(qAlpha(colour));
        }
    }
}

osg::Vec2 ReliefTexture::place(const QPointF& map) const
{
    return {static_cast<float>(map.x() / m_cells.width()), static_cast<float>(map.y() / m_cells.height())};
}

void ReliefTexture::apply(osg::StateSet& state) const
{
    state.setTextureAttributeAndModes(0, m_texture, osg::StateAttribute::ON);
    state.setTextureAttribute(0, new osg::TexEnv(osg::TexEnv::REPLACE));
    state.setAttributeAndModes(
        new osg::AlphaFunc(osg::AlphaFunc::GEQUAL, s_least_alpha), osg::StateAttribute::ON);
    // What is drawn is drawn whole, or the window would be seen through the edges.
    state.setAttribute(new osg::ColorMask(true, true, true, false));
    state.setMode(GL_LIGHTING, osg::StateAttribute::OFF); // the picture has its own
}

} // namespace terrain
