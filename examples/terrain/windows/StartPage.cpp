#include "windows/StartPage.h"

#include "help/Bindings.h"
#include "windows/RecentFiles.h"

#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_picture = ":/tarq/Resources/tarqterrain64x64.png";
const double s_headline_size = 1.5; ///< in proportion to other texts
const int s_spacing = 12;
const int s_widest = 60; ///< characters

QLabel* make_picture()
{
    auto* const p_picture = new QLabel;
    p_picture->setPixmap(QPixmap(s_picture));
    return p_picture;
}

QLabel* make_headline(const QString& text)
{
    auto* const p_headline = new QLabel(text);
    QFont font = p_headline->font();
    font.setPointSizeF(font.pointSizeF() * s_headline_size);
    p_headline->setFont(font);
    return p_headline;
}

} // namespace

StartPage::StartPage(const RecentFiles& recent, QWidget* p_parent)
    : QWidget(p_parent)
    , m_recent(recent)
    , m_p_links(new QWidget)
{
    auto* const p_hint
        = new QLabel(tr("Open one with %1, or drop files here.")
                         .arg(key_binding(Deed::Open).keys.toString(QKeySequence::NativeText)));
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setSpacing(s_spacing);
    p_layout->addStretch();
    for (QWidget* const p_widget :
        {static_cast<QWidget*>(make_picture()), static_cast<QWidget*>(make_headline(tr("No raster is open"))),
            static_cast<QWidget*>(p_hint), m_p_links}) {
        p_layout->addWidget(p_widget, 0, Qt::AlignHCenter);
    }
    p_layout->addStretch();
    new QVBoxLayout(m_p_links);
    connect(&recent, &RecentFiles::changed, this, [this] {
        if (isVisible()) {
            list_recent();
        }
    });
}

void StartPage::showEvent(QShowEvent* p_event)
{
    list_recent(); // as other programs have left it
    QWidget::showEvent(p_event);
}

void StartPage::changeEvent(QEvent* p_event)
{
    QWidget::changeEvent(p_event);
    if (p_event->type() == QEvent::PaletteChange && isVisible()) {
        list_recent(); // a link keeps the colour that it was made with
    }
}

void StartPage::list_recent()
{
    for (QLabel* const p_old : m_p_links->findChildren<QLabel*>()) {
        p_old->hide();
        p_old->deleteLater(); // it may be what has been clicked on
    }
    std::vector<RecentFile> files = m_recent.list();
    files.resize(std::min(files.size(), static_cast<std::size_t>(most_links)));
    if (!files.empty()) {
        m_p_links->layout()->addWidget(new QLabel(tr("Or open one of these again:")));
    }
    for (const RecentFile& file : files) {
        m_p_links->layout()->addWidget(make_link(file.label, file.path));
    }
}

QLabel* StartPage::make_link(const QString& label, const QString& path)
{
    const QString text
        = fontMetrics().elidedText(label, Qt::ElideMiddle, s_widest * fontMetrics().averageCharWidth());
    auto* const p_link = new QLabel(QString("<a href=\"file\">%1</a>").arg(text.toHtmlEscaped()));
    p_link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    p_link->setToolTip(plain_tool_tip(QDir::toNativeSeparators(path)));
    connect(p_link, &QLabel::linkActivated, this, [this, path] {
        emit chosen(path);
        if (isVisible()) {
            list_recent(); // the file may have vanished
        }
    });
    return p_link;
}

} // namespace terrain
