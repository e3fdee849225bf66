#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QString>

#include <string>

namespace tarqa::housekeeping {

class AbstractDocument;

/**
 * The domain data of a document, behind the operations that the document forwards to it.
 *
 * The host derives its models from it, makes one (directly or through AbstractModelFactory) and attaches it
 * with set_parent_document(); the document owns it through a shared pointer and it dies with the document.
 *
 * It has no lock: it belongs to the main thread and, during the run of a command on its document, to the
 * thread of that run. parent_document_exists() may be asked from any thread.
 */
class TQ_HK_EXPORT AbstractModel
{
public:
    virtual ~AbstractModel();

    // The concrete model's own operations come here.

    /// True if the model holds no data.
    virtual bool empty() const = 0;
    /// How many items the model holds.
    virtual unsigned long long size() const = 0;
    /// Removes all data.
    virtual void clear() = 0;
    /// The document is about to go; the base does nothing.
    virtual void close();
    /// Makes @p document the model's owner: takes over its id.
    virtual void set_parent_document(AbstractDocument& document);
    /// The kind of document that the model makes of its owner.
    virtual const std::string& document_type() const = 0;
    /// Sets up the database behind the model, for models that have one. @param path where it is to be
    virtual void setupDatabase(const QString& path) = 0;
    /// Takes another database into that one. @param path where the other is
    virtual void mergeDatabase(const QString& path) = 0;
    /// Where the database is; empty for models that have none.
    virtual QString getDatabasePath() = 0;

    /// The id of the document that owns this model; a fresh id of no document until there is one.
    const DocumentId& id() const { return m_id; }
    /// The document that owns this model.
    /// @throws HousekeepingException (1014) if no such document is registered; a null id is also logged
    AbstractDocument& parent_document() const;
    /// Never throws.
    bool parent_document_exists() const;

protected:
    AbstractModel();
    AbstractModel(const AbstractModel&) = delete;
    AbstractModel& operator=(const AbstractModel&) = delete;

private:
    friend class TestAccess;

    DocumentId m_id = DocumentId::null();
};

} // namespace tarqa::housekeeping
