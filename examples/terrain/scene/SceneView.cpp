#include "scene/SceneView.h"

#include "documents/HeightUnit.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "language/NumberText.h"
#include "preferences/PreferencesChanged.h"
#include "scene/Graphics.h"
#include "scene/ReliefScene.h"
#include "scene/SceneBar.h"
#include "scene/SceneCanvas.h"
#include "scene/SceneOverlay.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <exception>
#include <utility>

namespace terrain {

namespace {

const double s_exaggeration_step = 1.25;
const int s_digits = 3; ///< of an exaggeration

const housekeeping::ApplicationManager& preferences()
{
    return housekeeping::ApplicationManager::const_instance();
}

HeightMeaning meaning_of(const TerrainDocument& document)
{
    HeightMeaning meaning;
    if (const auto source = document.datasource()) {
        meaning.depth = source->z_sign() == housekeeping::DataSource::Depth;
        meaning.metres = source->inTime() ? 0 : metres_per(source->z_units());
    }
    return meaning;
}

Sampling preferred_sampling()
{
    return preferences().hqDownsample() ? Sampling::Mean : Sampling::Nearest;
}

HillShade::Look look_of(const MapLayers& layers)
{
    return {layers.colours, layers.relief};
}

} // namespace

SceneView::SceneView(const housekeeping::DocumentId& document, QWidget* p_parent)
    : QWidget(p_parent)
    , m_document(document)
    , m_watch(document, [this](const CellChanges& changes) { refresh(changes); })
    , m_p_bar(new SceneBar)
{
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->setSpacing(0);
    p_layout->addWidget(m_p_bar);
    m_p_bar->setEnabled(false); // until there is a scene
    setAccessibleName(tr("3D view"));
    make_canvas();
    connect(m_p_bar, &SceneBar::exaggeration_chosen, this, [this](double chosen) { exaggeration(chosen); });
    connect(m_p_bar, &SceneBar::default_chosen, this, [this] {
        if (m_scene) {
            exaggeration(m_scene->grid().space().default_exaggeration());
        }
    });
    connect(&m_navigator, &SceneNavigator::mode_changed, this, &SceneView::switched);
    housekeeping::ApplicationMessage::subscribe(this, Qt::AutoConnection);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    show_state();
}

SceneView::~SceneView()
{
    delete m_p_canvas;
}

void SceneView::make_canvas()
{
    QWidget* p_picture = nullptr;
    if (has_scene_graphics()) {
        m_p_canvas = new SceneCanvas(m_navigator);
        p_picture = m_p_canvas;
        show_background();
    } else {
        auto* const p_text = new QLabel(
            tr("This view needs OpenGL 2, which there is not on this screen.\nThe map works without it."));
        p_text->setAlignment(Qt::AlignCenter);
        p_text->setWordWrap(true);
        p_text->setFocusPolicy(Qt::StrongFocus);
        m_p_bar->hide();
        p_picture = p_text;
    }
    layout()->addWidget(p_picture);
    static_cast<QVBoxLayout*>(layout())->setStretchFactor(p_picture, 1);
    setFocusProxy(p_picture);
}

// --- following the document

/// Null if it has gone, or a command may change the cells in another thread.
const TerrainDocument* SceneView::free_document() const
{
    const auto& manager = housekeeping::DocumentManager::const_instance();
    return manager.document_exists(m_document) && !manager.document_busy(m_document)
        ? dynamic_cast<const TerrainDocument*>(&manager.document_from_id(m_document))
        : nullptr;
}

void SceneView::refresh(const CellChanges& changes)
{
    m_pending.add(changes);
    catch_up();
}

/// Does what can fail. If it does, the view says why, and starts over when it catches up next.
template <typename Work>
bool SceneView::attempt(Work work)
{
    QString problem;
    try {
        work();
        return true;
    } catch (const tarqa::Exception& exception) {
        problem = QString::fromUtf8(exception.what());
    } catch (const std::exception& exception) {
        problem = QString::fromUtf8(exception.what());
    }
    m_pending = CellChanges::everything();
    m_p_canvas->overlay().show_problem(problem);
    return false;
}

void SceneView::catch_up()
{
    const TerrainDocument* const p_document = free_document();
    if (!m_p_canvas || !isVisible() || !p_document || is_up_to_date()) {
        return;
    }
    const bool drawn = attempt([this, p_document] { draw(*p_document); });
    if (drawn) {
        m_p_canvas->overlay().show_problem(m_scene->has_heights() ? "" : tr("There are no heights to show."));
    }
    show_state();
}

bool SceneView::is_up_to_date() const
{
    return m_scene && !m_pending.any() && m_scene->sampling() == preferred_sampling();
}

void SceneView::draw(const TerrainDocument& document)
{
    const TerrainModel& model = document.terrain();
    const CellChanges changes = std::exchange(m_pending, CellChanges());
    if (m_scene) {
        if (m_scene->sampling() != preferred_sampling()) {
            m_scene->sampling(model.raster(), preferred_sampling());
        }
        m_scene->refresh(model.raster(), model.mesh(), changes);
        apply_layers(*m_scene);
        m_navigator.follow_scene();
        return;
    }
    auto scene = std::make_unique<ReliefScene>(
        model.raster(), model.mesh(), meaning_of(document), preferred_sampling(), look_of(m_layers));
    apply_layers(*scene);
    m_scene = std::move(scene);
    m_p_canvas->show(m_scene.get());
    m_navigator.show(m_scene.get());
}

void SceneView::apply_layers(ReliefScene& scene) const
{
    scene.show(look_of(m_layers));
    scene.shows_mesh(m_layers.triangulation);
}

void SceneView::handle_message(housekeeping::DocumentMessage& message)
{
    if (message.doc_change_type() == housekeeping::DocumentMessage::Idle && message.id() == m_document) {
        catch_up();
    }
}

void SceneView::handle_message(housekeeping::ApplicationMessage& message)
{
    if (!is_preferences_changed(message)) {
        return;
    }
    if (!preferences().animateCameraJumps()) {
        m_navigator.stop_gliding();
    }
    show_background();
    catch_up(); // another sampling
}

// --- what is shown

void SceneView::show_background()
{
    if (m_p_canvas) {
        const QColor colour = preferences().viewBackgroundColour();
        // Before the preferences were read there is none.
        m_p_canvas->background(colour.isValid() ? colour : palette().color(QPalette::Base));
    }
}

QString SceneView::note() const
{
    if (!m_scene || !m_scene->has_heights()) {
        return {};
    }
    const QString times = number_text(m_scene->exaggeration(), 'g', s_digits);
    return m_scene->is_to_scale() ? tr("vertical exaggeration %1×").arg(times)
                                  : tr("heights not to scale, %1×").arg(times);
}

void SceneView::show_state()
{
    const bool possible = m_scene && m_scene->has_heights();
    m_p_bar->setEnabled(possible);
    if (m_scene) {
        m_p_bar->show_exaggeration(
            m_scene->exaggeration(), m_scene->least_exaggeration(), m_scene->most_exaggeration());
    }
    if (m_p_canvas) {
        m_p_canvas->overlay().show_note(note());
        m_p_canvas->update();
    }
    emit switched();
}

void SceneView::show(const MapLayers& layers)
{
    m_layers = layers;
    if (!m_scene) {
        return;
    }
    if (attempt([this] { apply_layers(*m_scene); })) {
        catch_up(); // if something failed before
    }
    show_state();
}

double SceneView::exaggeration() const
{
    return m_scene ? m_scene->exaggeration() : 1;
}

void SceneView::exaggeration(double exaggeration)
{
    if (m_scene) {
        m_scene->exaggeration(exaggeration);
        m_navigator.follow_scene();
        show_state();
    }
}

void SceneView::exaggerate_more()
{
    exaggeration(exaggeration() * s_exaggeration_step);
}

void SceneView::exaggerate_less()
{
    exaggeration(exaggeration() / s_exaggeration_step);
}

// --- events

void SceneView::showEvent(QShowEvent* p_event)
{
    QWidget::showEvent(p_event);
    catch_up();
}

void SceneView::hideEvent(QHideEvent* p_event)
{
    m_navigator.release_all();
    m_navigator.stop_gliding();
    QWidget::hideEvent(p_event);
}

void SceneView::changeEvent(QEvent* p_event)
{
    if (p_event->type() == QEvent::PaletteChange) {
        show_background();
    }
    QWidget::changeEvent(p_event);
}

} // namespace terrain
