#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

class QLabel;
class QStatusBar;

namespace terrain {

class TerrainView;

/// What the status bar says about the map that is shown: the place under the pointer, and the scale. Main
/// thread.
class MapStatus : public QObject
{
    Q_OBJECT

public:
    /// @param bar where it is said; becomes the parent
    explicit MapStatus(QStatusBar& bar);

    /// Follows a map, as long as that exists; only the one that is shown has something to say.
    void follow(const TerrainView& view);
    /// Another map is shown now; null for none.
    void show(const TerrainView* p_view);

    /// About the place under the pointer.
    QString reading() const;

private:
    void show_scale(double scale);

    QLabel* m_p_reading; // the bar's, as the next one
    QLabel* m_p_scale;
};

} // namespace terrain
