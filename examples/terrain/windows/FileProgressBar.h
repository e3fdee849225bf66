#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QProgressBar;
class QToolButton;

namespace terrain {

/// How far reading or writing a file has come, with a button to cancel it; for a status bar. Main thread.
class FileProgressBar : public QWidget
{
    Q_OBJECT

public:
    explicit FileProgressBar(QWidget* p_parent = nullptr);

    /// Shows that something has begun. @param name what
    void begin(const QString& name);
    void percentage(int percentage);
    /// As a click on the button.
    void cancel();

    QProgressBar& bar() const { return *m_p_bar; }
    QToolButton& cancel_button() const { return *m_p_cancel; }

signals:
    void cancelled();

private:
    // Children.
    QLabel* m_p_name;
    QProgressBar* m_p_bar;
    QToolButton* m_p_cancel;
};

} // namespace terrain
