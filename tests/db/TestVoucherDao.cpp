#include "db/TestVoucherDao.h"

#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/VoucherDao.h"
#include "support/TestDatabase.h"

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::rows;

Q_DECLARE_METATYPE(VoucherFilter)

namespace {

using enum VoucherFilter::LinkState;

Voucher distinctVoucher()
{
    return { .name = u"回单"_s,
        .voucherType = VoucherType::Delivery,
        .voucherDate = QDate(2025, 1, 2),
        .originalFileName = u"原文件.PDF"_s,
        .storedPath = u"voucher_assets/2025/01/x.pdf"_s,
        .fileExt = u"pdf"_s,
        .fileSize = 9'000'000'000,
        .sha256 = u"abc123"_s,
        .note = u" 备注"_s };
}

bool add(const QString& name, VoucherType type, QDate date, const QString& file = {},
    const QString& note = {})
{
    Voucher voucher { .name = name,
        .voucherType = type,
        .voucherDate = date,
        .originalFileName = file,
        .note = note };
    return VoucherDao().insert(voucher);
}

bool link(SourceType source, qint64 sourceId, TargetType target, qint64 targetId)
{
    return LinkDao().link(source, sourceId, target, targetId);
}

// The first is linked to a project, the second to an entry, the others to nothing.
bool addArchive()
{
    return add(u"一月电费"_s, VoucherType::Invoice, QDate(2025, 1, 31))
        && add(u"回单"_s, VoucherType::BankReceipt, QDate(2025, 2, 1), u"电子.pdf"_s)
        && add(u"聊天"_s, VoucherType::Chat, QDate(2025, 1, 31), {}, u"水电 100%"_s)
        && add(u"合同"_s, VoucherType::Contract, QDate(2024, 1, 1))
        && link(SourceType::Voucher, 1, TargetType::Project, 7)
        && link(SourceType::Voucher, 2, TargetType::Transaction, 7)
        && link(SourceType::Document, 4, TargetType::Project, 7);
}

QList<qint64> idsOf(const QList<Voucher>& vouchers)
{
    QList<qint64> ids;
    for (const Voucher& voucher : vouchers)
        ids += voucher.id;
    return ids;
}

const QString allLinks = u"SELECT source_type, source_id, target_type, target_id FROM "
                         "entity_links ORDER BY id"_s;

} // namespace

void TestVoucherDao::everyVoucherFieldIsStored()
{
    Voucher voucher = distinctVoucher();
    QVERIFY(VoucherDao().insert(voucher));
    QCOMPARE(voucher.id, qint64 { 1 });
    QCOMPARE(row(u"SELECT name, voucher_type, voucher_date, original_file_name, stored_path, "
                 "file_ext, file_size, sha256, note FROM vouchers"_s),
        u"回单|delivery|2025-01-02|原文件.PDF|voucher_assets/2025/01/x.pdf|pdf|9000000000|abc123| "
        "备注"_s);

    const auto stored = VoucherDao().findById(1);
    QVERIFY(stored);
    QCOMPARE(stored->id, qint64 { 1 });
    QCOMPARE(stored->name, voucher.name);
    QCOMPARE(stored->voucherType, voucher.voucherType);
    QCOMPARE(stored->voucherDate, voucher.voucherDate);
    QCOMPARE(stored->originalFileName, voucher.originalFileName);
    QCOMPARE(stored->storedPath, voucher.storedPath);
    QCOMPARE(stored->fileExt, voucher.fileExt);
    QCOMPARE(stored->fileSize, voucher.fileSize);
    QCOMPARE(stored->sha256, voucher.sha256);
    QCOMPARE(stored->note, voucher.note);
    QCOMPARE(stored->createdAt, row(u"SELECT created_at FROM vouchers"_s));
    QVERIFY(!VoucherDao().findById(2));
}

