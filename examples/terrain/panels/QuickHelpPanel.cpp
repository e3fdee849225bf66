#include "panels/QuickHelpPanel.h"

#include "panels/QuickHelpSheet.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QResizeEvent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlError>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <QtQuickWidgets/QQuickWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace terrain {

namespace {

const char* const s_scene = "qrc:/terrain/panels/QuickHelpPanel.qml";

} // namespace

QuickHelpPanel::QuickHelpPanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_sheet(new QuickHelpSheet(this))
    , m_p_scene(nullptr)
{
    setWindowTitle(tr("Quick Help"));
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    m_p_scene = new QQuickWidget(this);
    m_p_scene->setResizeMode(QQuickWidget::SizeRootObjectToView);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(m_p_scene);
    setMinimumWidth(220);
}

QuickHelpPanel::~QuickHelpPanel()
{
    delete m_p_scene; // before the sheet that it reads
}

int QuickHelpPanel::rows_drawn()
{
    load();
    QVariant rows;
    if (QQuickItem* const p_root = m_p_scene->rootObject()) {
        QMetaObject::invokeMethod(p_root, "countRows", Q_RETURN_ARG(QVariant, rows));
    }
    return rows.toInt();
}

QSize QuickHelpPanel::sizeHint() const
{
    return {320, 560};
}

void QuickHelpPanel::showEvent(QShowEvent* p_event)
{
    load();
    QWidget::showEvent(p_event);
    // The scene draws with its next frame, but at once when it gets a size. Empty, the panel would be seen to
    // be filled.
    QResizeEvent size(m_p_scene->size(), m_p_scene->size());
    QCoreApplication::sendEvent(m_p_scene, &size);
}

/// Makes the engine of QML, which would hold up the start of a program whose user may never look here.
void QuickHelpPanel::load()
{
    if (!m_p_scene->source().isEmpty()) {
        return;
    }
    m_p_scene->rootContext()->setContextProperty("sheet", m_p_sheet);
    m_p_scene->setSource(QUrl(s_scene));
    if (!m_p_scene->rootObject()) {
        say_what_is_wrong();
    }
}

void QuickHelpPanel::say_what_is_wrong()
{
    QStringList reasons;
    for (const QQmlError& error : m_p_scene->errors()) {
        reasons.append(error.toString());
    }
    const QString text = tr("The quick help cannot be shown: %1").arg(reasons.join("; "));
    tarqa::housekeeping::ErrorProtocol::instance().log_message(text.toStdString());
    m_p_scene->hide();
    auto* const p_label = new QLabel(text);
    p_label->setTextFormat(Qt::PlainText);
    p_label->setWordWrap(true);
    p_label->setMargin(12);
    layout()->addWidget(p_label);
}

} // namespace terrain
