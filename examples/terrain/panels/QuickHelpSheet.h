#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>

#include <vector>

namespace tarqa::housekeeping {
class QuickHelpInputModelFilter;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// One document's quick help as a QML scene reads it. Main thread; goes before the quick-help manager.
class QuickHelpSheet : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QString description READ description NOTIFY descriptionChanged)
    /// All sections: objects with a "name" and "inputs", the model of the section's bindings.
    Q_PROPERTY(QVariantList sections READ sections CONSTANT)

public:
    /// Begins with the sheet of no document.
    explicit QuickHelpSheet(QObject* p_parent = nullptr);

    /// Shows another document's sheet; the null document's is for when there is none.
    void show_document(const housekeeping::DocumentId& document);

    QString title() const;
    QString description() const;
    const QVariantList& sections() const { return m_sections; }
    /// How many bindings the sheet has.
    int rows() const;

signals:
    void titleChanged();
    void descriptionChanged();

private:
    housekeeping::DocumentId m_document;
    std::vector<housekeeping::QuickHelpInputModelFilter*> m_filters; // children of this object
    QVariantList m_sections;
};

} // namespace terrain
