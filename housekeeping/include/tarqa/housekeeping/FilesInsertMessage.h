#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/MessageFamily.h>

#include <string>
#include <vector>

namespace tarqa::housekeeping {

class FilesInsertMessage;
extern template class TQ_HK_EXPORT MessageFamily<FilesInsertMessage>;

/// Asks the host to insert the listed files into a document; the framework neither sends nor receives
/// it. May be posted from any thread; see Message for who deletes it.
class TQ_HK_EXPORT FilesInsertMessage : public MessageFamily<FilesInsertMessage>
{
    Q_OBJECT

public:
    /// The text that slots and signals name the class by; see MessageFamily.
    static const char* type_name() { return "housekeeping::FilesInsertMessage"; }

    FilesInsertMessage();
    FilesInsertMessage(const FilesInsertMessage&);
    ~FilesInsertMessage() override;

    /// The document that the files are for; null until set.
    void documentId(DocumentId id) { m_document_id = id; }
    DocumentId documentId() const { return m_document_id; }
    /// The files, as the sender names them: paths or URLs.
    void files(const std::vector<std::string>& files) { m_files = files; }
    const std::vector<std::string>& files() const { return m_files; }

signals:
    /// Carries each message to the subscribers; connected by subscribe(), emitted by dispatch().
    void message_dispatched(housekeeping::FilesInsertMessage&);

private:
    friend class MessageFamily<FilesInsertMessage>;
    friend class TestAccess;
    void class_instance_dispatch(FilesInsertMessage* p_message);

    DocumentId m_document_id = DocumentId::null();
    std::vector<std::string> m_files;
};

} // namespace tarqa::housekeeping
