#include "db/ProfileDao.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto profileColumns = std::to_array<Column<CompanyProfile>>({
    column<&CompanyProfile::companyName>(u"company_name"),
    column<&CompanyProfile::creditCode>(u"credit_code"),
    column<&CompanyProfile::shareholderName>(u"shareholder_name"),
    column<&CompanyProfile::bankName>(u"bank_name"),
    column<&CompanyProfile::bankAccount>(u"bank_account"),
    column<&CompanyProfile::address>(u"address"),
    column<&CompanyProfile::phone>(u"phone"),
    column<&CompanyProfile::largeAmountFen>(u"large_amount_fen"),
    column<&CompanyProfile::frequentWindowDays>(u"frequent_window_days"),
    column<&CompanyProfile::frequentCount>(u"frequent_count"),
    column<&CompanyProfile::passwordEnabled>(u"password_enabled"),
    column<&CompanyProfile::passwordHash>(u"password_hash"),
    column<&CompanyProfile::passwordSalt>(u"password_salt"),
    column<&CompanyProfile::disclaimerVersion>(u"disclaimer_version"),
    column<&CompanyProfile::disclaimerConfirmedAt>(u"disclaimer_confirmed_at"),
    column<&CompanyProfile::lastBackupAt>(u"last_backup_at"),
    column<&CompanyProfile::themeMode>(u"theme_mode"),
    column<&CompanyProfile::createdAt>(u"created_at"),
    column<&CompanyProfile::updatedAt>(u"updated_at"),
});

} // namespace

std::optional<CompanyProfile> ProfileDao::find()
{
    return readOne<CompanyProfile>(
        profileColumns, u"SELECT * FROM company_profile WHERE id = 1"_s, {});
}

CompanyProfile ProfileDao::load()
{
    return find().value_or(CompanyProfile());
}

bool ProfileDao::save(const CompanyProfile& profile)
{
    return updateRow(
        u"UPDATE company_profile SET company_name = :company_name, credit_code = :credit_code, "
        "shareholder_name = :shareholder_name, bank_name = :bank_name, bank_account = "
        ":bank_account, address = :address, phone = :phone, large_amount_fen = :large_amount_fen, "
        "frequent_window_days = :frequent_window_days, frequent_count = :frequent_count WHERE id = "
        "1"_s,
        {
            { u":company_name"_s, notNull(profile.companyName) },
            { u":credit_code"_s, profile.creditCode },
            { u":shareholder_name"_s, notNull(profile.shareholderName) },
            { u":bank_name"_s, profile.bankName },
            { u":bank_account"_s, profile.bankAccount },
            { u":address"_s, profile.address },
            { u":phone"_s, profile.phone },
            { u":large_amount_fen"_s, profile.largeAmountFen },
            { u":frequent_window_days"_s, profile.frequentWindowDays },
            { u":frequent_count"_s, profile.frequentCount },
        });
}

bool ProfileDao::confirmDisclaimer(const QString& version)
{
    return updateRow(
        u"UPDATE company_profile SET disclaimer_version = :v, disclaimer_confirmed_at = :t "
        "WHERE id = 1"_s,
        { { u":v"_s, version }, { u":t"_s, TextRules::currentTimestamp() } });
}

bool ProfileDao::setPassword(bool enabled, const QString& hash, const QString& salt)
{
    return updateRow(
        u"UPDATE company_profile SET password_enabled = :e, password_hash = :h, password_salt = :s "
        "WHERE id = 1"_s,
        { { u":e"_s, enabled ? 1 : 0 }, { u":h"_s, hash }, { u":s"_s, salt } });
}

bool ProfileDao::setLastBackupAt(const QDateTime& time)
{
    return updateRow(u"UPDATE company_profile SET last_backup_at = :t WHERE id = 1"_s,
        { { u":t"_s, TextRules::timestampText(time) } });
}

bool ProfileDao::setThemeMode(const QString& mode)
{
    return updateRow(u"UPDATE company_profile SET theme_mode = :m WHERE id = 1"_s,
        { { u":m"_s, notNull(mode) } });
}

bool ProfileDao::updateRow(const QString& sql, const Bindings& bindings)
{
    QSqlQuery query = newQuery();
    if (!run(query, sql, bindings))
        return false;
    if (query.numRowsAffected() > 0)
        return true;
    qWarning("The profile row is missing: nothing was saved");
    return fail(u"公司档案记录不存在，未能保存"_s);
}
