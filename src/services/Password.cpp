#include "services/Password.h"

#include "core/TextRules.h"

#include <QByteArray>
#include <QStringList>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <algorithm>
#include <bit>

using namespace Qt::StringLiterals;

namespace Password {

namespace {

constexpr qsizetype keyLength = 32;
constexpr qsizetype saltLength = 16;
constexpr qsizetype shortestPassword = 6;

struct Cost {
    quint64 n = 0;
    quint64 r = 0;
    quint64 p = 0;

    quint64 memory() const { return 128 * n * r; }
    // The profile row is a file that others may have edited: it must not be able to make the
    // program hang or eat the machine's memory.
    bool isBearable() const
    {
        return std::has_single_bit(n) && n >= 2 && n <= (1U << 20) && r >= 1 && r <= 16 && p >= 1
            && p <= 4;
    }
};

constexpr Cost currentCost { .n = 1U << 17, .r = 8, .p = 1 };

const unsigned char* unsignedData(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

unsigned char* unsignedData(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

// An empty array when the derivation failed.
QByteArray derivedKey(const QString& password, const QByteArray& salt, const Cost& cost)
{
    // Two keyboards may compose the same letter differently.
    QByteArray secret = password.normalized(QString::NormalizationForm_C).toUtf8();
    QByteArray key(keyLength, Qt::Uninitialized);
    const quint64 memoryLimit = cost.memory() + (cost.memory() >> 1) + (1U << 20);
    const int derived = EVP_PBE_scrypt(secret.constData(), static_cast<std::size_t>(secret.size()),
        unsignedData(std::as_const(salt)), static_cast<std::size_t>(salt.size()), cost.n, cost.r,
        cost.p, memoryLimit, unsignedData(key), static_cast<std::size_t>(key.size()));
    OPENSSL_cleanse(secret.data(), static_cast<std::size_t>(secret.size()));
    return derived == 1 ? key : QByteArray();
}

struct StoredKey {
    Cost cost;
    QByteArray key;
};

std::optional<StoredKey> parsedHash(const QString& hash)
{
    const QStringList parts = hash.split(u'$');
    if (parts.size() != 5 || parts.at(0) != u"scrypt"_s)
        return {};
    const StoredKey stored { .cost = { .n = parts.at(1).toULongLong(),
                                 .r = parts.at(2).toULongLong(),
                                 .p = parts.at(3).toULongLong() },
        .key = QByteArray::fromHex(parts.at(4).toLatin1()) };
    if (!stored.cost.isBearable() || stored.key.size() != keyLength)
        return {};
    return stored;
}

} // namespace

std::optional<Secret> makeSecret(const QString& password)
{
    QByteArray salt(saltLength, Qt::Uninitialized);
    if (RAND_bytes(unsignedData(salt), static_cast<int>(salt.size())) != 1)
        return {};
    const QByteArray key = derivedKey(password, salt, currentCost);
    if (key.isEmpty())
        return {};
    return Secret { .hash = u"scrypt$%1$%2$%3$%4"_s.arg(QString::number(currentCost.n),
                        QString::number(currentCost.r), QString::number(currentCost.p),
                        QString::fromLatin1(key.toHex())),
        .salt = QString::fromLatin1(salt.toHex()) };
}

Check verify(const QString& password, const Secret& secret)
{
    const std::optional<StoredKey> stored = parsedHash(secret.hash);
    const QByteArray salt = QByteArray::fromHex(secret.salt.toLatin1());
    if (!stored || salt.size() != saltLength)
        return Check::Wrong;
    const QByteArray key = derivedKey(password, salt, stored->cost);
    if (key.size() != keyLength)
        return Check::CouldNotCheck;
    return CRYPTO_memcmp(key.constData(), stored->key.constData(), keyLength) == 0 ? Check::Fits
                                                                                   : Check::Wrong;
}

int waitSecondsAfter(int failures)
{
    constexpr int freeTries = 5;
    constexpr int firstWait = 5;
    constexpr int longestWait = 300;
    if (failures < freeTries)
        return 0;
    const int doublings = std::min(failures - freeTries, 6);
    return std::min(firstWait << doublings, longestWait);
}

std::optional<FormProblem<Field>> firstProblem(const QString& password, const QString& repeated)
{
    const QString title = u"密码不符合要求"_s;
    if (TextRules::characterCount(password) < shortestPassword)
        return FormProblem<Field> { Field::New, title, u"密码至少需要 6 个字符。"_s };
    if (TextRules::isBlank(password))
        return FormProblem<Field> { Field::New, title, u"密码不能只由空格组成。"_s };
    if (password != repeated)
        return FormProblem<Field> { Field::Repeated, title, u"两次输入的密码不一致。"_s };
    return {};
}

} // namespace Password
