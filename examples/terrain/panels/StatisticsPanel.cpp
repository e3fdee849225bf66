#include "panels/StatisticsPanel.h"

#include "documents/Raster.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "language/NumberText.h"
#include "language/UnitText.h"
#include "panels/HistogramPlot.h"
#include "panels/ProfilePlot.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QEvent>
#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSpinBox>

namespace terrain {

namespace {

const int s_margin = 6;
const int s_line_gap = 2;
const int s_narrowest = 220; ///< pixels
const int s_digits = 6; ///< of heights
const int s_no_number = -1; ///< while there is no profile

QString height_text(double height)
{
    return number_text(height, 'g', s_digits);
}

QString count_text(std::size_t count)
{
    return QLocale().toString(static_cast<qulonglong>(count));
}

/// A text between other things, as long as it likes.
QLabel* make_text()
{
    auto* const p_label = new QLabel;
    p_label->setWordWrap(true);
    p_label->setTextFormat(Qt::PlainText);
    return p_label;
}

/// The cell of a raster through which the profile of another number leads.
CellPlace moved(CellPlace place, HeightProfile::Direction along, int number)
{
    (along == HeightProfile::Direction::Row ? place.row : place.column) = number;
    return place;
}

bool is_in(const CellPlace& place, const Raster& raster)
{
    return place.column < raster.columns && place.row < raster.rows;
}

} // namespace

// --- making the panel

StatisticsPanel::StatisticsPanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_document(housekeeping::DocumentId::null())
    , m_p_hint(make_text())
    , m_p_figures(make_figures())
    , m_p_distribution(make_histogram())
    , m_p_along(make_profile())
{
    setWindowTitle(tr("Statistics"));
    setMinimumWidth(s_narrowest);
    m_p_hint->setAlignment(Qt::AlignCenter);
    auto* const p_content = new QWidget;
    auto* const p_layout = new QVBoxLayout(p_content);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_hint, 1);
    p_layout->addWidget(m_p_figures);
    p_layout->addWidget(m_p_distribution, 1);
    p_layout->addWidget(m_p_along, 1);
    auto* const p_area = new QScrollArea;
    p_area->setAccessibleName(windowTitle());
    p_area->setFrameShape(QFrame::NoFrame);
    p_area->setWidgetResizable(true);
    p_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    p_area->setWidget(p_content);
    auto* const p_outer = new QVBoxLayout(this);
    p_outer->setContentsMargins(0, 0, 0, 0);
    p_outer->addWidget(p_area);

    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &StatisticsPanel::catch_up);
    connect(&m_run, &StatisticsRun::finished, this, &StatisticsPanel::show_statistics);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    say(tr("No document is open."));
}

QGroupBox* StatisticsPanel::make_figures()
{
    auto* const p_group = new QGroupBox(tr("Heights"));
    auto* const p_form = new QFormLayout(p_group);
    p_form->setVerticalSpacing(s_line_gap);
    p_form->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    const std::array<QString, figures> names = {tr("Cells"), tr("Without data"), tr("Lowest"), tr("Highest"),
        tr("Mean"), tr("Median"), tr("Std. deviation")};
    for (std::size_t i = 0; i < figures; ++i) {
        m_figures[i] = new QLabel;
        m_figures[i]->setAccessibleName(names[i]);
        m_figures[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        p_form->addRow(names[i], m_figures[i]);
    }
    figure(Deviation).setAccessibleName(tr("Standard deviation"));
    figure(Deviation).setToolTip(
        tr("Standard deviation of all heights, not an estimate from a part of them"));
    return p_group;
}

QGroupBox* StatisticsPanel::make_histogram()
{
    auto* const p_group = new QGroupBox(tr("Distribution"));
    m_p_histogram = new HistogramPlot;
    m_p_no_histogram = make_text();
    m_p_no_histogram->setText(tr("These heights cannot be drawn."));
    auto* const p_layout = new QVBoxLayout(p_group);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_histogram);
    p_layout->addWidget(m_p_no_histogram);
    m_p_no_histogram->hide();
    return p_group;
}

