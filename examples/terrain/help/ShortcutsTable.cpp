#include "help/ShortcutsTable.h"

#include "panels/QuickHelpSheet.h"

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QObject>
#include <QtCore/QRegularExpression>

namespace terrain {

namespace {

/// A binding is rich text already, but keys such as "<" and "&" stand in it as they are.
QString binding_html(const QString& binding)
{
    static const QRegularExpression s_entity("&amp;(#[0-9]+|[a-z]+);");
    return binding.toHtmlEscaped().replace(s_entity, "&\\1;");
}

QString rows(const QAbstractItemModel& inputs)
{
    QString rows;
    for (int row = 0; row < inputs.rowCount(); ++row) {
        const QModelIndex input = inputs.index(row, 0);
        rows += QString("<tr><td><kbd>%1</kbd></td><td>%2</td></tr>")
                    .arg(binding_html(input.data(Qt::DisplayRole).toString()),
                        input.data(Qt::UserRole).toString().toHtmlEscaped());
    }
    return rows;
}

QString table(const QString& section, const QAbstractItemModel& inputs)
{
    if (inputs.rowCount() == 0) {
        return {};
    }
    return QString("<h2>%1</h2><table class=\"keys\"><thead><tr><th scope=\"col\">%2</th>"
                   "<th scope=\"col\">%3</th></tr></thead><tbody>%4</tbody></table>")
        .arg(
            section.toHtmlEscaped(), QObject::tr("Keys or mouse"), QObject::tr("What it does"), rows(inputs));
}

} // namespace

QString shortcuts_table(const housekeeping::DocumentId& document)
{
    QuickHelpSheet sheet;
    sheet.show_document(document);
    const bool is_open = document != housekeeping::DocumentId::null();
    QString html = QString("<p>%1</p>")
                       .arg(is_open ? QObject::tr("What is possible with <strong>%1</strong>, the raster "
                                                  "that is on top, and with the program:")
                                          .arg(sheet.title().toHtmlEscaped())
                                    : QObject::tr("What is possible while no raster is open. With one, there "
                                                  "is more; open one and come back."));
    for (const QVariant& section : sheet.sections()) {
        const QVariantMap parts = section.toMap();
        const auto* const p_inputs = qobject_cast<QAbstractItemModel*>(parts["inputs"].value<QObject*>());
        html += table(parts["name"].toString(), *p_inputs);
    }
    return html;
}

} // namespace terrain
