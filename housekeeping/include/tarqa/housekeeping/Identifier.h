#pragma once

#include <QtCore/QVariant>

#include <boost/lexical_cast.hpp>

#include <istream>
#include <ostream>
#include <sstream>
#include <string>

namespace tarqa::housekeeping {

/**
 * What the identifiers of documents and commands have in common: one unsigned 64-bit number, 0 being the null
 * identifier. @p Id is the concrete identifier, so identifiers of different kinds neither convert nor
 * compare.
 *
 * A value without locks. The text and stream forms keep all 64 bits; the QVariant form keeps the low 32.
 */
template <class Id>
class Identifier
{
public:
    /// The identifier of nothing; its number is 0.
    static Id null() { return Id(0); }
    /// The identifier of that number.
    static Id build(unsigned long long number) { return Id(number); }

    /// The number.
    unsigned long long getId() const { return m_id; }

    /// The number in decimal. @throws boost::bad_lexical_cast if the conversion fails
    std::string getString() const { return boost::lexical_cast<std::string>(m_id); }

    /// Identifiers compare as their numbers do.
    bool operator==(const Id& other) const { return m_id == other.getId(); }
    bool operator!=(const Id& other) const { return m_id != other.getId(); }
    bool operator<(const Id& other) const { return m_id < other.getId(); }
    bool operator<=(const Id& other) const { return m_id <= other.getId(); }
    bool operator>(const Id& other) const { return m_id > other.getId(); }
    bool operator>=(const Id& other) const { return m_id >= other.getId(); }

    /// The same with a number.
    bool operator==(unsigned long long number) const { return m_id == number; }
    bool operator!=(unsigned long long number) const { return m_id != number; }
    bool operator<(unsigned long long number) const { return m_id < number; }
    bool operator<=(unsigned long long number) const { return m_id <= number; }
    bool operator>(unsigned long long number) const { return m_id > number; }
    bool operator>=(unsigned long long number) const { return m_id >= number; }

    /// Writes the number in decimal.
    friend std::ostream& operator<<(std::ostream& stream, const Id& id) { return stream << id.getId(); }

    /// Leaves @p id alone if no number can be read.
    friend std::istream& operator>>(std::istream& stream, Id& id)
    {
        unsigned long long number = 0;
        if (stream >> number) {
            id = build(number);
        }
        return stream;
    }

    /// Assigns an int made from the low 32 bits; deliberately narrow, larger numbers do not survive the way
    /// back.
    friend QVariant& operator<<(QVariant& variant, const Id& id)
    {
        variant = QVariant(static_cast<int>(static_cast<quint32>(id.getId())));
        return variant;
    }

    /// Takes toInt(), which is 0 for what is no number. The int is printed and read as an unsigned 64-bit
    /// number, so a negative one deliberately wraps around.
    friend QVariant& operator>>(QVariant& variant, Id& id)
    {
        std::stringstream text;
        text << variant.toInt();
        text >> id;
        return variant;
    }

protected:
    /// @param id the number
    explicit Identifier(unsigned long long id)
        : m_id(id)
    { }

private:
    unsigned long long m_id;
};

} // namespace tarqa::housekeeping
