#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QVBoxLayout;

namespace terrain {

class RecentFiles;

/// What the window shows without a document: how to open one, and the newest of the recent rasters. Main
/// thread.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    static constexpr int most_links = 5;

    /// @param recent what it lists; must outlive the page
    explicit StartPage(const RecentFiles& recent, QWidget* p_parent = nullptr);

signals:
    /// The user wants to open one of the rasters.
    void chosen(const QString& path);

protected:
    void changeEvent(QEvent* p_event) override;
    void showEvent(QShowEvent* p_event) override;

private:
    void list_recent();
    QLabel* make_link(const QString& label, const QString& path);

    const RecentFiles& m_recent;
    QWidget* m_p_links; // a child
};

} // namespace terrain