void TestVoucherDao::updatesLeaveTheFileAlone()
{
    Voucher voucher = distinctVoucher();
    QVERIFY(VoucherDao().insert(voucher));
    QVERIFY(VoucherDao().update({ .id = 1,
        .name = u"新名"_s,
        .voucherType = VoucherType::Chat,
        .voucherDate = QDate(2024, 3, 4),
        .storedPath = u"elsewhere"_s,
        .fileSize = 1,
        .sha256 = u"other"_s,
        .note = u" "_s }));
    QCOMPARE(row(u"SELECT name, voucher_type, voucher_date, original_file_name, stored_path, "
                 "file_ext, file_size, sha256, note FROM vouchers"_s),
        u"新名|chat|2024-03-04|原文件.PDF|voucher_assets/2025/01/x.pdf|pdf|9000000000|abc123|∅"_s);
    QVERIFY(VoucherDao().update(voucher));
    QCOMPARE(row(u"SELECT name, voucher_type, voucher_date, note FROM vouchers"_s),
        u"回单|delivery|2025-01-02| 备注"_s);
    QVERIFY(VoucherDao().remove(1));
    QCOMPARE(VoucherDao().countAll(), 0);
}

void TestVoucherDao::filtersRestrictTheSearch_data()
{
    QTest::addColumn<VoucherFilter>("filter");
    QTest::addColumn<QList<qint64>>("ids");
    const auto filterRow = [](const char* name, const VoucherFilter& filter,
                               const QList<qint64>& ids) { QTest::newRow(name) << filter << ids; };
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
        { .type = VoucherType::Invoice, .linkState = Linked, .projectId = 7, .keyword = u"电"_s },
        { 1 });
    filterRow("parts that exclude each other", { .linkState = Unlinked, .projectId = 7 }, {});
}

void TestVoucherDao::filtersRestrictTheSearch()
{
    QFETCH(VoucherFilter, filter);
    QVERIFY(addArchive());
    QTEST(idsOf(VoucherDao().search(filter)), "ids");
}

void TestVoucherDao::vouchersAreCounted()
{
    QCOMPARE(VoucherDao().countAll(), 0);
    QVERIFY(addArchive());
    QCOMPARE(VoucherDao().countAll(), 4);
    QCOMPARE(VoucherDao().countUnlinked(), 2);
}

void TestVoucherDao::filesAreKnownByTheirContent()
{
    Voucher voucher = distinctVoucher();
    QVERIFY(VoucherDao().insert(voucher));
    QVERIFY(VoucherDao().existsBySha256(u"abc123"_s));
    QVERIFY(!VoucherDao().existsBySha256(u"abc124"_s));
    QVERIFY2(VoucherDao().insert(voucher), "the same file may be archived again");
}

void TestVoucherDao::allowedPairsAreLinked_data()
{
    QTest::addColumn<SourceType>("source");
    QTest::addColumn<TargetType>("target");
    QTest::newRow("voucher to project") << SourceType::Voucher << TargetType::Project;
    QTest::newRow("voucher to contract") << SourceType::Voucher << TargetType::Contract;
    QTest::newRow("voucher to entry") << SourceType::Voucher << TargetType::Transaction;
    QTest::newRow("document to project") << SourceType::Document << TargetType::Project;
    QTest::newRow("document to entry") << SourceType::Document << TargetType::Transaction;
}

