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
    /// @param parent owns the entry; may be null
    /// @param document the document that it belongs to; null for all
    /// @param description what the binding does; for titles and descriptions the text itself
    /// @param section the list that it stands in
    AbstractQuickHelpEntry(QObject* parent, const DocumentId& document, const QString& description,
        const QuickHelpSection& section);
    ~AbstractQuickHelpEntry() override;

    /// What the binding does; for titles and descriptions the text itself.
    virtual const QString& description() const;
    /// The list that the entry stands in.
    virtual const QuickHelpSection& section() const;

    /// The entry's own number.
    QuickHelpEntryId id() const { return m_id; }
    /// The document that it belongs to; null for all.
    const DocumentId& documentId() const { return m_document_id; }
    /// Whether the entry is registered with the manager.
    bool attached() const { return m_attached; }
    /// Whether views show the entry; true until set.
    bool visible() const { return m_visible; }

public slots:
    /// Registers or unregisters the entry. @return whether that worked; false if nothing changed
    bool setAttached(bool attached);
    /// While invisible, the entry stays attached and views leave it out.
    void setVisible(bool visible);
    /// @return false if the text is the same
    virtual bool setDescription(const QString& description);
    /// Does not move an attached entry: detach it, change the section, attach it again. @return false if the
    /// section is the same
    virtual bool setSection(const QuickHelpSection& section);

signals:
    /// Registered or unregistered, whether or not the manager had a use for it.
    void attachedChanged(bool attached);
    /// Anything that a view shows has changed.
    void entryChanged(QuickHelpEntryId id);
    /// The text has changed; entryChanged() follows.
    void descriptionChanged(const QString& description);
    /// Shown or left out from now on; entryChanged() follows.
    void visibleChanged(bool visible);

protected:
    /// Hands the entry to the manager. @return whether that took it
    virtual bool attach() = 0;
    /// Takes the entry out of the manager. @return whether it was there
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
