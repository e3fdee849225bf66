#pragma once

#include <osg/BoundingBox>
#include <osg/Matrixd>
#include <osg/Vec3d>

#include <QtCore/QPointF>
#include <QtCore/QSizeF>

#include <utility>

namespace terrain {

/// How a scene is looked at. A plain value; all angles are in radians, widget's points in its pixels.
struct SceneCamera
{
    osg::Vec3d target; ///< what lies in the middle of the picture, and what one goes around
    double distance = 1; ///< from the eye to it
    double heading = 0; ///< where one looks to: 0 is north, a quarter of a turn is east
    double pitch = 0; ///< how far one looks down

    osg::Vec3d eye() const { return target - forward() * distance; }
    osg::Vec3d forward() const; ///< of length 1, as the other two
    osg::Vec3d right() const;
    osg::Vec3d up() const;

    osg::Matrixd view_matrix() const;
    /// For a scene inside of @p bounds. @param widget its size
    osg::Matrixd projection_matrix(const QSizeF& widget, const osg::BoundingBoxd& bounds) const;
    /// The direction in which a point of the widget lies.
    osg::Vec3d ray(const QPointF& point, const QSizeF& widget) const;
    /// The length, at the target, of a pixel.
    double pixel(const QSizeF& widget) const;

    /// Looks another way, from the same place.
    void look(double by_heading, double by_pitch);
    /// Goes around the target.
    void turn(double by_heading, double by_pitch);
    /// Comes nearer to @p fixed, which stays where it is in the picture. @param factor of all distances
    void approach(const osg::Vec3d& fixed, double factor);
};

/// A camera that has all of a scene in the middle of the widget. @param heading, pitch as those of a camera
SceneCamera looking_at(const osg::BoundingBoxd& bounds, const QSizeF& widget, double heading, double pitch);

/// A camera on the way from one to another. @param part of the way, 0 to 1
SceneCamera between(const SceneCamera& from, const SceneCamera& to, double part);

/// The same direction, from half a turn to the left to half a turn to the right.
double normal_angle(double angle);

} // namespace terrain
