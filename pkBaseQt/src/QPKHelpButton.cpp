#include <pkBaseQt/QPKHelpButton.h>

#include <pkBaseQt/pkProductInfo.h>

namespace pkBase {

QPKHelpButton::QPKHelpButton(QWidget* p_parent)
    : QPKHelpButton(QString(), p_parent)
{ }

QPKHelpButton::QPKHelpButton(const QString& key, QWidget* p_parent)
    : QPushButton(tr("Help"), p_parent)
    , m_help_key(key)
{
    connect(this, &QPushButton::clicked, this, &QPKHelpButton::show_help);
}

QPKHelpButton::~QPKHelpButton() = default;

void QPKHelpButton::show_help() const
{
    const QString key = m_help_key; // the button may go while the page is shown
    if (!key.isEmpty()) {
        pkProductInfo::instance().show_help(key);
    }
}

} // namespace pkBase
