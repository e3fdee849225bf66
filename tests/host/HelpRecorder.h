#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

#include <string>
#include <vector>

namespace host_test {

/// The product whose help only notes which pages it was asked for.
extern const std::string s_recorded_product;

/// Registers that help; the first call in a process does.
void register_recorded_help();
/// The pages that it was asked for since the last call; those for the web browser with a "!" in front.
QStringList take_pages();

/// Takes the web addresses that are to be opened by the desktop, which opens nothing then.
class OpenedAddresses : public QObject
{
    Q_OBJECT

public:
    OpenedAddresses();
    ~OpenedAddresses() override;

    std::vector<QUrl> urls;

private slots:
    void open(const QUrl& url) { urls.push_back(url); }
};

} // namespace host_test
