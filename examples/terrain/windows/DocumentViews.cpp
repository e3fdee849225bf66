#include "windows/DocumentViews.h"

#include "help/Bindings.h"
#include "views/TerrainView.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace terrain {

namespace {

const char* const s_picture = ":/tarq/Resources/tarqterrain64x64.png";
const double s_headline_size = 1.5; ///< in proportion to other texts

QWidget* make_start_page(QWidget* p_parent)
{
    auto* const p_page = new QWidget(p_parent);
    auto* const p_picture = new QLabel;
    p_picture->setPixmap(QPixmap(s_picture));
    auto* const p_headline = new QLabel(QObject::tr("No raster is open"));
    QFont font = p_headline->font();
    font.setPointSizeF(font.pointSizeF() * s_headline_size);
    p_headline->setFont(font);
    auto* const p_hint
        = new QLabel(QObject::tr("Open one with %1, or drop files here.")
                         .arg(key_binding(Deed::Open).keys.toString(QKeySequence::NativeText)));
    auto* const p_layout = new QVBoxLayout(p_page);
    p_layout->setSpacing(12);
    p_layout->addStretch();
    for (QLabel* const p_label : {p_picture, p_headline, p_hint}) {
        p_layout->addWidget(p_label, 0, Qt::AlignHCenter);
    }
    p_layout->addStretch();
    return p_page;
}

} // namespace

DocumentViews::DocumentViews(QWidget* p_parent)
    : QStackedWidget(p_parent)
    , m_p_start_page(make_start_page(this))
{
    addWidget(m_p_start_page);
}

TerrainView& DocumentViews::add(const housekeeping::DocumentId& document)
{
    auto* const p_view = new TerrainView(document);
    addWidget(p_view);
    m_views[document] = p_view;
    show_document(document);
    return *p_view;
}

void DocumentViews::remove(const housekeeping::DocumentId& document)
{
    const auto found = m_views.find(document);
    if (found == m_views.end()) {
        return;
    }
    if (currentWidget() == found->second) {
        setCurrentWidget(m_p_start_page);
    }
    delete found->second;
    m_views.erase(found);
}

void DocumentViews::show_document(const housekeeping::DocumentId& document)
{
    const auto found = m_views.find(document);
    setCurrentWidget(found == m_views.end() ? m_p_start_page : found->second);
    currentWidget()->setFocus();
}

void DocumentViews::refresh(const housekeeping::DocumentId& document)
{
    const auto found = m_views.find(document);
    if (found != m_views.end()) {
        found->second->refresh();
    }
}

TerrainView* DocumentViews::current() const
{
    return qobject_cast<TerrainView*>(currentWidget());
}

} // namespace terrain
