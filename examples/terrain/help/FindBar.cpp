#include "help/FindBar.h"

#include "windows/Icons.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace terrain {

namespace {

const int s_margin = 6;
const int s_line_width = 280;

} // namespace

FindBar::FindBar(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_line(new QLineEdit)
    , m_p_answer(new QLabel)
{
    m_p_line->setPlaceholderText(tr("Find in this page"));
    m_p_line->setAccessibleName(tr("Text to find"));
    m_p_line->setClearButtonEnabled(true);
    m_p_line->setMaximumWidth(s_line_width);
    m_p_answer->setTextFormat(Qt::PlainText);
    auto* const p_previous = new QPushButton(icon("find-previous"), tr("&Previous"));
    auto* const p_next = new QPushButton(icon("find-next"), tr("&Next"));
    auto* const p_close = new QPushButton(icon("dismiss"), tr("Close"));
    auto* const p_layout = new QHBoxLayout(this);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_line, 1);
    p_layout->addWidget(p_previous);
    p_layout->addWidget(p_next);
    p_layout->addWidget(m_p_answer, 1);
    p_layout->addWidget(p_close);
    hide();
    connect(m_p_line, &QLineEdit::textChanged, this, &FindBar::text_changed);
    connect(p_previous, &QPushButton::clicked, this, &FindBar::previous);
    connect(p_next, &QPushButton::clicked, this, &FindBar::next);
    connect(p_close, &QPushButton::clicked, this, &QWidget::hide);
}

QString FindBar::text() const
{
    return m_p_line->text();
}

void FindBar::say(const QString& text)
{
    m_p_answer->setText(text);
}

void FindBar::ask()
{
    show();
    m_p_line->setFocus();
    m_p_line->selectAll();
}

void FindBar::keyPressEvent(QKeyEvent* p_event)
{
    const bool wants_more = p_event->key() == Qt::Key_Return || p_event->key() == Qt::Key_Enter;
    if (wants_more && (p_event->modifiers() & Qt::ShiftModifier)) {
        emit previous();
    } else if (wants_more) {
        emit next();
    } else {
        QWidget::keyPressEvent(p_event);
    }
}

void FindBar::hideEvent(QHideEvent* p_event)
{
    QWidget::hideEvent(p_event);
    if (!p_event->spontaneous()) {
        emit left();
    }
}

} // namespace terrain
