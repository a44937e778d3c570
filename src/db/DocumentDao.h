#pragma once

#include "db/BaseDao.h"
#include "db/DocumentRecord.h"

/// Table `documents`, and the numbering of documents.
class DocumentDao final : public BaseDao {
public:
    /// Stored last first; all kinds when none is given.
    QList<DocumentRecord> list(std::optional<DocType> type = {});
    /// All documents, newest first, without their content: an archive of years holds megabytes of
    /// it that nobody looks at in a list.
    QList<DocumentRecord> listWithoutContent();
    std::optional<DocumentRecord> findById(qint64 id);
    /// Whether an annual decision of that year is stored; false when it cannot be found out.
    bool existsAnnualForYear(int year);

    /// Stores a new document and sets its id. A number that is taken is a failure.
    [[nodiscard]] bool insert(DocumentRecord& document);
    [[nodiscard]] bool updateContent(qint64 id, const QString& html);
    /// Removes the row; its links go with it.
    [[nodiscard]] bool remove(qint64 id);

    /// The number after the highest of its kind and year, "KYR-FD-2025-0001". Removing the newest
    /// document frees its number. Good for 9999 documents of a kind and year.
    QString nextDocNo(DocType type, int year);
};
