#pragma once

#include <QtCore/QStringList>

class QAction;
class QWidget;

namespace host_test {

/// All texts that a widget and those in it show or tell, visible now or not: of labels, buttons, lists, tips,
/// menus and their entries. What the user types is not among them.
QStringList texts_of(const QWidget& widget);

/// Those of @p texts in which there are words that the pseudo-locale has not made, and which are no @p data:
/// names of files and the like. What is put together from translated pieces and data passes.
QStringList untranslated(const QStringList& texts, const QStringList& data);

/// The title and the entries' mnemonics of each menu below @p bar in which two are alike: "Title: a b".
QStringList ambiguous_mnemonics(const QWidget& bar);

} // namespace host_test
