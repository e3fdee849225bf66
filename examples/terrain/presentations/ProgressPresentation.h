#pragma once

#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/gui/AbstractPresentation.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

class QLabel;
class QProgressBar;
class QToolButton;
class QWidget;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// The progress of the running command in the status bar, with a button to cancel it: the face of the
/// library's ProgressBarsController. Registered as "ProgressPresentation". Main thread.
class ProgressPresentation : public QObject, public housekeeping::gui::AbstractPresentation
{
    Q_OBJECT

public:
    static const char* const product_name;

    ProgressPresentation();
    ~ProgressPresentation() override;

    /// The presentation manager's.
    static ProgressPresentation& instance();

    // Null before they are built and when the window is gone.
    QProgressBar* bar() const;
    QToolButton* cancel_button() const;

private:
    void init_presentation() override;
    void build_presentation() override;
    void update_presentation() override;
    std::string controller_name() const override;

    void cancel();
    bool is_too_early();

    QTimer m_patience;
    housekeeping::CommandId m_waited_for = housekeeping::CommandId::null();

    // The window's.
    QPointer<QWidget> m_p_corner;
    QPointer<QLabel> m_p_name;
    QPointer<QProgressBar> m_p_bar;
    QPointer<QToolButton> m_p_cancel;
};

} // namespace terrain
