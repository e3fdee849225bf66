#pragma once

#include <osg/Vec3d>

#include <QtCore/QSet>

namespace terrain {

struct SceneCamera;

/// The keys with which one flies through a scene, as long as they are held. A plain value.
class SceneFlight
{
public:
    /// Whether a key lets one fly.
    static bool is_key(int key);

    void press(int key) { m_keys.insert(key); }
    void release(int key) { m_keys.remove(key); }
    void stop() { m_keys.clear(); }
    bool is_running() const { return !m_keys.isEmpty(); }

    /// Moves and turns a camera as the keys say. @param seconds since the last time
    /// @param speed in lengths of the scene for a second
    void move(SceneCamera& camera, double seconds, double speed) const;

private:
    double direction(std::initializer_list<int> keys, std::initializer_list<int> opposite) const;

    QSet<int> m_keys;
};

} // namespace terrain