QGroupBox* StatisticsPanel::make_profile()
{
    auto* const p_group = new QGroupBox(tr("Profile"));
    m_p_direction = new QComboBox;
    m_p_direction->addItem(tr("Row"));
    m_p_direction->addItem(tr("Column"));
    m_p_direction->setAccessibleName(tr("Direction of the profile"));
    m_p_direction->setToolTip(tr("A row is drawn from left to right, a column from the top down"));
    m_p_number = new QSpinBox;
    m_p_number->setAccessibleName(tr("Number of the row or column"));
    m_p_number->setToolTip(tr("The row or column of the profile; a click on the map chooses it too"));
    m_p_number->setSpecialValueText(tr("none"));
    m_p_number->setMinimum(s_no_number);
    m_p_number->setKeyboardTracking(false);
    m_p_profile = new ProfilePlot;
    m_p_profile_text = make_text();
    auto* const p_line = new QHBoxLayout;
    p_line->addWidget(m_p_direction, 1);
    p_line->addWidget(m_p_number);
    auto* const p_layout = new QVBoxLayout(p_group);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addLayout(p_line);
    p_layout->addWidget(m_p_profile, 1);
    p_layout->addWidget(m_p_profile_text);
    connect(m_p_direction, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &StatisticsPanel::draw_profile);
    m_p_profile->installEventFilter(this);
    connect(m_p_profile, &ProfilePlot::pointed, this, &StatisticsPanel::point_at);
    connect(m_p_number, QOverload<int>::of(&QSpinBox::valueChanged), this, &StatisticsPanel::choose_number);
    return p_group;
}

QSize StatisticsPanel::sizeHint() const
{
    return {380, 640};
}

// --- following the document

void StatisticsPanel::show_document(const housekeeping::DocumentId& document)
{
    if (document != m_document) {
        m_document = document;
        cells_change();
        for (QLabel* const p_figure : m_figures) {
            p_figure->clear();
        }
        m_p_profile->clear();
        show_line({});
        say(m_document == housekeeping::DocumentId::null() ? tr("No document is open.") : tr("Counting…"));
    }
    m_soon.start(); // a new document gets its cells after it has become current
}

void StatisticsPanel::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    if (message.doc_change_type() == DocumentMessage::Destroyed) {
        m_places.erase(message.id());
        if (message.id() == m_document) {
            show_document(housekeeping::DocumentId::null());
        }
    } else if (message.id() == m_document
        && (message.doc_change_type() == DocumentMessage::Busy
            || message.doc_change_type() == DocumentMessage::Idle)) {
        cells_change();
        m_soon.start();
    }
}

/// Nobody reads the cells any more when this returns.
void StatisticsPanel::cells_change()
{
    m_run.stop();
    m_is_counted = false;
    m_is_drawn = false;
}

bool StatisticsPanel::is_up_to_date() const
{
    return !m_soon.isActive() && !m_run.is_running()
        && (m_document == housekeeping::DocumentId::null() || (m_is_counted && m_is_drawn));
}

void StatisticsPanel::showEvent(QShowEvent* p_event)
{
    QWidget::showEvent(p_event);
    m_soon.start();
}

/// Counts and draws what has changed, if anybody is looking and nobody is at work on the cells.
void StatisticsPanel::catch_up()
{
    if (!isVisible() || !document()
        || housekeeping::DocumentManager::const_instance().document_busy(m_document)) {
        return;
    }
    if (!m_is_counted && !m_run.is_running()) {
        m_run.start(document()->terrain().raster().cells);
    }
    if (!m_is_drawn) {
        draw_profile();
    }
}

const TerrainDocument* StatisticsPanel::document() const
{
    const auto& manager = housekeeping::DocumentManager::const_instance();
    return manager.document_exists(m_document)
        ? dynamic_cast<const TerrainDocument*>(&manager.document_from_id(m_document))
        : nullptr;
}

QString StatisticsPanel::unit() const
{
    const TerrainDocument* const p_document = document();
    return p_document ? height_unit_text(p_document->datasource()) : QString();
}

// --- figures and distribution

void StatisticsPanel::show_statistics(const HeightStatistics& statistics)
{
    m_is_counted = true;
    if (statistics.heights() == 0) {
        say(document()->terrain().empty() || statistics.cells > 0
                ? tr("The raster has no heights.")
                : tr("There is not enough memory to count the heights."));
        return;
    }
    say(QString());
    m_p_figures->setTitle(unit().isEmpty() ? tr("Heights") : tr("Heights in %1").arg(unit()));
    figure(Cells).setText(count_text(statistics.cells));
    figure(WithoutData).setText(count_text(statistics.without_data));
    figure(Lowest).setText(height_text(statistics.lowest));
    figure(Highest).setText(height_text(statistics.highest));
    figure(Mean).setText(height_text(statistics.mean));
    figure(Median).setText(height_text(statistics.median));
    figure(Deviation).setText(height_text(statistics.deviation));
    const bool is_drawn = m_p_histogram->show_statistics(statistics, unit());
    m_p_histogram->setVisible(is_drawn);
    m_p_no_histogram->setVisible(!is_drawn);
}

