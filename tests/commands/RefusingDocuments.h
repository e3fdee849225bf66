#pragma once

namespace support {

/**
 * While one lives, every document refuses to be marked as busy, which the document manager itself never does.
 * A program with this file has its own DocumentManager::document_busy(), which the library calls as well.
 */
class RefusingDocuments
{
public:
    RefusingDocuments();
    ~RefusingDocuments();
    RefusingDocuments(const RefusingDocuments&) = delete;
    RefusingDocuments& operator=(const RefusingDocuments&) = delete;

    /// How often a mark was refused.
    int refused() const;
    /// How often a mark was to be taken away.
    int cleared() const;
};

} // namespace support
