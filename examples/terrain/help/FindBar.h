#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QLineEdit;

namespace terrain {

/// The line below a page in which people enter what they look for. Hidden until it is asked for. Main thread.
class FindBar : public QWidget
{
    Q_OBJECT

public:
    explicit FindBar(QWidget* p_parent = nullptr);

    QString text() const;
    QLineEdit& line() const { return *m_p_line; }
    /// What stands behind the line.
    void say(const QString& text);

public slots:
    /// Shows the bar and lets people write.
    void ask();

signals:
    /// Another text was entered.
    void text_changed();
    void next();
    void previous();
    /// The bar was hidden.
    void left();

protected:
    void keyPressEvent(QKeyEvent* p_event) override;
    void hideEvent(QHideEvent* p_event) override;

private:
    // Children.
    QLineEdit* m_p_line;
    QLabel* m_p_answer;
};

} // namespace terrain
