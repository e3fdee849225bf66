#include <pkBaseQt/QPKAboutBox.h>

#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSysInfo>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace pkBase {

namespace {

const QSize s_first_size(620, 600);
const int s_icon_size = 48; ///< pixels

QString from(const std::string& text)
{
    return QString::fromStdString(text);
}

QLabel* make_label(const QString& text, const char* name)
{
    auto* const p_label = new QLabel(text);
    p_label->setObjectName(name);
    p_label->setTextFormat(Qt::PlainText);
    p_label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    p_label->setWordWrap(true);
    return p_label;
}

QString version_line()
{
    const pkProductInfo& product = pkProductInfo::const_instance();
    return QPKAboutBox::tr("Version %1").arg(from(product.version()));
}

/// "Build 12 (main) of 2026-03-01", as far as it is known.
QString build_line()
{
    const pkProductInfo& product = pkProductInfo::const_instance();
    QString line = QPKAboutBox::tr("Build %1").arg(product.build_number());
    if (!product.branch().empty()) {
        line += QPKAboutBox::tr(" (%1)").arg(from(product.branch()));
    }
    if (!product.build_date().empty()) {
        line += QPKAboutBox::tr(" of %1").arg(from(product.build_date()));
    }
    return line;
}

} // namespace

QPKAboutBox::QPKAboutBox(const QString& page, QWidget* p_parent, const QString& log_file)
    : QDialog(p_parent)
    , m_log_file(log_file)
    , m_p_page(new QTextBrowser)
    , m_p_remark(make_label(QString(), "remark"))
{
    setObjectName("QPKAboutBox");
    setWindowTitle(tr("About %1").arg(from(pkProductInfo::const_instance().marketing_name())));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
    m_p_page->setObjectName("page");
    m_p_page->setOpenLinks(false);
    connect(m_p_page, &QTextBrowser::anchorClicked, this, &QPKAboutBox::open_link);
    m_p_remark->hide();
    show_page(page);

    auto* const p_buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* const p_copy = p_buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    p_copy->setObjectName("copy");
    p_copy->setToolTip(tr("Copy version and build, for a report"));
    connect(p_copy, &QPushButton::clicked, this, &QPKAboutBox::copy_facts);
    connect(p_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const p_layout = new QVBoxLayout(this);
    p_layout->addWidget(make_head());
    p_layout->addWidget(m_p_page, 1);
    p_layout->addWidget(m_p_remark);
    if (!m_log_file.isEmpty()) {
        p_layout->addWidget(make_log_line());
    }
    p_layout->addWidget(p_buttons);
    // From the top down. The row itself would lead back to its first button, and leave the last one out.
    p_buttons->setFocusProxy(nullptr); // which would take over the next line
    p_buttons->setFocusPolicy(Qt::NoFocus);
    QWidget* p_before = m_p_page;
    for (QWidget* const p_stop : {findChild<QWidget*>("showLogFile"), static_cast<QWidget*>(p_copy),
             static_cast<QWidget*>(p_buttons->button(QDialogButtonBox::Close))}) {
        if (p_stop) {
            setTabOrder(p_before, p_stop);
            p_before = p_stop;
        }
    }
    p_buttons->button(QDialogButtonBox::Close)->setDefault(true);
    p_buttons->button(QDialogButtonBox::Close)->setFocus();
    resize(s_first_size);
}

QPKAboutBox::~QPKAboutBox() = default;

QWidget* QPKAboutBox::make_head()
{
    auto* const p_head = new QWidget;
    auto* const p_layout = new QHBoxLayout(p_head);
    p_layout->setContentsMargins(0, 0, 0, 0);
    const QIcon icon = QApplication::windowIcon();
    if (!icon.isNull()) {
        auto* const p_icon = new QLabel;
        p_icon->setPixmap(icon.pixmap(s_icon_size));
        p_layout->addWidget(p_icon, 0, Qt::AlignTop);
    }
    auto* const p_lines = new QVBoxLayout;
    QLabel* const p_name = make_label(from(pkProductInfo::const_instance().marketing_name()), "product");
    QFont font = p_name->font();
    if (font.pixelSize() > 0) {
        font.setPixelSize(font.pixelSize() * 3 / 2);
    } else {
        font.setPointSizeF(font.pointSizeF() * 1.5);
    }
    font.setBold(true);
    p_name->setFont(font);
    p_lines->addWidget(p_name);
    p_lines->addWidget(make_label(version_line(), "version"));
    p_lines->addWidget(make_label(build_line(), "build"));
    p_layout->addLayout(p_lines, 1);
    return p_head;
}

QWidget* QPKAboutBox::make_log_line()
{
    auto* const p_line = new QWidget;
    auto* const p_layout = new QHBoxLayout(p_line);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(
        make_label(tr("Log file: %1").arg(QDir::toNativeSeparators(m_log_file)), "logFile"), 1);
    auto* const p_show = new QPushButton(tr("&Show Log File"));
    p_show->setObjectName("showLogFile");
    p_show->setAutoDefault(false);
    connect(p_show, &QPushButton::clicked, this, &QPKAboutBox::show_log_file);
    p_layout->addWidget(p_show);
    return p_line;
}

void QPKAboutBox::show_page(const QString& page)
{
    if (QFileInfo(page).isDir() || !QFile(page).open(QIODevice::ReadOnly)) {
        m_p_page->setPlainText(tr("The page %1 cannot be read.").arg(page));
        return;
    }
    QUrl address = QUrl::fromLocalFile(QFileInfo(page).absoluteFilePath());
    if (page.startsWith(':')) {
        address.setScheme("qrc");
        address.setPath(page.mid(1));
    }
    m_p_page->setSource(address);
}

void QPKAboutBox::open_link(const QUrl& link)
{
    const QUrl address = m_p_page->source().resolved(link);
    if (address.matches(m_p_page->source(), QUrl::RemoveFragment)) {
        m_p_page->scrollToAnchor(address.fragment());
    } else if (!QDesktopServices::openUrl(address)) {
        m_p_remark->setText(tr("No program was found that opens %1").arg(address.toString()));
        m_p_remark->show();
    }
}

QString QPKAboutBox::facts() const
{
    QStringList facts{from(pkProductInfo::const_instance().marketing_name()), version_line(), build_line(),
        tr("Qt %1").arg(qVersion()),
        tr("%1 (%2)").arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture())};
    if (!m_log_file.isEmpty()) {
        facts.append(tr("Log file: %1").arg(QDir::toNativeSeparators(m_log_file)));
    }
    return facts.join('\n') + '\n';
}

void QPKAboutBox::copy_facts()
{
    QGuiApplication::clipboard()->setText(facts());
}

void QPKAboutBox::show_log_file()
{
    QLogFileViewer& viewer = QLogFileViewer::instance();
    if (!m_log_file.isEmpty() && viewer.path() != m_log_file) {
        viewer.setPath(m_log_file);
    }
    accept(); // first: closing it brings the window behind it to the front
    viewer.present();
}

} // namespace pkBase
