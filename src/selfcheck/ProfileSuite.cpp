#include "db/ProfileDao.h"
#include "selfcheck/CheckDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Suites.h"

using namespace Qt::StringLiterals;

namespace {

void checkValues(const CompanyProfile& profile, Findings& findings)
{
    findings.expect(
        profile.largeAmountFen >= 0 && profile.frequentWindowDays > 0 && profile.frequentCount > 0,
        u"风险提醒标准超出范围"_s);
    findings.expect(profile.themeMode == u"light" || profile.themeMode == u"dark",
        u"外观设置无法识别：%1"_s.arg(profile.themeMode));
    if (profile.passwordEnabled)
        findings.expect(
            profile.passwordHash.startsWith(u"scrypt$"_s) && !profile.passwordSalt.isEmpty(),
            u"启动密码的记录不完整"_s);
}

} // namespace

void Suites::profile(Findings& findings)
{
    ProfileDao profiles;
    const std::optional<CompanyProfile> stored = profiles.find();
    if (!findings.expect(stored.has_value(), u"公司档案无法读取：%1"_s.arg(profiles.lastError())))
        return;
    findings.expect(CheckDao().number(u"SELECT COUNT(*) FROM company_profile"_s).value_or(0) == 1,
        u"公司档案应当只有一份"_s);
    checkValues(*stored, findings);

    CompanyProfile changed = *stored;
    changed.companyName = u"自检 <公司> '%1'"_s;
    changed.largeAmountFen += 1;
    if (!findings.expect(
            profiles.save(changed), u"公司档案无法保存：%1"_s.arg(profiles.lastError())))
        return;
    const CompanyProfile read = profiles.load();
    changed.updatedAt = read.updatedAt;
    findings.expect(read == changed, u"公司档案保存后读回不一致"_s);
}
