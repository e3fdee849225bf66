#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>
#include <QtCore/QRectF>

namespace tarqa::housekeeping {

/**
 * What a QML scene binds to in order to show and place one button, and tells when it is clicked.
 *
 * Made and owned by the host, which sets the two properties and connects to clicked(). Main thread.
 */
class TQ_HK_EXPORT QmlButtonController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged)
    Q_PROPERTY(QRectF geometry READ geometry WRITE setGeometry NOTIFY geometryChanged)

public:
    /// @param p_parent owner, or null
    explicit QmlButtonController(QObject* p_parent = nullptr);
    ~QmlButtonController() override;

    /// Whether the scene shows the button; true until set.
    bool visible() const;
    /// Where the button stands, in the scene's units; null until it is set.
    QRectF geometry();

public slots:
    /// Tells the scene if the value is another one than before.
    void setVisible(bool visible);
    /// Tells the scene if the rectangle is another one than before; rounding noise does not count.
    void setGeometry(QRectF geometry);

signals:
    /// The button is to be shown or hidden.
    void visibleChanged(bool visible);
    /// The button has another place.
    void geometryChanged(QRectF geometry);
    /// The user pressed the button. Emitted by the scene, or by the host on its behalf.
    void clicked();

private:
    bool m_visible = true;
    QRectF m_geometry;
};

} // namespace tarqa::housekeeping
