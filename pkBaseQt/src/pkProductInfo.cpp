#include <pkBaseQt/pkProductInfo.h>

#include <ostream>

namespace pkBase {

namespace {

void write_fact(std::ostream& stream, const char* name, const std::string& value)
{
    if (!value.empty()) {
        stream << name << ": " << value << '\n';
    }
}

} // namespace

pkProductInfo::pkProductInfo()
    : m_product_name("Tarq")
    , m_organization_name("Tarqa")
    , m_version("0.0.0")
{ }

pkProductInfo::~pkProductInfo() = default;

pkSingleton<pkProductInfo>& pkProductInfo::get_instance()
{
    static pkSingleton<pkProductInfo> s_holder(pkDestructionPhase(7), &pkProductInfo::destroy_instance);
    return s_holder;
}

pkProductInfo& pkProductInfo::instance()
{
    return get_instance().get();
}

const pkProductInfo& pkProductInfo::const_instance()
{
    return instance();
}

void pkProductInfo::destroy_instance()
{
    get_instance().destroy();
}

const std::string& pkProductInfo::marketing_name() const
{
    return m_marketing_name.empty() ? m_product_name : m_marketing_name;
}

void pkProductInfo::write_to_log(std::ostream& stream) const
{
    write_fact(stream, "Product", marketing_name());
    write_fact(stream, "Organisation", m_organization_name);
    write_fact(stream, "Version", m_version);
    write_fact(stream, "Build", std::to_string(m_build_number)); // untouched by the stream's locale and flags
    write_fact(stream, "Branch", m_branch);
    write_fact(stream, "Build date", m_build_date);
}

void pkProductInfo::show_help(const QString& topic)
{
    emit openHelp(topic);
}

void pkProductInfo::show_help_external(const QString& topic)
{
    emit openHelpExternal(topic);
}

} // namespace pkBase
