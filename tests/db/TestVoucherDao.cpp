#include "db/LinkDao.h"
#include "db/Stored.h"
#include "db/VoucherDao.h"
#include "support/DatabaseTestCase.h"

using namespace Qt::StringLiterals;
using Stored::idsOf;

Q_DECLARE_METATYPE(VoucherFilter)

namespace {

using enum VoucherFilter::LinkState;

// The first is linked to a project, the second to an entry, the others to nothing.
bool addArchive()
{
    const QList<Voucher> vouchers {
        { .name = u"一月电费"_s,
            .voucherType = VoucherType::Invoice,
            .voucherDate = QDate(2025, 1, 31),
            .sha256 = u"abc123"_s },
        { .name = u"回单"_s,
            .voucherType = VoucherType::BankReceipt,
            .voucherDate = QDate(2025, 2, 1),
            .originalFileName = u"电子.pdf"_s },
        { .name = u"聊天"_s,
            .voucherType = VoucherType::Chat,
            .voucherDate = QDate(2025, 1, 31),
            .note = u"水电 100%"_s },
        { .name = u"合同"_s,
            .voucherType = VoucherType::Contract,
            .voucherDate = QDate(2024, 1, 1) },
    };
    LinkDao links;
    return std::all_of(vouchers.begin(), vouchers.end(), Stored::add<VoucherDao, Voucher>)
        && links.link(SourceType::Voucher, 1, TargetType::Project, 7)
        && links.link(SourceType::Voucher, 2, TargetType::Transaction, 7)
        && links.link(SourceType::Document, 4, TargetType::Project, 7);
}

} // namespace

class TestVoucherDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void filtersRestrictTheSearch_data()
    {
        addColumns<VoucherFilter, QList<qint64>>("filter", "ids");
        const auto filterRow = [](const char* name, const VoucherFilter& filter,
                                   const QList<qint64>& ids) { addCase(name, filter, ids); };
        filterRow("nothing: all, latest first, then stored last", {}, { 2, 3, 1, 4 });
        filterRow("type", { .type = VoucherType::Chat }, { 3 });
        filterRow("linked to anything", { .linkState = Linked }, { 2, 1 });
        filterRow("linked to nothing", { .linkState = Unlinked }, { 3, 4 });
        filterRow("linked to the project itself", { .projectId = 7 }, { 1 });
        filterRow("no project", { .projectId = -7 }, { 2, 3, 1, 4 });
        filterRow("keyword in name, file name and note", { .keyword = u" 电 "_s }, { 2, 3, 1 });
        filterRow("blank keyword", { .keyword = u" 　"_s }, { 2, 3, 1, 4 });
        filterRow("percent sign as wildcard", { .keyword = u"一%费"_s }, { 1 });
        filterRow("all at once",
            { .type = VoucherType::Invoice,
                .linkState = Linked,
                .projectId = 7,
                .keyword = u"电"_s },
            { 1 });
        filterRow("parts that exclude each other", { .linkState = Unlinked, .projectId = 7 }, {});
    }

    void filtersRestrictTheSearch()
    {
        QFETCH(VoucherFilter, filter);
        QVERIFY(addArchive());
        QTEST(idsOf(VoucherDao().search(filter)), "ids");
    }

    void vouchersAreCounted()
    {
        QCOMPARE(VoucherDao().countAll(), 0);
        QVERIFY(addArchive());
        QCOMPARE(VoucherDao().countAll(), 4);
        QCOMPARE(VoucherDao().countUnlinked(), 2);
    }
};

static const RegisteredTest<TestVoucherDao> registered;

#include "TestVoucherDao.moc"
