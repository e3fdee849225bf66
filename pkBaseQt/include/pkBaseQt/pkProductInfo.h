#pragma once

#include <pkBase/pkSingleton.h>
#include <pkBaseQt/pkBaseQt_export.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <iosfwd>
#include <string>

namespace pkBase {

/**
 * What the host is called, who makes it and which build it is; and the two signals by which any part of the
 * program asks for a page of the help.
 *
 * The host fills it in first of all, before anything is logged: the error log's file name and its first lines
 * come from here. A singleton, made at first use, destroyed in phase 7 of the ordered destruction. Facts are
 * set on the main thread at start-up and only read afterwards. Texts are UTF-8.
 */
class PKBASEQT_EXPORT pkProductInfo : public QObject
{
    Q_OBJECT

public:
    /// The one object; made at first use.
    static pkProductInfo& instance();
    /// The same, to look at only.
    static const pkProductInfo& const_instance();

    /// Short name, part of file names, for example "TarqTerrain"; "Tarq" until set.
    const std::string& product_name() const { return m_product_name; }
    void product_name(const std::string& name) { m_product_name = name; }

    /// Name as users read it, for example "Tarq Terrain"; the product name until set.
    const std::string& marketing_name() const;
    void marketing_name(const std::string& name) { m_marketing_name = name; }

    /// Who makes the host; names the group of its stored settings; "Tarqa" until set.
    const std::string& organization_name() const { return m_organization_name; }
    void organization_name(const std::string& name) { m_organization_name = name; }

    /// For example "2.4.1"; "0.0.0" until set.
    const std::string& version() const { return m_version; }
    void version(const std::string& version) { m_version = version; }

    /// Number of the build; 0 until set.
    unsigned int build_number() const { return m_build_number; }
    void build_number(unsigned int number) { m_build_number = number; }

    /// Branch of the source that was built; empty until set.
    const std::string& branch() const { return m_branch; }
    void branch(const std::string& branch) { m_branch = branch; }

    /// Date of the build as text, best in ISO 8601; empty until set.
    const std::string& build_date() const { return m_build_date; }
    void build_date(const std::string& date) { m_build_date = date; }

    /// Writes one "name: value" line per fact to @p stream; facts that are not set are left out.
    void write_to_log(std::ostream& stream) const;

    /// Emits openHelp() with @p topic, a help key or page.
    void show_help(const QString& topic);
    /// Emits openHelpExternal() with @p topic.
    void show_help_external(const QString& topic);

signals:
    /// Somebody wants to read @p topic in the help browser.
    void openHelp(const QString& topic);
    /// Somebody wants to read @p topic outside the program.
    void openHelpExternal(const QString& topic);

private:
    friend class pkSingleton<pkProductInfo>;
    pkProductInfo();
    ~pkProductInfo() override;
    static pkSingleton<pkProductInfo>& get_instance();
    static void destroy_instance();

    std::string m_product_name;
    std::string m_marketing_name;
    std::string m_organization_name;
    std::string m_version;
    unsigned int m_build_number = 0;
    std::string m_branch;
    std::string m_build_date;
};

} // namespace pkBase
