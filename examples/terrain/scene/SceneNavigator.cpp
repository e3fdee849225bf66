#include "scene/SceneNavigator.h"

#include "scene/ReliefScene.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_degree = std::acos(-1) / 180;
const double s_home_pitch = 35 * s_degree;
const double s_flattest = 2 * s_degree; ///< that one looks down going around
const double s_steepest = 89 * s_degree;
const double s_key_angle = 10 * s_degree; ///< of a step of a key
const double s_drag_angle = 0.4 * s_degree; ///< of a pixel
const double s_look_angle = 0.15 * s_degree; ///< of a pixel, flying
const double s_zoom_step = 1.25;
const int s_glide_time = 350; ///< milliseconds
const int s_flight_interval = 16; ///< milliseconds
const double s_longest_interval = 0.1; ///< seconds; after a pause one does not leap

// Parts of the scene's side.
const double s_clearance = 0.003; ///< of the eye above the ground
const double s_shortest = 0.01; ///< distance to the target
const double s_longest = 6;
const double s_highest = 3; ///< that one can fly
const double s_slowest = 0.03; ///< flight, in a second
const double s_fastest = 0.6;
const double s_least_depth = 0.001; ///< of a scene, which may be level

const double s_straight_north = 0.5 * s_degree;

/// What the camera is to see: not flatter than a camera can cope with.
osg::BoundingBoxd box_of(const ReliefScene* p_scene)
{
    const double half = SceneSpace::side / 2;
    osg::BoundingBoxd box = p_scene ? p_scene->bounds() : osg::BoundingBoxd(-half, -half, 0, half, half, 0);
    box.zMax() = std::max(box.zMax(), box.zMin() + SceneSpace::side * s_least_depth);
    return box;
}

} // namespace

SceneNavigator::SceneNavigator(QObject* p_parent)
    : QObject(p_parent)
{
    m_glide.setStartValue(0.0);
    m_glide.setEndValue(1.0);
    m_glide.setDuration(s_glide_time);
    m_glide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_glide, &QVariantAnimation::valueChanged, this, &SceneNavigator::moved);
    connect(&m_glide, &QVariantAnimation::finished, this, &SceneNavigator::moved);
    m_flight_timer.setInterval(s_flight_interval);
    connect(&m_flight_timer, &QTimer::timeout, this, &SceneNavigator::fly);
    show_whole(0, s_home_pitch);
}

void SceneNavigator::show(const ReliefScene* p_scene)
{
    m_glide.stop();
    m_p_scene = p_scene;
    show_whole(0, s_home_pitch);
    emit moved();
}

void SceneNavigator::follow_scene()
{
    if (m_fits) {
        show_whole(m_camera.heading, m_camera.pitch);
    } else {
        keep_in_sight();
    }
    emit moved();
}

void SceneNavigator::resize(const QSizeF& widget)
{
    m_widget = widget;
    if (m_fits) {
        m_glide.stop();
        show_whole(m_camera.heading, m_camera.pitch);
    }
    emit moved();
}

void SceneNavigator::mode(SceneMode mode)
{
    if (mode == m_mode) {
        return;
    }
    stop_gliding();
    release_all();
    m_mode = mode;
    if (mode == SceneMode::Orbit) {
        // Around what lies in the middle now.
        const osg::Vec3d eye = m_camera.eye();
        if (const auto place = m_p_scene ? m_p_scene->hit(eye, m_camera.forward()) : std::nullopt) {
            m_camera.target = *place;
            m_camera.distance = (*place - eye).length();
        }
        keep_in_sight();
    }
    emit mode_changed();
    emit moved();
}

// --- where the camera may be

/// The height under a place; that of the lowest ground where there is none.
double SceneNavigator::ground_at(const osg::Vec3d& place) const
{
    const auto height = m_p_scene ? m_p_scene->surface({place.x(), place.y()}) : std::nullopt;
    return height.value_or(box_of(m_p_scene).zMin());
}

void SceneNavigator::keep_in_sight()
{
    if (m_mode == SceneMode::Orbit) {
        keep_target_on_ground();
    } else {
        keep_eye_near();
    }
    keep_above_ground();
}

void SceneNavigator::keep_target_on_ground()
{
    const osg::BoundingBoxd box = box_of(m_p_scene);
    const double side = SceneSpace::side;
    m_camera.distance = std::clamp(m_camera.distance, s_shortest * side, s_longest * side);
    m_camera.pitch = std::clamp(m_camera.pitch, s_flattest, s_steepest);
    for (int axis = 0; axis < 3; ++axis) {
        m_camera.target[axis] = std::clamp(m_camera.target[axis], box._min[axis], box._max[axis]);
    }
}

void SceneNavigator::keep_eye_near()
{
    const osg::BoundingBoxd box = box_of(m_p_scene);
    const double side = SceneSpace::side;
    m_camera.distance = std::clamp(m_camera.distance, s_shortest * side, s_longest * side);
    const osg::Vec3d eye = m_camera.eye();
    const osg::Vec3d inside(std::clamp(eye.x(), box.xMin() - side, box.xMax() + side),
        std::clamp(eye.y(), box.yMin() - side, box.yMax() + side),
        std::min(eye.z(), box.zMax() + s_highest * side));
    m_camera.target += inside - eye;
}

