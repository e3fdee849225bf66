#include "scene/SceneCamera.h"

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_pi = std::acos(-1);
const double s_half_view = s_pi / 8; ///< half the angle that is seen from top to bottom
const double s_steepest = 89 * s_pi / 180; ///< straight down, north could not be told from south
const double s_margin = 1.06; ///< around a scene that is seen whole
const double s_nearest = 0.1; ///< what is nearer to the eye is not drawn
const double s_depth_ratio = 20000; ///< of farthest and nearest; more would blur what is in front of what

double half_height()
{
    return std::tan(s_half_view);
}

double aspect(const QSizeF& widget)
{
    return std::max(widget.width(), 1.0) / std::max(widget.height(), 1.0);
}

} // namespace

double normal_angle(double angle)
{
    return std::remainder(angle, 2 * s_pi);
}

osg::Vec3d SceneCamera::forward() const
{
    return {std::sin(heading) * std::cos(pitch), std::cos(heading) * std::cos(pitch), -std::sin(pitch)};
}

osg::Vec3d SceneCamera::right() const
{
    return {std::cos(heading), -std::sin(heading), 0};
}

osg::Vec3d SceneCamera::up() const
{
    return right() ^ forward();
}

osg::Matrixd SceneCamera::view_matrix() const
{
    return osg::Matrixd::lookAt(eye(), target, up());
}

osg::Matrixd SceneCamera::projection_matrix(const QSizeF& widget, const osg::BoundingBoxd& bounds) const
{
    const double away = (eye() - bounds.center()).length();
    const double farthest = std::max(away + bounds.radius(), 1.0) * s_margin;
    const double nearest
        = std::max({(away - bounds.radius()) / s_margin, farthest / s_depth_ratio, s_nearest});
    const double height = half_height() * nearest;
    const double width = height * aspect(widget);
    return osg::Matrixd::frustum(-width, width, -height, height, nearest, farthest);
}

osg::Vec3d SceneCamera::ray(const QPointF& point, const QSizeF& widget) const
{
    const double across = (2 * point.x() / std::max(widget.width(), 1.0) - 1) * aspect(widget);
    const double down = 2 * point.y() / std::max(widget.height(), 1.0) - 1;
    return forward() + right() * (across * half_height()) - up() * (down * half_height());
}

double SceneCamera::pixel(const QSizeF& widget) const
{
    return 2 * half_height() * distance / std::max(widget.height(), 1.0);
}

void SceneCamera::turn(double by_heading, double by_pitch)
{
    heading = normal_angle(heading + by_heading);
    pitch = std::clamp(pitch + by_pitch, -s_steepest, s_steepest);
}

void SceneCamera::look(double by_heading, double by_pitch)
{
    const osg::Vec3d stays = eye();
    turn(by_heading, by_pitch);
    target = stays + forward() * distance;
}

void SceneCamera::approach(const osg::Vec3d& fixed, double factor)
{
    target = fixed + (target - fixed) * factor;
    distance *= factor;
}

SceneCamera looking_at(const osg::BoundingBoxd& bounds, const QSizeF& widget, double heading, double pitch)
{
    SceneCamera camera{bounds.center(), 0, heading, pitch};
    const double tall = half_height() / s_margin;
    const double wide = tall * aspect(widget);
    double distance = 1;
    for (unsigned int i = 0; i < 8; ++i) {
        const osg::Vec3d corner = bounds.corner(i) - camera.target;
        const double before = corner * camera.forward(); // further away than the target
        distance = std::max({distance, std::abs(corner * camera.up()) / tall - before,
            std::abs(corner * camera.right()) / wide - before});
    }
    camera.distance = distance;
    return camera;
}

SceneCamera between(const SceneCamera& from, const SceneCamera& to, double part)
{
    SceneCamera camera;
    camera.target = from.target + (to.target - from.target) * part;
    // By equal factors, or the beginning would seem faster than the end.
    camera.distance = from.distance * std::pow(to.distance / from.distance, part);
    camera.heading = normal_angle(from.heading + normal_angle(to.heading - from.heading) * part);
    camera.pitch = from.pitch + (to.pitch - from.pitch) * part;
    return camera;
}

} // namespace terrain
