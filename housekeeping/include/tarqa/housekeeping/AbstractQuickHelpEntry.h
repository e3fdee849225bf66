#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/QuickHelpEntryId.h>
#include <tarqa/housekeeping/QuickHelpSection.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>
#include <QtCore/QString>

namespace tarqa::housekeeping {

/**
 * One piece of the quick help of a document: an input binding, a title or a description.
 *
 * Whoever offers the binding makes the entry, normally with a QObject parent that owns it, and shows it with
 * setAttached(true). An entry that dies while it is attached takes itself out. An entry of the null document
 * is shown for every document. Main thread.
 */
class TQ_HK_EXPORT AbstractQuickHelpEntry : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString description READ description WRITE setDescription NOTIFY descriptionChanged)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged)

public:
    /// @param parent owns the entry; may be null @param document the document that it belongs to
    AbstractQuickHelpEntry(QObject* parent, const DocumentId& document, const QString& description,
        const QuickHelpSection& section);
    ~AbstractQuickHelpEntry() override;

    /// What the binding does; for titles and descriptions the text itself.
    virtual const QString& description() const;
    virtual const QuickHelpSection& section() const;

    QuickHelpEntryId id() const { return m_id; }
    const DocumentId& documentId() const { return m_document_id; }
    /// Whether the entry is registered with the manager.
    bool attached() const { return m_attached; }
    bool visible() const { return m_visible; }

public slots:
    /// Registers or unregisters the entry. @return whether that worked; false if nothing changed
    bool setAttached(bool attached);
    void setVisible(bool visible);
    /// @return false if the text is the same
    virtual bool setDescription(const QString& description);
    /// Does not move an attached entry: detach it, change the section, attach it again. @return false if the
    /// section is the same
    virtual bool setSection(const QuickHelpSection& section);

signals:
    void attachedChanged(bool attached);
    /// Anything that a view shows has changed.
    void entryChanged(QuickHelpEntryId id);
    void descriptionChanged(const QString& description);
    void visibleChanged(bool visible);

protected:
    virtual bool attach() = 0;
    virtual bool detach() = 0;

private:
    QuickHelpEntryId m_id;
    DocumentId m_document_id;
    bool m_attached = false;
    bool m_visible = true;
    QString m_description;
    QuickHelpSection m_section;
};

} // namespace tarqa::housekeeping
