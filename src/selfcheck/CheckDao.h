#pragma once

#include "db/BaseDao.h"

#include <QStringList>

/// Questions of the self-check that no store answers.
class CheckDao final : public BaseDao {
public:
    /// The number in the first cell; nothing when the statement failed.
    std::optional<qint64> number(const QString& sql);

    /// The first column; nothing when the statement failed.
    std::optional<QStringList> texts(const QString& sql);
};
