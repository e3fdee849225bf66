#pragma once

#include <osg/Image>
#include <osg/Texture2D>
#include <osg/Vec2>
#include <osg/ref_ptr>

#include <QtCore/QPointF>
#include <QtCore/QRect>

namespace osg {
class StateSet;
}

namespace terrain {

class HillShade;

/// The picture of a map, to be laid over a surface: its colours and its shading are the map's. Main thread.
class ReliefTexture
{
public:
    ReliefTexture();

    /// Takes over a picture.
    void refresh(const HillShade& shade);
    /// Takes over a part of a picture of the same size.
    void refresh(const HillShade& shade, const QRect& pixels);

    /// Where a place of the map, in columns and rows of cells, lies on the picture.
    osg::Vec2 place(const QPointF& map) const;
    /// Lets what is drawn with @p state have the picture on it; where that is transparent, nothing is drawn.
    void apply(osg::StateSet& state) const;

    const osg::Image& image() const { return *m_image; }

private:
    void copy(const HillShade& shade, const QRect& pixels);

    osg::ref_ptr<osg::Image> m_image;
    osg::ref_ptr<osg::Texture2D> m_texture;
    QSizeF m_cells{1, 1}; // that the picture covers
};

} // namespace terrain
