#include "views/Glide.h"

#include <QtCore/QEasingCurve>

namespace terrain {

namespace {

const int s_time = 180; ///< milliseconds

} // namespace

Glide::Glide(const std::function<void()>& draw)
{
    setStartValue(0.0); // the part of the way
    setEndValue(1.0);
    setDuration(s_time);
    setEasingCurve(QEasingCurve::OutCubic);
    connect(this, &QVariantAnimation::valueChanged, this, [draw] { draw(); });
}

void Glide::start_from(const Camera& left)
{
    m_left = left;
    start();
}

Camera Glide::now(const Camera& there) const
{
    return is_running() ? between(m_left, there, currentValue().toDouble()) : there;
}

} // namespace terrain
