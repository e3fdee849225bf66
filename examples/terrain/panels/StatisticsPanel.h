#pragma once

#include "panels/HeightProfile.h"
#include "panels/StatisticsRun.h"
#include "views/ProfileLine.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <array>
#include <map>
#include <optional>

class QComboBox;
class QGroupBox;
class QLabel;
class QSpinBox;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class HistogramPlot;
class ProfilePlot;
class TerrainDocument;

/**
 * Figures of a document's heights, how they are distributed, and the profile through a cell.
 *
 * The heights are counted in another thread, when the panel is seen and the cells have changed since they
 * were last counted. The panel hears from the document manager when a document becomes busy, idle or goes,
 * and nobody reads its cells from then on. Main thread.
 */
class StatisticsPanel : public QWidget
{
    Q_OBJECT

public:
    enum Figure
    {
        Cells,
        WithoutData,
        Lowest,
        Highest,
        Mean,
        Median,
        Deviation
    };
    static constexpr std::size_t figures = Deviation + 1;

    explicit StatisticsPanel(QWidget* p_parent = nullptr);

    /// Shows another document; the null one for none.
    void show_document(const housekeeping::DocumentId& document);
    /// Lets the profile of a document lead through a cell.
    void show_profile(const housekeeping::DocumentId& document, const CellPlace& through);

    /// The document that is shown; the null one for none.
    const housekeeping::DocumentId& document_id() const { return m_document; }
    /// Where the profile runs that is to be seen; nothing if there is none to be seen.
    std::optional<ProfileLine> profile_line() const;
    /// Marks a place on the profile, as ProfileLine::pointed; nothing for none.
    void point_at(const std::optional<int>& place);

    /// Whether all that is to be seen is that of the cells as they are now.
    bool is_up_to_date() const;

    QLabel& figure(Figure which) const { return *m_figures[which]; }
    const QLabel& hint() const { return *m_p_hint; }
    const HistogramPlot& histogram() const { return *m_p_histogram; }
    const ProfilePlot& profile() const { return *m_p_profile; }
    const QLabel& profile_text() const { return *m_p_profile_text; }
    QComboBox& direction() const { return *m_p_direction; }
    QSpinBox& number() const { return *m_p_number; }
    const StatisticsRun& run() const { return m_run; }

    QSize sizeHint() const override;

signals:
    /// What profile_line() gives has changed.
    void profile_line_changed();

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

protected:
    void showEvent(QShowEvent* p_event) override;
    /// Notices that the profile comes into sight, or goes.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    QGroupBox* make_figures();
    QGroupBox* make_histogram();
    QGroupBox* make_profile();

    const TerrainDocument* document() const;
    QString unit() const;
    HeightProfile::Direction chosen_direction() const;

    void cells_change();
    void catch_up();
    void show_statistics(const HeightStatistics& statistics);
    void say(const QString& text);

    void choose_number(int number);
    void draw_profile();
    void show_number();
    void show_line(const std::optional<ProfileLine>& line);
    void say_in_profile(const QString& text, bool has_plot);

    housekeeping::DocumentId m_document;
    bool m_is_counted = false; // the cells, as they are now
    bool m_is_drawn = false; // the profile
    std::map<housekeeping::DocumentId, CellPlace> m_places; // that the profiles lead through
    std::optional<ProfileLine> m_line; // of the profile as it is drawn
    StatisticsRun m_run;
    QTimer m_soon; // when what is going on now is over

    // Children.
    QLabel* m_p_hint;
    std::array<QLabel*, figures> m_figures{};
    HistogramPlot* m_p_histogram = nullptr;
    QLabel* m_p_no_histogram = nullptr;
    QComboBox* m_p_direction = nullptr;
    QSpinBox* m_p_number = nullptr;
    ProfilePlot* m_p_profile = nullptr;
    QLabel* m_p_profile_text = nullptr;
    // What holds those; filled when they are made, and therefore last.
    QGroupBox* m_p_figures;
    QGroupBox* m_p_distribution;
    QGroupBox* m_p_along;
};

} // namespace terrain
