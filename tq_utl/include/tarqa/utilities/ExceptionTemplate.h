#pragma once

#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/tq_utl_export.h>

#include <string>

namespace tarqa {

/**
 * Makes a distinct exception type out of @p Base; @p Tag, an empty type, only tells the types apart. Behaves
 * exactly as its base. A library that throws one instantiates it explicitly and exports it, so that every
 * module sees one and the same type. A plain value without locks, as its base.
 */
template <class Base, class Tag>
class ExceptionTemplate : public Base
{
public:
    /// As tarqa::Exception.
    ExceptionTemplate(unsigned int code, const std::string& message, const char* file, unsigned int line)
        : Base(code, message, file, line)
    { }
    ExceptionTemplate(unsigned int code, const QString& message, const char* file, unsigned int line)
        : Base(code, message, file, line)
    { }
    ExceptionTemplate(unsigned int code, const char* message, const char* file, unsigned int line)
        : Base(code, message, file, line)
    { }
    ExceptionTemplate(const ExceptionTemplate&) = default;
    ExceptionTemplate& operator=(const ExceptionTemplate&) = default;

    ~ExceptionTemplate() override = default;
    /// As the base's.
    void log_information(std::ostream& stream) const override { Base::log_information(stream); }
    /// As the base's.
    const char* what() const override { return Base::what(); }

protected:
    /// Gives an exception of the base type this type; keeps its code, message, place and trail.
    explicit ExceptionTemplate(const Base& base)
        : Base(base)
    { }
};

} // namespace tarqa
