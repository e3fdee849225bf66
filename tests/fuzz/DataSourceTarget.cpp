#include "Check.h"
#include "KeptInformation.h"
#include "LogWatch.h"
#include "Targets.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/utilities/Url.h>

#include <sstream>

namespace fuzz {

using tarqa::housekeeping::DataSource;

namespace {

const std::string s_scheme = "file://";

std::string written(const DataSource& source)
{
    std::ostringstream stream;
    stream << source;
    return stream.str();
}

std::string line_of(const std::string& text, int number)
{
    std::istringstream stream(text);
    std::string line;
    for (int i = 0; i <= number; ++i) {
        line.clear();
        std::getline(stream, line);
    }
    return line;
}

/// The lines; a vertical tab stands for a line feed inside one.
QStringList entries_of(const std::string& input)
{
    if (input.empty()) {
        return {};
    }
    QStringList entries = QString::fromStdString(input).split('\n');
    entries.replaceInStrings("\v", "\n");
    return entries;
}

void check_first_reading(const std::string& input, const DataSource& source)
{
    const std::string line = line_of(input, 0);
    const bool is_url = line.compare(0, s_scheme.size(), s_scheme) == 0;
    check(source.url() == (is_url ? line : tarqa::utilities::filesystem_to_url(line)), "the url is another");
    check(source.z_sign() == DataSource::Elevation && source.z_units() == DataSource::Metres,
        "sign and units are no part of the text form");
    check(source.ds_key().empty() && source.urls().empty(), "key and files are no part of the text form");
}

void check_text_form(const std::string& input)
{
    const bool is_known = line_of(input, 1) == KeptInformation::product_name;
    DataSource source;
    std::istringstream stream(input);
    try {
        stream >> source;
    } catch (const std::runtime_error&) {
        check(!is_known, "a kind that is registered was refused");
        check_first_reading(input, source);
        check(!source.data_information() && written(source).empty() && source.info().isEmpty(),
            "a refused kind left something behind");
        return;
    }
    check(is_known, "a kind that is not registered was accepted");
    check_first_reading(input, source);

    const std::string text = written(source);
    DataSource again;
    std::istringstream written_stream(text);
    written_stream >> again;
    check(written_stream.good() && written_stream.peek() == EOF, "not all that was written was read");
    check(again.url() == source.url() && again.key() == source.key() && again.info() == source.info(),
        "what was written is read as something else");
    check(written(again) == text, "what was read again is written differently");
}

/// What stays of a list: its sign and unit in the usual spelling, and the rest as it is.
QStringList usual_form(const QStringList& list, const DataSource& source)
{
    return QStringList{
               list[0], list[1], list.value(2) == "depth" ? "depth" : "elevation", source.z_units_string()}
    + list.mid(4);
}

void check_list(const std::string& input)
{
    const QStringList list = entries_of(input);
    DataSource source;
    source.info(list);
    check(source.url() == list.value(0).toStdString(), "the url of the list is another");
    const bool is_known = list.value(1) == KeptInformation::product_name;
    check(is_known == (source.data_information() != nullptr), "kind and data information differ");
    check(source.z_sign() == DataSource::signFromString(list.value(2)), "the sign is another");
    const bool is_time
        = source.z_units() == DataSource::Seconds || source.z_units() == DataSource::Milliseconds;
    check(source.inTime() == is_time, "time and units differ");
    check(DataSource::unitsFromString(source.z_units_string()) == source.z_units(), "the units have no text");
    check(source.info() == (is_known ? usual_form(list, source) : QStringList()), "the list is another");
    check(is_known || written(source).empty(), "something was written without a data information");

    DataSource again;
    again.info(source.info());
    check(again.info() == source.info(), "a list that was written is read as something else");
    check(!is_known || (again.z_units() == source.z_units() && again.z_sign() == source.z_sign()),
        "sign or units get lost");
}

} // namespace

void data_source(const std::string& input)
{
    KeptInformation::register_factory();
    const LogWatch log;
    check_text_form(input);
    check_list(input);
    log.check_assertions({"units_found"});
}

} // namespace fuzz
