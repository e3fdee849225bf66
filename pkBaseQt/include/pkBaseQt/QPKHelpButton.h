#pragma once

#include <pkBaseQt/pkBaseQt_export.h>

#include <QtCore/QString>
#include <QtWidgets/QPushButton>

namespace pkBase {

/**
 * A button that opens a page of the help: it asks the product information to show its help key, which whoever
 * shows the help hears. Without a key it does nothing. Main thread.
 */
class PKBASEQT_EXPORT QPKHelpButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(QString helpKey READ helpKey WRITE setHelpKey)

public:
    /// A button without a key. @p p_parent owns it; may be null.
    explicit QPKHelpButton(QWidget* p_parent = nullptr);
    /// A button for the page of @p key. @p p_parent owns it; may be null.
    explicit QPKHelpButton(const QString& key, QWidget* p_parent = nullptr);
    ~QPKHelpButton() override;

    /// A help key or page; empty until set.
    const QString& helpKey() const { return m_help_key; }
    void setHelpKey(const QString& key) { m_help_key = key; }

private:
    void show_help() const;

    QString m_help_key;
};

} // namespace pkBase