/// Says something in place of all else; nothing to show that.
void StatisticsPanel::say(const QString& text)
{
    m_p_hint->setText(text);
    m_p_hint->setVisible(!text.isEmpty());
    for (QWidget* const p_part : {m_p_figures, m_p_distribution, m_p_along}) {
        p_part->setVisible(text.isEmpty());
    }
}

// --- the profile

HeightProfile::Direction StatisticsPanel::chosen_direction() const
{
    return m_p_direction->currentIndex() == 0 ? HeightProfile::Direction::Row
                                              : HeightProfile::Direction::Column;
}

void StatisticsPanel::show_profile(const housekeeping::DocumentId& document, const CellPlace& through)
{
    m_places[document] = through;
    if (document == m_document) {
        m_is_drawn = false;
        m_soon.start();
    }
}

void StatisticsPanel::choose_number(int number)
{
    const TerrainDocument* const p_document = document();
    if (!p_document) {
        return;
    }
    if (number == s_no_number) {
        m_places.erase(m_document);
    } else {
        const Raster& raster = p_document->terrain().raster();
        const auto found = m_places.find(m_document);
        const CellPlace before
            = found == m_places.end() ? CellPlace{raster.columns / 2, raster.rows / 2} : found->second;
        m_places[m_document] = moved(before, chosen_direction(), number);
    }
    draw_profile();
}

void StatisticsPanel::draw_profile()
{
    m_is_drawn = false;
    if (!document() || housekeeping::DocumentManager::const_instance().document_busy(m_document)) {
        return; // until it is idle
    }
    m_is_drawn = true;
    const Raster& raster = document()->terrain().raster();
    if (m_places.count(m_document) > 0 && !is_in(m_places[m_document], raster)) {
        m_places.erase(m_document); // the raster has become smaller
    }
    show_number();
    const auto found = m_places.find(m_document);
    if (found == m_places.end()) {
        say_in_profile(tr("Click on the map, or choose a number, for a profile."), false);
        show_line({});
        return;
    }
    const CellPlace& place = found->second;
    const HeightProfile profile(raster, place, chosen_direction());
    if (!m_p_profile->show_profile(profile, unit())) {
        say_in_profile(
            profile.has_heights ? tr("These heights cannot be drawn.") : tr("No heights here."), false);
        show_line({});
        return;
    }
    const double height = raster.cell(place.column, place.row);
    say_in_profile(tr("Column %1, row %2: %3")
                       .arg(QString::number(place.column), QString::number(place.row),
                           is_no_data(height) ? tr("no data") : height_text(height) + ' ' + unit()),
        true);
    const bool is_row = chosen_direction() == HeightProfile::Direction::Row;
    show_line(ProfileLine{is_row, place.column, place.row, {}});
}

// --- where the profile is on the map

void StatisticsPanel::show_line(const std::optional<ProfileLine>& line)
{
    m_line = line;
    emit profile_line_changed();
}

std::optional<ProfileLine> StatisticsPanel::profile_line() const
{
    return m_p_profile->isVisible() ? m_line : std::nullopt;
}

void StatisticsPanel::point_at(const std::optional<int>& place)
{
    if (m_line && m_line->pointed != place) {
        m_line->pointed = place;
        m_p_profile->show_pointed(place);
        emit profile_line_changed();
    }
}

bool StatisticsPanel::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_event->type() == QEvent::Show || p_event->type() == QEvent::Hide) {
        emit profile_line_changed();
    }
    return QWidget::eventFilter(p_watched, p_event);
}

/// Brings the numbers in step with the place.
void StatisticsPanel::show_number()
{
    const QSignalBlocker blocker(m_p_number);
    const Raster& raster = document()->terrain().raster();
    const bool is_row = chosen_direction() == HeightProfile::Direction::Row;
    m_p_number->setMaximum((is_row ? raster.rows : raster.columns) - 1);
    const auto found = m_places.find(m_document);
    if (found == m_places.end()) {
        m_p_number->setValue(s_no_number);
    } else {
        m_p_number->setValue(is_row ? found->second.row : found->second.column);
    }
}

void StatisticsPanel::say_in_profile(const QString& text, bool has_plot)
{
    m_p_profile_text->setText(text);
    m_p_profile->setVisible(has_plot);
}

} // namespace terrain
