#pragma once

#include <QtCore/QChar>
#include <QtCore/QString>

/// The language that nobody speaks. Functions without a state, for the tool that makes its file and for the
/// tests.
namespace pseudo_locale {

/// What stands before and behind each text.
constexpr QChar opening_bracket(0x27e6);
constexpr QChar closing_bracket(0x27e7);

/// The language whose plural rules it has, and the number of forms.
constexpr const char* plural_rules = "en";
constexpr int plural_forms = 2;

/// What stands for @p source: accented, about a third longer, in brackets, from right to left. Placeholders,
/// mnemonics, tags and entities, patterns of file names and the mark of changes in a title stay; so do the
/// names of keys.
/// @param context decides about texts that Qt does not show but reads
QString translation(const QString& context, const QString& source);

} // namespace pseudo_locale
