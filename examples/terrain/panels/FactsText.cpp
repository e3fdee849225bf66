#include "panels/FactsText.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlockFormat>
#include <QtGui/QTextCursor>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const int s_width = 280; ///< pixels, at first
const int s_fewest_lines = 4;
const int s_gap = 14; ///< pixels between names and texts
const double s_line_gap = 3; ///< pixels

} // namespace

FactsText::FactsText(QWidget* p_parent)
    : QTextEdit(p_parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setTabChangesFocus(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false); // it stands on the panel
    document()->setDocumentMargin(0);
}

void FactsText::show_facts(const std::vector<Fact>& facts)
{
    if (facts != m_facts) {
        m_facts = facts;
        write();
    }
}

/// Names and texts in two columns, which are copied with a tab between them.
void FactsText::write()
{
    int names = 0;
    for (const Fact& fact : m_facts) {
        names = std::max(names, fontMetrics().horizontalAdvance(fact.name));
    }
    const double indent = names + s_gap;
    QTextBlockFormat format;
    format.setLayoutDirection(layoutDirection());
    isRightToLeft() ? format.setRightMargin(indent) : format.setLeftMargin(indent); // the names' side
    format.setTextIndent(-indent);
    format.setTabPositions({QTextOption::Tab(indent, QTextOption::LeftTab)});
    format.setBottomMargin(s_line_gap);
    clear();
    QTextCursor cursor(document());
    for (std::size_t i = 0; i < m_facts.size(); ++i) {
        if (i > 0) {
            cursor.insertBlock();
        }
        cursor.setBlockFormat(format);
        cursor.insertText(m_facts[i].name + '\t' + m_facts[i].text);
    }
    fit_height();
}

void FactsText::fit_height()
{
    const int height = std::max(static_cast<int>(std::ceil(document()->size().height())), 1);
    if (height != maximumHeight()) {
        setMaximumHeight(height);
        updateGeometry();
    }
}

bool FactsText::event(QEvent* p_event)
{
    if (p_event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(p_event);
        if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
            p_event->ignore();
            return false;
        }
    }
    return QTextEdit::event(p_event);
}

void FactsText::changeEvent(QEvent* p_event)
{
    QTextEdit::changeEvent(p_event);
    if (p_event->type() == QEvent::FontChange) {
        write();
    }
}

void FactsText::resizeEvent(QResizeEvent* p_event)
{
    QTextEdit::resizeEvent(p_event);
    fit_height();
}

QSize FactsText::sizeHint() const
{
    return {s_width, maximumHeight()};
}

QSize FactsText::minimumSizeHint() const
{
    return {0, std::min(s_fewest_lines * fontMetrics().lineSpacing(), maximumHeight())};
}

} // namespace terrain