void TestVoucherDao::allowedPairsAreLinked()
{
    QFETCH(SourceType, source);
    QFETCH(TargetType, target);
    QVERIFY(link(source, 5'000'000'001, target, 6'000'000'002));
    const auto links = LinkDao().linksBySource(source, 5'000'000'001);
    QCOMPARE(links.size(), 1);
    QCOMPARE(links.first().id, qint64 { 1 });
    QCOMPARE(links.first().sourceType, source);
    QCOMPARE(links.first().sourceId, qint64 { 5'000'000'001 });
    QCOMPARE(links.first().targetType, target);
    QCOMPARE(links.first().targetId, qint64 { 6'000'000'002 });
    QCOMPARE(links.first().createdAt, row(u"SELECT created_at FROM entity_links"_s));
}

void TestVoucherDao::otherPairsAreRejected_data()
{
    QTest::addColumn<SourceType>("source");
    QTest::addColumn<qint64>("sourceId");
    QTest::addColumn<TargetType>("target");
    QTest::addColumn<qint64>("targetId");
    QTest::addColumn<QString>("pair");
    QTest::newRow("document to contract") << SourceType::Document << 3LL << TargetType::Contract
                                          << 4LL << u"document/3 -> contract/4"_s;
    QTest::newRow("from no row") << SourceType::Voucher << 0LL << TargetType::Project << 4LL
                                 << u"voucher/0 -> project/4"_s;
    QTest::newRow("to no row") << SourceType::Voucher << 3LL << TargetType::Transaction << -1LL
                               << u"voucher/3 -> transaction/-1"_s;
}

void TestVoucherDao::otherPairsAreRejected()
{
    QFETCH(SourceType, source);
    QFETCH(qint64, sourceId);
    QFETCH(TargetType, target);
    QFETCH(qint64, targetId);
    QFETCH(QString, pair);
    LinkDao dao;
    const QString line = u"Rejected entity_link combo: "_s + pair;
    QTest::ignoreMessage(QtWarningMsg, qUtf8Printable(line));
    QVERIFY(!dao.link(source, sourceId, target, targetId));
    QCOMPARE(dao.lastError(), u"非法的关联组合"_s);
    QVERIFY(rows(allLinks).isEmpty());
}

void TestVoucherDao::linkingTwiceLeavesOneRow()
{
    QVERIFY(link(SourceType::Voucher, 5, TargetType::Transaction, 9));
    QVERIFY(link(SourceType::Voucher, 5, TargetType::Transaction, 9));
    QCOMPARE(rows(allLinks), QStringList { u"voucher|5|transaction|9"_s });
    QCOMPARE(LinkDao().countVouchersFor(TargetType::Transaction, 9), 1);
}

void TestVoucherDao::linksAreUndone()
{
    QVERIFY(link(SourceType::Voucher, 5, TargetType::Transaction, 9));
    QVERIFY(link(SourceType::Voucher, 5, TargetType::Project, 9));
    QVERIFY(link(SourceType::Voucher, 6, TargetType::Transaction, 9));
    QVERIFY(link(SourceType::Document, 5, TargetType::Transaction, 9));
    QVERIFY(LinkDao().unlink(SourceType::Voucher, 5, TargetType::Transaction, 9));
    QCOMPARE(rows(allLinks),
        (QStringList { u"voucher|5|project|9"_s, u"voucher|6|transaction|9"_s,
            u"document|5|transaction|9"_s }));
    QVERIFY(LinkDao().unlinkAllFromSource(SourceType::Voucher, 5));
    QCOMPARE(rows(allLinks),
        (QStringList { u"voucher|6|transaction|9"_s, u"document|5|transaction|9"_s }));
}

void TestVoucherDao::linksAreListedInTheirOrder()
{
    QVERIFY(link(SourceType::Voucher, 5, TargetType::Transaction, 9));
    QVERIFY(link(SourceType::Voucher, 5, TargetType::Project, 2));
    QVERIFY(link(SourceType::Document, 5, TargetType::Transaction, 9));
    QVERIFY(link(SourceType::Voucher, 4, TargetType::Transaction, 9));
    QList<qint64> targets;
    for (const EntityLink& found : LinkDao().linksBySource(SourceType::Voucher, 5))
        targets += found.targetId;
    QCOMPARE(targets, (QList<qint64> { 9, 2 }));
    QStringList sources;
    for (const EntityLink& found : LinkDao().linksByTarget(TargetType::Transaction, 9))
        sources += codeOf(found.sourceType) + QString::number(found.sourceId);
    QCOMPARE(sources, (QStringList { u"voucher5"_s, u"document5"_s, u"voucher4"_s }));
    QCOMPARE(LinkDao().countVouchersFor(TargetType::Transaction, 9), 2);
}

void TestVoucherDao::fundDecisionsCoverEntries()
{
    for (const DocType type :
        { DocType::FundDecision, DocType::AnnualDecision, DocType::FundDecision }) {
        DocumentRecord document { .docType = type,
            .docNo = DocumentDao().nextDocNo(type, 2025),
            .docDate = QDate(2025, 1, 1) };
        QVERIFY(DocumentDao().insert(document));
    }
    QVERIFY(link(SourceType::Document, 1, TargetType::Transaction, 11));
    QVERIFY(link(SourceType::Document, 1, TargetType::Project, 15));
    QVERIFY(link(SourceType::Document, 2, TargetType::Transaction, 12));
    QVERIFY(link(SourceType::Document, 3, TargetType::Transaction, 11));
    QVERIFY(link(SourceType::Document, 3, TargetType::Transaction, 13));
    QVERIFY(link(SourceType::Voucher, 1, TargetType::Transaction, 14));
    LinkDao dao;
    QCOMPARE(dao.fundDecisionTransactionIds(), (QSet<qint64> { 11, 13 }));
    QCOMPARE(dao.countFundDecisionsFor(11), 2);
    QCOMPARE(dao.countFundDecisionsFor(12), 0);
    QCOMPARE(dao.countFundDecisionsFor(14), 0);
}
