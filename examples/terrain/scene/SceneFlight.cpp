#include "scene/SceneFlight.h"

#include "scene/SceneCamera.h"

#include <QtCore/Qt>

#include <algorithm>

namespace terrain {

namespace {

const double s_turn_speed = 1.1; ///< radians for a second

} // namespace

bool SceneFlight::is_key(int key)
{
    switch (key) {
    case Qt::Key_W:
    case Qt::Key_S:
    case Qt::Key_A:
    case Qt::Key_D:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

double SceneFlight::direction(std::initializer_list<int> keys, std::initializer_list<int> opposite) const
{
    const auto any = [this](std::initializer_list<int> some) {
        return std::any_of(some.begin(), some.end(), [this](int key) { return m_keys.contains(key); });
    };
    return (any(keys) ? 1 : 0) - (any(opposite) ? 1 : 0);
}

void SceneFlight::move(SceneCamera& camera, double seconds, double speed) const
{
    camera.look(direction({Qt::Key_Right}, {Qt::Key_Left}) * s_turn_speed * seconds, 0);
    const osg::Vec3d by = camera.forward() * direction({Qt::Key_W, Qt::Key_Up}, {Qt::Key_S, Qt::Key_Down})
        + camera.right() * direction({Qt::Key_D}, {Qt::Key_A})
        + osg::Vec3d(0, 0, direction({Qt::Key_PageUp}, {Qt::Key_PageDown}));
    camera.target += by * (speed * seconds);
}

} // namespace terrain
