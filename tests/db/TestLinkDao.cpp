#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/Stored.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/Warnings.h"

using namespace Qt::StringLiterals;
using TestDatabase::row;
using TestDatabase::rows;

namespace {

using enum SourceType;
using enum TargetType;

bool link(SourceType source, qint64 sourceId, TargetType target, qint64 targetId)
{
    return LinkDao().link(source, sourceId, target, targetId);
}

const QString allLinks = u"SELECT source_type, source_id, target_type, target_id FROM "
                         "entity_links ORDER BY id"_s;

} // namespace

class TestLinkDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void allowedPairsAreLinked()
    {
        QVERIFY(link(Voucher, 5'000'000'001, Project, 6'000'000'002)
            && link(Voucher, 5, Contract, 9) && link(Voucher, 5, Transaction, 9)
            && link(Document, 5, Project, 9) && link(Document, 5, Transaction, 8));
        QCOMPARE(rows(allLinks),
            (QStringList { u"voucher|5000000001|project|6000000002"_s, u"voucher|5|contract|9"_s,
                u"voucher|5|transaction|9"_s, u"document|5|project|9"_s,
                u"document|5|transaction|8"_s }));
        const EntityLink found = LinkDao().linksBySource(Voucher, 5'000'000'001).value(0);
        QCOMPARE(found.id, qint64 { 1 });
        QVERIFY(found.sourceType == Voucher && found.targetType == Project);
        QCOMPARE(found.sourceId, qint64 { 5'000'000'001 });
        QCOMPARE(found.targetId, qint64 { 6'000'000'002 });
        QCOMPARE(found.createdAt, row(u"SELECT created_at FROM entity_links"_s));
    }

    void otherPairsAreRejected()
    {
        LinkDao dao;
        expectWarnings({ u"Rejected entity_link combo: document/3 -> contract/4$"_s,
            u"Rejected entity_link combo: voucher/0 -> project/4$"_s,
            u"Rejected entity_link combo: voucher/3 -> transaction/-1$"_s });
        QVERIFY(!dao.link(Document, 3, Contract, 4));
        QCOMPARE(dao.lastError(), u"非法的关联组合"_s);
        QVERIFY2(!dao.link(Voucher, 0, Project, 4), "from no row");
        QVERIFY2(!dao.link(Voucher, 3, Transaction, -1), "to no row");
        QVERIFY(rows(allLinks).isEmpty());
    }

    void linkingTwiceLeavesOneRow()
    {
        QVERIFY(link(Voucher, 5, Transaction, 9) && link(Voucher, 5, Transaction, 9));
        QCOMPARE(rows(allLinks), QStringList { u"voucher|5|transaction|9"_s });
    }

    void linksAreUndone()
    {
        QVERIFY(link(Voucher, 5, Transaction, 9) && link(Voucher, 5, Project, 9)
            && link(Voucher, 6, Transaction, 9) && link(Document, 5, Transaction, 9)
            && link(Voucher, 5, Transaction, 8));
        QVERIFY(LinkDao().unlink(Voucher, 5, Transaction, 9));
        QCOMPARE(rows(allLinks),
            (QStringList { u"voucher|5|project|9"_s, u"voucher|6|transaction|9"_s,
                u"document|5|transaction|9"_s, u"voucher|5|transaction|8"_s }));
        QVERIFY(LinkDao().unlinkAllFromSource(Voucher, 5));
        QCOMPARE(rows(allLinks),
            (QStringList { u"voucher|6|transaction|9"_s, u"document|5|transaction|9"_s }));
    }

    void linksAreListedInTheirOrder()
    {
        QVERIFY(link(Voucher, 5, Transaction, 9) && link(Voucher, 5, Project, 2)
            && link(Document, 5, Transaction, 9) && link(Voucher, 4, Transaction, 9));
        QCOMPARE(Stored::idsOf(LinkDao().linksBySource(Voucher, 5)), (QList<qint64> { 1, 2 }));
        QCOMPARE(
            Stored::idsOf(LinkDao().linksByTarget(Transaction, 9)), (QList<qint64> { 1, 3, 4 }));
        QCOMPARE(LinkDao().countVouchersFor(Transaction, 9), 2);
    }

    void fundDecisionsCoverEntries()
    {
        for (const DocType type :
            { DocType::FundDecision, DocType::AnnualDecision, DocType::FundDecision })
            QVERIFY(Stored::add<DocumentDao>(DocumentRecord { .docType = type,
                .docNo = DocumentDao().nextDocNo(type, 2025),
                .docDate = QDate(2025, 1, 1) }));
        QVERIFY(link(Document, 1, Transaction, 11) && link(Document, 1, Project, 15)
            && link(Document, 2, Transaction, 12) && link(Document, 3, Transaction, 11)
            && link(Document, 3, Transaction, 13) && link(Voucher, 1, Transaction, 14));
        LinkDao dao;
        QCOMPARE(dao.fundDecisionTransactionIds(), (QSet<qint64> { 11, 13 }));
        QCOMPARE(dao.countFundDecisionsFor(11), 2);
        QCOMPARE(dao.countFundDecisionsFor(12), 0);
        QCOMPARE(dao.countFundDecisionsFor(14), 0);
    }
};

static const RegisteredTest<TestLinkDao> registered;

#include "TestLinkDao.moc"
