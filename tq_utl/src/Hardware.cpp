#include <tarqa/utilities/Hardware.h>

#include "platform.h"

#include <QtCore/QString>
#include <QtCore/QSysInfo>

#include <ostream>

namespace tarqa::utilities {

namespace {

const unsigned long long s_mebibyte = 1024ull * 1024;

void write_fact(std::ostream& stream, const char* name, const std::string& value)
{
    if (!value.empty()) {
        stream << name << ": " << value << '\n';
    }
}

} // namespace

std::string Hardware::operating_system()
{
    return QSysInfo::prettyProductName().toStdString();
}

std::string Hardware::kernel()
{
    return QString(QSysInfo::kernelType() + ' ' + QSysInfo::kernelVersion()).trimmed().toStdString();
}

std::string Hardware::processor()
{
    return platform::processor();
}

unsigned int Hardware::processor_count()
{
    return platform::processor_count();
}

unsigned long long Hardware::physical_memory()
{
    return platform::physical_memory();
}

void Hardware::write_to_log(std::ostream& stream)
{
    const unsigned long long memory = physical_memory();
    write_fact(stream, "Operating system", operating_system());
    write_fact(stream, "Kernel", kernel());
    write_fact(stream, "Processor", processor());
    write_fact(stream, "Logical processors", std::to_string(processor_count()));
    write_fact(
        stream, "Physical memory", memory ? std::to_string(memory / s_mebibyte) + " MiB" : std::string());
}

} // namespace tarqa::utilities
