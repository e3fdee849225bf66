#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/QuickHelpEntryId.h>
#include <tarqa/housekeeping/QuickHelpSection.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QMultiMap>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <array>

class QAbstractListModel;

namespace tarqa::housekeeping {

class AbstractQuickHelpInputEntry;
class QuickHelpDescriptionEntry;
class QuickHelpInputModel;
class QuickHelpTitleEntry;

/**
 * Collects the attached quick-help entries: one list model for each section, and the titles and descriptions
 * of the documents. Entries register themselves; it owns none of them. Of several titles or descriptions of a
 * document the one added last counts.
 *
 * A singleton, destroyed in phase 4 of the ordered destruction, with its models. Main thread.
 */
class TQ_HK_EXPORT QuickHelpManager : public QObject
{
    Q_OBJECT

public:
    /// Returned wherever there is no text.
    static const QString EMPTY;

    /// The one object; made at first use.
    static QuickHelpManager& instance();
    /// The same, to look at only.
    static const QuickHelpManager& const_instance();

    /// A fresh number for an entry; every call uses one up.
    QuickHelpEntryId createNextId();

    /// @return false for null, for a section without a list, and for an entry that is in the list already
    bool addToModel(AbstractQuickHelpInputEntry* p_entry);
    /// Takes an entry out of the list of a section. @return false if it is not there
    bool removeFromModel(const QuickHelpSection& section, QuickHelpEntryId id);

    /// Adding twice is harmless and signals again. @return true
    bool addTitle(const DocumentId& document, QuickHelpTitleEntry* p_entry);
    /// @return false, without a signal, if the entry is not among the document's titles
    bool removeTitle(const DocumentId& document, QuickHelpTitleEntry* p_entry);
    /// As for titles; the announced text is the added entry's own.
    bool addDescription(const DocumentId& document, QuickHelpDescriptionEntry* p_entry);
    /// As for titles.
    bool removeDescription(const DocumentId& document, QuickHelpDescriptionEntry* p_entry);

    /// The text of the title that was added last; empty if there is none.
    const QString& title(const DocumentId& document) const;
    /// Empty if the last added description is invisible; deliberately no older one takes its place.
    const QString& description(const DocumentId& document) const;

    /// The list of a section, owned by the manager; null for NoSection.
    QAbstractListModel* sectionModel(const QuickHelpSection& section);

signals:
    /// @p title is what title() gives now, or an added entry's own text; for the null document it may concern
    /// every document.
    void titleChanged(const DocumentId& documentId, const QString& title);
    /// The same for descriptions.
    void descriptionChanged(const DocumentId& documentId, const QString& description);

protected:
    QuickHelpManager();
    ~QuickHelpManager() override;

private slots:
    void onDescriptionChanged();

private:
    friend class pkBase::pkSingleton<QuickHelpManager>;
    friend class AbstractQuickHelpInputEntry;
    friend class QuickHelpDescriptionEntry;
    friend class QuickHelpTitleEntry;
    friend class TestAccess;
    static pkBase::pkSingleton<QuickHelpManager>& get_instance();
    static void destroy_instance();

    static constexpr unsigned int s_sections = 8;

    QuickHelpInputModel* model(const QuickHelpSection& section) const;
    /// Also finds an entry whose section was changed while it was attached.
    void removeFromAllModels(const AbstractQuickHelpInputEntry* p_entry);
    /// The same for an entry that is too far gone to be asked for its texts.
    void forgetInAllModels(const AbstractQuickHelpInputEntry* p_entry);

    QMultiMap<DocumentId, QuickHelpTitleEntry*> m_titles; // not owned; the newest first
    QMultiMap<DocumentId, QuickHelpDescriptionEntry*> m_descriptions; // not owned; the newest first
    std::array<QuickHelpInputModel*, s_sections> m_models; // children of this object
    QuickHelpEntryId m_next_id = 0;
};

} // namespace tarqa::housekeeping
