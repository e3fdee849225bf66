#include "PseudoText.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace pseudo_locale {

namespace {

const double s_growth = 0.3;
const QChar s_filling('~');
// A mark that counts as a letter, for those who look at the first one, and the beginning of what runs that
// way.
const QString s_from_right_to_left = "\u200f\u202b";
const QChar s_end_of_direction(0x202c);

const QString s_plain = "aeiouyAEIOUYcdghklnrstzCDGHKLNRSTZ";
const QString s_accented = "áéíóúýÁÉÍÓÚÝçðĝĥķļñŕšţžÇĐĜĤĶĻÑŔŠŢŽ";
const QString s_vowels = "áéíóúýÁÉÍÓÚÝ";

/// What other parts of a program read: placeholders (%1, %L1, %n), tags and entities of HTML, patterns of
/// file names in round brackets, what separates them, the mark of changes, escaped and other mnemonics.
const QRegularExpression& fixed_parts()
{
    static const QRegularExpression s_parts(
        R"(%L?\d{1,2}|%L?n|</?[A-Za-z][^<>]*>|&#?[A-Za-z0-9]+;|\([^()]*\*[^()]*\)|;;|\[\*\]|&&|&)");
    return s_parts;
}

bool is_key(const QString& text)
{
    static const QRegularExpression s_key(R"(^((Ctrl|Alt|Shift|Meta)\+)*([A-Z]|F\d{1,2})$)");
    return s_key.match(text).hasMatch();
}

/// Accents letters one after the other, and doubles vowels as long as the text is to grow.
class Accents
{
public:
    void add(const QString& text)
    {
        for (const QChar letter : text) {
            const int place = s_plain.indexOf(letter);
            const QChar accented = place < 0 ? letter : s_accented[place];
            m_result += accented;
            m_missing += letter.isLetter() ? s_growth : 0;
            if (m_missing >= 1 && s_vowels.contains(accented)) {
                m_result += accented;
                m_missing -= 1;
            }
        }
    }
    void add_fixed(const QString& text) { m_result += text; }
    QString result() const { return m_result + QString(static_cast<int>(m_missing), s_filling); }

private:
    QString m_result;
    double m_missing = 0; // letters
};

QString accented(const QString& source)
{
    Accents accents;
    int end = 0;
    for (auto parts = fixed_parts().globalMatch(source); parts.hasNext();) {
        const QRegularExpressionMatch part = parts.next();
        accents.add(source.mid(end, part.capturedStart() - end));
        accents.add_fixed(part.captured());
        end = part.capturedEnd();
    }
    accents.add(source.mid(end));
    return accents.result();
}

} // namespace

QString translation(const QString& context, const QString& source)
{
    if (context == "QGuiApplication" && source == "QT_LAYOUT_DIRECTION") {
        return "RTL";
    }
    if (context == "QShortcut" || is_key(source)) {
        return source;
    }
    const QString text = opening_bracket + accented(source) + closing_bracket;
    // A direction ends with the line.
    const QString next_line = s_end_of_direction + ('\n' + s_from_right_to_left);
    return s_from_right_to_left + QString(text).replace('\n', next_line) + s_end_of_direction;
}

} // namespace pseudo_locale
