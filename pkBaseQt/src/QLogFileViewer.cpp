#include <pkBaseQt/QLogFileViewer.h>

#include "LogTail.h"

#include <QtCore/QDir>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextDocumentFragment>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QVBoxLayout>

#include <utility>

namespace pkBase {

namespace {

const int s_interval = 1000; ///< milliseconds between two looks at the file
const QSize s_first_size(860, 560);
const int s_most_marks = 500; ///< found places that are marked; the screen holds fewer

} // namespace

QLogFileViewer::QLogFileViewer()
    : m_tail(std::make_unique<LogTail>(longest_text))
{
    setObjectName("QLogFileViewer");
    setWindowTitle(tr("Log File"));
    setAttribute(Qt::WA_QuitOnClose, false);
}

QLogFileViewer::~QLogFileViewer() = default;

pkSingleton<QLogFileViewer>& QLogFileViewer::get_instance()
{
    static pkSingleton<QLogFileViewer> s_holder(pkDestructionPhase(5), &QLogFileViewer::destroy_instance);
    return s_holder;
}

QLogFileViewer& QLogFileViewer::instance()
{
    return get_instance().get();
}

void QLogFileViewer::destroy_instance()
{
    get_instance().destroy();
}

// --- the window

/// Late, because most runs of a program end without anybody looking at the log.
void QLogFileViewer::build()
{
    if (m_p_text) {
        return;
    }
    setWindowTitle(tr("Log File")); // again: the program may have got its language since the start
    m_p_text = new QPlainTextEdit;
    m_p_text->setObjectName("text");
    m_p_text->setReadOnly(true);
    m_p_text->setUndoRedoEnabled(false);
    m_p_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_p_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_p_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_p_text->setAccessibleName(tr("Text of the log"));
    m_p_file = new QLabel(QDir::toNativeSeparators(m_path));
    m_p_file->setObjectName("file");
    m_p_file->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_p_file->setTextFormat(Qt::PlainText);
    m_p_file->setWordWrap(true);
    m_p_status = new QLabel;
    m_p_status->setObjectName("status");
    m_p_status->setTextFormat(Qt::PlainText);

    m_p_search = new QLineEdit;
    m_p_search->setObjectName("search");
    m_p_search->setClearButtonEnabled(true);
    m_p_search->setPlaceholderText(tr("Find text"));
    m_p_search->setAccessibleName(tr("Text to find"));
    m_p_match_case = new QCheckBox(tr("Match c&ase"));
    m_p_match_case->setObjectName("matchCase");
    auto* const p_next = new QPushButton(tr("&Next"));
    p_next->setObjectName("next");
    auto* const p_previous = new QPushButton(tr("&Previous"));
    p_previous->setObjectName("previous");
    m_p_follow = new QCheckBox(tr("&Follow the end"));
    m_p_follow->setObjectName("follow");
    m_p_follow->setToolTip(tr("Show new entries as they come, while the end of the log is in view"));
    m_p_follow->setChecked(true);
    auto* const p_copy = new QPushButton(tr("&Copy"));
    p_copy->setObjectName("copy");
    p_copy->setToolTip(tr("Copy the selected text, or all of it"));
    auto* const p_close = new QPushButton(tr("Close"));
    p_close->setObjectName("close");

    auto* const p_find_line = new QHBoxLayout;
    p_find_line->addWidget(m_p_search, 1);
    p_find_line->addWidget(p_previous);
    p_find_line->addWidget(p_next);
    p_find_line->addWidget(m_p_match_case);
    auto* const p_buttons = new QHBoxLayout;
    p_buttons->addWidget(m_p_follow);
    p_buttons->addWidget(m_p_status, 1);
    p_buttons->addWidget(p_copy);
    p_buttons->addWidget(p_close);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->addWidget(m_p_file);
    p_layout->addLayout(p_find_line);
    p_layout->addWidget(m_p_text, 1);
    p_layout->addLayout(p_buttons);
    if (!testAttribute(Qt::WA_Resized)) {
        resize(s_first_size);
    }

    m_p_timer = new QTimer(this);
    m_p_timer->setInterval(s_interval);
    connect(m_p_timer, &QTimer::timeout, this, &QLogFileViewer::refresh);
    connect(p_next, &QPushButton::clicked, this, &QLogFileViewer::find_next);
    connect(p_previous, &QPushButton::clicked, this, &QLogFileViewer::find_previous);
    connect(m_p_search, &QLineEdit::textChanged, this, &QLogFileViewer::mark_found);
    connect(m_p_search, &QLineEdit::textChanged, m_p_status, &QLabel::clear);
    connect(m_p_text->verticalScrollBar(), &QScrollBar::valueChanged, this, &QLogFileViewer::mark_found);
    connect(m_p_match_case, &QCheckBox::toggled, this, &QLogFileViewer::mark_found);
    connect(p_copy, &QPushButton::clicked, this, &QLogFileViewer::copy);
    connect(p_close, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_p_search, [this] {
        m_p_search->setFocus();
        m_p_search->selectAll();
    });
    connect(
        new QShortcut(QKeySequence::FindNext, this), &QShortcut::activated, this, &QLogFileViewer::find_next);
    connect(new QShortcut(QKeySequence::FindPrevious, this), &QShortcut::activated, this,
        &QLogFileViewer::find_previous);
    connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
}

void QLogFileViewer::present()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    refresh();
}

void QLogFileViewer::showEvent(QShowEvent* p_event)
{
    build();
    refresh();
    m_p_timer->start();
    QWidget::showEvent(p_event);
}

void QLogFileViewer::hideEvent(QHideEvent* p_event)
{
    if (m_p_timer) {
        m_p_timer->stop();
    }
    QWidget::hideEvent(p_event);
}

