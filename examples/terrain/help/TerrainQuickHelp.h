#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>

#include <vector>

namespace tarqa::housekeeping {
class AbstractQuickHelpEntry;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

struct HelpBinding;

class TerrainDocument;

/**
 * The quick help of the main window, from the table of bindings: what is possible with one document, or what
 * is always possible. The entries are attached as long as the object lives; the facts about the document are
 * those of its last change. Main thread.
 */
class TerrainQuickHelp : public QObject
{
    Q_OBJECT

public:
    /// What is always possible, and the texts for a window without documents.
    TerrainQuickHelp();
    /// What is possible with @p document; go before the document goes.
    explicit TerrainQuickHelp(const TerrainDocument& document);

    /// How many bindings people see while a document is current (or none is).
    static int rows(bool with_document);

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    void add(const housekeeping::DocumentId& document, bool for_document);
    void add_keys(const housekeeping::DocumentId& document, const std::vector<HelpBinding>& keys);
    void add_texts(const housekeeping::DocumentId& document, const QString& title, const QString& text);

    housekeeping::AbstractQuickHelpEntry* m_p_description = nullptr; // a child
};

} // namespace terrain
