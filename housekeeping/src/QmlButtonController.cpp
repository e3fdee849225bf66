#include <tarqa/housekeeping/QmlButtonController.h>

namespace tarqa::housekeeping {

QmlButtonController::QmlButtonController(QObject* p_parent)
    : QObject(p_parent)
{ }

QmlButtonController::~QmlButtonController() = default;

bool QmlButtonController::visible() const
{
    return m_visible;
}

QRectF QmlButtonController::geometry()
{
    return m_geometry;
}

void QmlButtonController::setVisible(bool visible)
{
    if (visible == m_visible) {
        return;
    }
    m_visible = visible;
    emit visibleChanged(visible);
}

void QmlButtonController::setGeometry(QRectF geometry)
{
    if (geometry == m_geometry) {
        return;
    }
    m_geometry = geometry;
    emit geometryChanged(geometry);
}

} // namespace tarqa::housekeeping