void QLogFileViewer::keyPressEvent(QKeyEvent* p_event)
{
    switch (p_event->key()) {
    case Qt::Key_Escape:
        close();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_p_search && m_p_search->hasFocus()) {
            find(p_event->modifiers() & Qt::ShiftModifier);
            return;
        }
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(p_event);
}

// --- the file

void QLogFileViewer::setPath(const QString& path)
{
    m_path = path;
    m_tail->setPath(path);
    if (m_p_text) {
        m_p_file->setText(QDir::toNativeSeparators(m_path));
        m_p_text->clear();
        refresh();
    }
}

QString QLogFileViewer::text() const
{
    return m_p_text ? m_p_text->toPlainText() : QString();
}

void QLogFileViewer::refresh()
{
    build();
    LogTail::Piece piece = m_tail->read();
    if (piece.change == LogTail::Change::Appended
        && m_p_text->document()->characterCount() + piece.text.size() > 2 * longest_text) {
        m_tail->restart(); // it has grown for long; what is shown is cut to the end again
        piece = m_tail->read();
    }
    switch (piece.change) {
    case LogTail::Change::None:
        break;
    case LogTail::Change::Missing:
        // What was read stays: it may be the last copy.
        m_missing = true;
        say(m_path.isEmpty() ? piece.error : tr("The log file cannot be read: %1").arg(piece.error));
        return;
    case LogTail::Change::Restarted:
        show_anew(piece.text, piece.skipped);
        break;
    case LogTail::Change::Appended:
        append(piece.text);
        break;
    }
    if (std::exchange(m_missing, false)) {
        say(QString()); // it is there again
    }
}

bool QLogFileViewer::is_at_end() const
{
    const QScrollBar* const p_bar = m_p_text->verticalScrollBar();
    return p_bar->value() == p_bar->maximum();
}

/// Whoever was reading further up starts at the top.
void QLogFileViewer::show_anew(const QString& text, long long skipped)
{
    const bool at_end = is_at_end();
    m_p_text->clear();
    if (skipped > 0) {
        append(tr("(The first %1 bytes of the file are not shown.)").arg(skipped) + '\n');
    }
    append(text);
    if (!at_end) {
        m_p_text->verticalScrollBar()->setValue(0);
    }
}

/// The view stays where it is, unless the end was in view and is to be followed.
void QLogFileViewer::append(const QString& text)
{
    QScrollBar* const p_bar = m_p_text->verticalScrollBar();
    const bool at_end = is_at_end();
    const int place = p_bar->value();
    QTextCursor selection = m_p_text->textCursor();
    const int selection_end = selection.selectionEnd();
    QTextCursor end(m_p_text->document()); // not the visible one, which may hold a selection
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    if (selection.hasSelection() && selection.selectionEnd() != selection_end) {
        const int start = selection.selectionStart();
        selection.setPosition(start); // it ended at the end of the text, and has grown with it
        selection.setPosition(selection_end, QTextCursor::KeepAnchor);
        m_p_text->setTextCursor(selection);
    }
    p_bar->setValue(m_p_follow->isChecked() && at_end ? p_bar->maximum() : place);
    mark_found();
}

// --- finding and copying

void QLogFileViewer::find_next()
{
    find(false);
}

void QLogFileViewer::find_previous()
{
    find(true);
}

void QLogFileViewer::find(bool backwards)
{
    build();
    const QString wanted = m_p_search->text();
    if (wanted.isEmpty()) {
        m_p_search->setFocus();
        return;
    }
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindBackward, backwards);
    flags.setFlag(QTextDocument::FindCaseSensitively, m_p_match_case->isChecked());
    const QTextDocument& document = *m_p_text->document();
    QTextCursor found = document.find(wanted, m_p_text->textCursor(), flags);
    const bool from_other_end = found.isNull();
    if (from_other_end) {
        QTextCursor other_end(m_p_text->document());
        other_end.movePosition(backwards ? QTextCursor::End : QTextCursor::Start);
        found = document.find(wanted, other_end, flags);
    }
    if (found.isNull()) {
        say(tr("\"%1\" was not found.").arg(wanted));
        return;
    }
    m_p_text->setTextCursor(found);
    mark_found();
    if (!from_other_end) {
        say(QString());
    } else {
        say(backwards ? tr("Went on from the end.") : tr("Went on from the beginning."));
    }
}

void QLogFileViewer::mark_found()
{
    const QString wanted = m_p_search->text();
    QList<QTextEdit::ExtraSelection> marks;
    if (!wanted.isEmpty()) {
        QTextDocument::FindFlags flags;
        flags.setFlag(QTextDocument::FindCaseSensitively, m_p_match_case->isChecked());
        QTextEdit::ExtraSelection mark;
        mark.format.setBackground(Qt::yellow);
        mark.format.setForeground(Qt::black);
        const QTextCursor bottom = m_p_text->cursorForPosition(m_p_text->viewport()->rect().bottomRight());
        mark.cursor = m_p_text->cursorForPosition(QPoint(0, 0));
        while (marks.size() < s_most_marks) {
            mark.cursor = m_p_text->document()->find(wanted, mark.cursor, flags);
            if (mark.cursor.isNull() || mark.cursor > bottom) {
                break;
            }
            marks.append(mark);
        }
    }
    m_p_text->setExtraSelections(marks);
}

void QLogFileViewer::copy()
{
    build();
    const QTextCursor cursor = m_p_text->textCursor();
    QGuiApplication::clipboard()->setText(
        cursor.hasSelection() ? cursor.selection().toPlainText() : m_p_text->toPlainText());
    say(cursor.hasSelection() ? tr("The selected text was copied.") : tr("The whole log was copied."));
}

void QLogFileViewer::say(const QString& text)
{
    m_p_status->setText(text);
}

} // namespace pkBase
