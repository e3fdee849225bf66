#include "preferences/ProgramChooser.h"

#include "windows/Icons.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

namespace terrain {

namespace {

const int s_columns_of_field = 2;

/// What is wrong with @p path; empty if nothing.
QString complaint_about(const QString& path)
{
    if (path.isEmpty()) {
        return {};
    }
    const QFileInfo file(path);
    if (file.isRelative()) { // it would mean another program in each folder
        return ProgramChooser::tr("Give the whole path, from the root folder on.");
    }
    if (!file.exists()) {
        return ProgramChooser::tr("There is no such file.");
    }
    if (!file.isFile()) {
        return ProgramChooser::tr("This is a folder, not a program.");
    }
    if (!file.isExecutable()) {
        return ProgramChooser::tr("This file is no program that you may run.");
    }
    return {};
}

} // namespace

ProgramChooser::ProgramChooser(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_edit(new QLineEdit)
    , m_p_sign(new QLabel)
    , m_p_complaint(new QLabel)
{
    auto* const p_button = new QPushButton(icon("open"), tr("&Browse…"));
    p_button->setObjectName("browse");
    p_button->setAutoDefault(false);
    p_button->setToolTip(tr("Look for the program"));
    m_p_complaint->setTextFormat(Qt::PlainText);
    m_p_complaint->setWordWrap(true);
    auto* const p_layout = new QGridLayout(this);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(m_p_edit, 0, 0, 1, s_columns_of_field);
    p_layout->addWidget(p_button, 0, s_columns_of_field);
    p_layout->addWidget(m_p_sign, 1, 0, Qt::AlignTop);
    p_layout->addWidget(m_p_complaint, 1, 1, 1, s_columns_of_field);
    p_layout->setColumnStretch(1, 1);
    setFocusProxy(m_p_edit);
    setFocusPolicy(Qt::StrongFocus); // or the label's mnemonic would pass by
    say(QString());
    connect(p_button, &QPushButton::clicked, this, &ProgramChooser::choose);
    connect(m_p_edit, &QLineEdit::editingFinished, this, &ProgramChooser::check);
    connect(m_p_edit, &QLineEdit::textChanged, this, [this] { say(QString()); });
}

QString ProgramChooser::path() const
{
    return m_p_edit->text().trimmed();
}

void ProgramChooser::set_path(const QString& path)
{
    m_p_edit->setText(path);
    check();
}

bool ProgramChooser::check()
{
    const QString complaint = complaint_about(path());
    say(complaint);
    return complaint.isEmpty();
}

QString ProgramChooser::complaint() const
{
    return m_p_complaint->text();
}

void ProgramChooser::choose()
{
    const QFileInfo file(path());
    // Not with an event loop of its own, in which the page might be deleted.
    auto* const p_dialog = new QFileDialog(this, m_title);
    p_dialog->setAttribute(Qt::WA_DeleteOnClose);
    p_dialog->setFileMode(QFileDialog::ExistingFile);
    p_dialog->setDirectory(file.isAbsolute() ? file.absolutePath() : QDir::rootPath());
    if (file.isFile()) {
        p_dialog->selectFile(file.fileName());
    }
    connect(p_dialog, &QFileDialog::fileSelected, this, &ProgramChooser::set_path);
    p_dialog->open();
}

void ProgramChooser::say(const QString& complaint)
{
    const int size = fontMetrics().height();
    m_p_sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size));
    m_p_sign->setVisible(!complaint.isEmpty());
    m_p_complaint->setText(complaint);
    m_p_complaint->setVisible(!complaint.isEmpty());
    m_p_edit->setAccessibleDescription(complaint);
}

} // namespace terrain
