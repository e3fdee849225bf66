#pragma once

#include "views/Camera.h"

#include <QtCore/QVariantAnimation>

#include <functional>

namespace terrain {

/// A map's way from one camera to another, for a moment. A member of the map. Main thread.
class Glide : public QVariantAnimation
{
public:
    /// @param draw called for each picture on the way
    explicit Glide(const std::function<void()>& draw);

    void start_from(const Camera& left);
    bool is_running() const { return state() == Running; }
    /// The camera now, on the way to @p there; that one if there is no way to go.
    Camera now(const Camera& there) const;

private:
    Camera m_left; // where it came from
};

} // namespace terrain
