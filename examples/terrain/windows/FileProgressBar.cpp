#include "windows/FileProgressBar.h"

#include "windows/Icons.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QToolButton>

namespace terrain {

namespace {

const int s_bar_width = 180; ///< pixels

} // namespace

FileProgressBar::FileProgressBar(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_name(new QLabel)
    , m_p_bar(new QProgressBar)
    , m_p_cancel(new QToolButton)
{
    m_p_name->setTextFormat(Qt::PlainText);
    m_p_bar->setRange(0, 100);
    m_p_bar->setFixedWidth(s_bar_width);
    m_p_bar->setAccessibleName(tr("Progress of the file"));
    m_p_cancel->setIcon(icon("cancel"));
    m_p_cancel->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_p_cancel->setAutoRaise(true);
    m_p_cancel->setToolTip(tr("Stop reading or writing the file (Esc)"));
    connect(m_p_cancel, &QToolButton::clicked, this, &FileProgressBar::cancel);
    auto* const p_layout = new QHBoxLayout(this);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(m_p_name);
    p_layout->addWidget(m_p_bar);
    p_layout->addWidget(m_p_cancel);
}

void FileProgressBar::begin(const QString& name)
{
    m_p_name->setText(name);
    m_p_bar->setValue(0);
    m_p_cancel->setEnabled(true);
    m_p_cancel->setText(tr("Cancel"));
    show();
}

void FileProgressBar::percentage(int percentage)
{
    m_p_bar->setValue(percentage);
}

void FileProgressBar::cancel()
{
    m_p_cancel->setEnabled(false);
    m_p_cancel->setText(tr("Cancelling…"));
    emit cancelled();
}

} // namespace terrain
