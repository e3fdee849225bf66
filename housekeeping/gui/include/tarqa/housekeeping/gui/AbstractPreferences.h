#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <string>

namespace tarqa::housekeeping::gui {

/**
 * A page of the preferences dialog. The host derives one class for each page and registers it with an
 * AbstractPreferencesFactory; the dialog makes one of each, shows those that are valid, ordered by weight,
 * and owns them. Main thread.
 *
 * What accept() or aboutToShow() throws is caught by the dialog: it is logged, and what accept() throws is
 * shown to the user.
 */
class TQ_HK_EXPORT AbstractPreferences : public QWidget
{
    Q_OBJECT

public:
    /// @param p_parent null: the dialog takes the page over
    explicit AbstractPreferences(QWidget* p_parent = nullptr);
    ~AbstractPreferences() override;

    /// The text of the page's tab; empty until set.
    const QString& label() const { return m_label; }
    void label(const QString& label) { m_label = label; }

    /// Pages are ordered by ascending weight; those of equal weight in no particular order. 0 until set.
    int weight() const { return m_weight; }
    void weight(int weight) { m_weight = weight; }

    /// Whether the page is to be shown; asked once, when the dialog is made. The base says yes.
    virtual bool isValidPanel();

public slots:
    /// Applies what the user has entered; called for the page on top when the user applies. The base does
    /// nothing, and so in all that follow.
    virtual void accept();
    /// Shows the values as they are now; called before the dialog is shown and when the page's tab becomes
    /// the current one, so it also drops what was entered and not applied.
    virtual void aboutToShow();

protected:
    /// Reads the page's values from the stored settings below @p path into its widgets.
    virtual void read(const std::string& path);
    /// Stores the page's values below @p path.
    virtual void write(const std::string& path);

private:
    QString m_label;
    int m_weight = 0;
};

} // namespace tarqa::housekeeping::gui
