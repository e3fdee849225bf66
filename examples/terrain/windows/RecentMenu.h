#pragma once

#include <QtWidgets/QMenu>

namespace terrain {

class RecentFiles;

/// The menu of the rasters that were opened or written last, the newest first. It is filled when it is about
/// to show; whoever shows the entry that opens it calls fill() before, as it is disabled while there are
/// none. Main thread.
class RecentMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param files what it lists; must outlive the menu
    explicit RecentMenu(const RecentFiles& files, QWidget* p_parent = nullptr);

    void fill();

signals:
    void chosen(const QString& path);

private:
    void add(int number, const QString& label, const QString& path);

    const RecentFiles& m_files;
};

} // namespace terrain
