#include "windows/RecentMenu.h"

#include "windows/Icons.h"
#include "windows/RecentFiles.h"

#include <QtCore/QDir>

namespace terrain {

namespace {

const int s_last_mnemonic = 9;
const int s_widest = 70; ///< characters

} // namespace

RecentMenu::RecentMenu(const RecentFiles& files, QWidget* p_parent)
    : QMenu(tr("Open &Recent"), p_parent)
    , m_files(files)
{
    setIcon(terrain::icon("recent"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
    fill();
}

void RecentMenu::fill()
{
    clear();
    int number = 0;
    for (const RecentFile& file : m_files.list()) {
        add(++number, file.label, file.path);
    }
    menuAction()->setEnabled(number > 0);
}

void RecentMenu::add(int number, const QString& label, const QString& path)
{
    QString text
        = fontMetrics().elidedText(label, Qt::ElideMiddle, s_widest * fontMetrics().averageCharWidth());
    text.replace("&", "&&");
    QAction* const p_action = addAction(terrain::icon("document"),
        QString("%1%2 %3").arg(number <= s_last_mnemonic ? "&" : "", QString::number(number), text));
    const QString native = QDir::toNativeSeparators(path);
    p_action->setToolTip(plain_tool_tip(native));
    p_action->setStatusTip(native);
    connect(p_action, &QAction::triggered, this, [this, path] { emit chosen(path); });
}

} // namespace terrain