/// Looks further down until the eye is above the ground, or, flying, goes up.
void SceneNavigator::keep_above_ground()
{
    const auto missing = [this] {
        const osg::Vec3d eye = m_camera.eye();
        return ground_at(eye) + s_clearance * SceneSpace::side - eye.z();
    };
    while (m_mode == SceneMode::Orbit && missing() > 0 && m_camera.pitch < s_steepest) {
        m_camera.pitch = std::min(m_camera.pitch + s_degree, s_steepest);
    }
    m_camera.target.z() += std::max(missing(), 0.0);
}

// --- moving at once

void SceneNavigator::drag(SceneDrag drag, const QPointF& by)
{
    stop_gliding();
    m_fits = false;
    if (drag == SceneDrag::Turn && m_mode == SceneMode::Orbit) {
        m_camera.turn(by.x() * s_drag_angle, by.y() * s_drag_angle);
    } else if (drag == SceneDrag::Turn) {
        m_camera.look(-by.x() * s_look_angle, -by.y() * s_look_angle);
    } else if (drag == SceneDrag::Move) {
        const double pixel = m_camera.pixel(m_widget);
        const osg::Vec3d right = m_camera.right();
        const osg::Vec3d ahead(-right.y(), right.x(), 0); // on the ground
        m_camera.target += ahead * (by.y() * pixel) - right * (by.x() * pixel);
    }
    keep_in_sight();
    emit moved();
}

void SceneNavigator::zoom(double factor, const QPointF& at)
{
    stop_gliding();
    m_fits = false;
    m_camera.approach(place_under(at).value_or(m_camera.target), 1 / factor);
    keep_in_sight();
    emit moved();
}

std::optional<osg::Vec3d> SceneNavigator::place_under(const QPointF& point) const
{
    return m_p_scene ? m_p_scene->hit(m_camera.eye(), m_camera.ray(point, m_widget)) : std::nullopt;
}

// --- gliding

template <class Change>
void SceneNavigator::glide(Change change)
{
    const SceneCamera left = drawn_camera();
    m_glide.stop();
    change();
    if (housekeeping::ApplicationManager::const_instance().animateCameraJumps()) {
        m_left = left;
        m_glide.start();
    }
    emit moved();
}

SceneCamera SceneNavigator::drawn_camera() const
{
    return m_glide.state() == QAbstractAnimation::Running
        ? between(m_left, m_camera, m_glide.currentValue().toDouble())
        : m_camera;
}

void SceneNavigator::stop_gliding()
{
    if (m_glide.state() != QAbstractAnimation::Running) {
        return;
    }
    m_camera = drawn_camera();
    m_glide.stop();
    m_fits = false;
    keep_in_sight();
}

void SceneNavigator::centre(const QPointF& at)
{
    if (const auto place = place_under(at)) {
        glide([this, &place] {
            m_fits = false;
            m_camera.target = *place;
            keep_in_sight();
        });
    }
}

void SceneNavigator::turn(int right, int down)
{
    glide([this, right, down] {
        m_fits = false;
        if (m_mode == SceneMode::Orbit) {
            m_camera.turn(right * s_key_angle, down * s_key_angle);
        } else {
            m_camera.look(right * s_key_angle, down * s_key_angle);
        }
        keep_in_sight();
    });
}

void SceneNavigator::zoom_in()
{
    glide([this] {
        m_fits = false;
        m_camera.approach(m_camera.target, 1 / s_zoom_step);
        keep_in_sight();
    });
}

void SceneNavigator::zoom_out()
{
    glide([this] {
        m_fits = false;
        m_camera.approach(m_camera.target, s_zoom_step);
        keep_in_sight();
    });
}

void SceneNavigator::show_whole(double heading, double pitch)
{
    m_fits = true;
    m_camera = looking_at(box_of(m_p_scene), m_widget, heading, pitch);
    keep_above_ground();
}

void SceneNavigator::home()
{
    glide([this] { show_whole(0, s_home_pitch); });
}

void SceneNavigator::north()
{
    glide([this] {
        const bool is_north = std::abs(normal_angle(m_camera.heading)) < s_straight_north;
        const double before = m_camera.heading;
        const double there = is_north ? m_heading_before_north.value_or(before) : 0;
        if (!is_north) {
            m_heading_before_north = before;
        }
        if (m_mode == SceneMode::Orbit) {
            m_camera.turn(there - before, 0);
        } else {
            m_camera.look(there - before, 0);
        }
        keep_in_sight();
    });
}

// --- flying

bool SceneNavigator::is_moving() const
{
    return m_flight.is_running() || m_glide.state() == QAbstractAnimation::Running;
}

void SceneNavigator::press(int key)
{
    if (m_mode != SceneMode::Fly || !SceneFlight::is_key(key)) {
        return;
    }
    stop_gliding();
    m_flight.press(key);
    if (!m_flight_timer.isActive()) {
        m_flight_clock.start();
        m_flight_timer.start();
    }
}

void SceneNavigator::release(int key)
{
    m_flight.release(key);
    if (!m_flight.is_running() && m_flight_timer.isActive()) {
        m_flight_timer.stop();
        emit moved(); // once more, now at rest
    }
}

void SceneNavigator::release_all()
{
    m_flight.stop();
    m_flight_timer.stop();
}

/// The higher, the faster.
void SceneNavigator::fly()
{
    const double seconds = std::min(static_cast<double>(m_flight_clock.restart()) / 1000, s_longest_interval);
    const osg::Vec3d eye = m_camera.eye();
    const double speed
        = std::clamp(eye.z() - ground_at(eye), s_slowest * SceneSpace::side, s_fastest * SceneSpace::side);
    m_fits = false;
    m_flight.move(m_camera, seconds, speed);
    keep_in_sight();
    emit moved();
}

} // namespace terrain
