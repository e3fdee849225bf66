#pragma once

#include "scene/SceneCamera.h"
#include "scene/SceneFlight.h"
#include "scene/SceneMouse.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtCore/QVariantAnimation>

#include <optional>

namespace terrain {

class ReliefScene;

/// How one gets about in a scene.
enum class SceneMode
{
    Orbit, ///< around a place in the middle
    Fly
};

/**
 * Moves the camera of a scene: as mouse, keys and menus want it, but never below the ground, nor so far away
 * that nothing is seen any more. Movements of keys and menus glide if the user prefers that; camera() is
 * where they lead to, drawn_camera() where they are. Timers run only while something moves. Main thread.
 */
class SceneNavigator : public QObject
{
    Q_OBJECT

public:
    explicit SceneNavigator(QObject* p_parent = nullptr);

    /// What is looked at; null for nothing. Not owned; must outlive the object, or be taken away again.
    /// A scene of another terrain is shown whole.
    void show(const ReliefScene* p_scene);
    /// The scene has changed. The camera stays if it may.
    void follow_scene();
    /// The widget has another size.
    void resize(const QSizeF& widget);

    const SceneCamera& camera() const { return m_camera; }
    SceneCamera drawn_camera() const;

    SceneMode mode() const { return m_mode; }
    void mode(SceneMode mode);

    /// The pointer was dragged.
    void drag(SceneDrag drag, const QPointF& by);
    /// Comes nearer to what lies under a point. @param factor above 1 to see less
    void zoom(double factor, const QPointF& at);
    /// Goes to what lies under a point of the widget, if there is something.
    void centre(const QPointF& at);

    /// Goes around, or looks around, by so many steps of a key. @param down to look further down
    void turn(int right, int down);
    void zoom_in();
    void zoom_out();
    /// Shows the whole terrain, and goes on doing so when the widget changes its size.
    void home();
    /// Looks north; if it did, where it looked before.
    void north();

    /// Of keys for which SceneFlight::is_key(), in the mode for flying.
    void press(int key);
    void release(int key);
    void release_all();

    /// Whether it moves by itself.
    bool is_moving() const;
    /// Stops where it is drawn.
    void stop_gliding();

    /// What lies under a point of the widget; nothing if nothing does.
    std::optional<osg::Vec3d> place_under(const QPointF& point) const;

signals:
    /// Another camera is to be drawn.
    void moved();
    void mode_changed();

private:
    /// Does @p change, which moves the camera, and lets it glide there.
    template <class Change>
    void glide(Change change);
    void fly();
    double ground_at(const osg::Vec3d& place) const;
    void keep_in_sight();
    void keep_target_on_ground();
    void keep_eye_near();
    void keep_above_ground();
    void show_whole(double heading, double pitch);

    const ReliefScene* m_p_scene = nullptr; // not owned
    QSizeF m_widget{1, 1};
    SceneMode m_mode = SceneMode::Orbit;
    SceneCamera m_camera; // where it is, or glides to
    SceneCamera m_left; // where it came from
    QVariantAnimation m_glide; // from 0 to 1, the part of the way
    bool m_fits = true; // until the user moves
    std::optional<double> m_heading_before_north;
    SceneFlight m_flight;
    QTimer m_flight_timer;
    QElapsedTimer m_flight_clock;
};

} // namespace terrain
