#include "db/LinkDao.h"
#include "db/VoucherDao.h"
#include "pages/vouchers/VoucherCard.h"
#include "pages/vouchers/VoucherCardGrid.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"
#include "theme/Theme.h"
#include "vouchers_page/ArchiveSample.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

VoucherCardData sample(qint64 id, const QString& name)
{
    VoucherCardData data;
    data.voucher.id = id;
    data.voucher.name = name;
    data.voucher.voucherType = VoucherType::Invoice;
    data.voucher.voucherDate = QDate(2026, 2, 3);
    return data;
}

QString linkLine(const VoucherCard& card)
{
    return card.findChild<QLabel*>(u"links"_s)->text();
}

QString hex(Token token)
{
    return Theme::instance().hex(token);
}

QString projectLink(const QString& id, const QString& name)
{
    return u"<a href='project:%1' style='color:%2;'>%3</a>"_s.arg(id, hex(Token::Link), name);
}

} // namespace

class TestVoucherCards final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void theCardTellsWhatTheVoucherIs()
    {
        VoucherCard card;
        VoucherCardData data = sample(5, TestLedger::hostileName);
        card.showVoucher(data);
        QCOMPARE(card.findChild<QLabel*>(u"name"_s)->text(), TestLedger::hostileName);
        QCOMPARE(card.findChild<QLabel*>(u"name"_s)->textFormat(), Qt::PlainText);
        QCOMPARE(card.findChild<QLabel*>(u"meta"_s)->text(), u"发票票据 · 2026-02-03"_s);
        QCOMPARE(linkLine(card),
            u"关联：<span style='color:%1;'>未关联</span>"_s.arg(hex(Token::WarningText)));
        data.voucher.voucherDate = {};
        card.showVoucher(data);
        QCOMPARE(card.findChild<QLabel*>(u"meta"_s)->text(), u"发票票据 · 无日期"_s);
    }

    void linksAreEscapedAndFollowTheTheme()
    {
        VoucherCard card;
        VoucherCardData data = sample(5, u"回单"_s);
        data.projects = { { 3, TestLedger::hostileName }, { 4, u"乙"_s } };
        data.transactionIds = { 9 };
        card.showVoucher(data);
        const auto expected = [](const QString& more) {
            return u"关联："_s + projectLink(u"3"_s, u"&lt;b&gt;%1&amp;&quot;"_s) + u"、"_s
                + projectLink(u"4"_s, u"乙"_s)
                + u"、<a href='tx:9' style='color:%1;'>流水#9%2</a>"_s.arg(hex(Token::Link), more);
        };
        QCOMPARE(linkLine(card), expected({}));
        data.transactionIds = { 9, 11, 12 };
        card.showVoucher(data);
        Theme::instance().apply(ThemeMode::Dark);
        QCOMPARE(linkLine(card), expected(u" 等3笔"_s));
        Theme::instance().apply(ThemeMode::Light);
        QCOMPARE(linkLine(card), expected(u" 等3笔"_s));
    }

    void buttonsAndLinksTellTheirTarget()
    {
        VoucherCard card;
        VoucherCardData data = sample(5, u"电费发票"_s);
        data.projects = { { 3, u"甲"_s } };
        data.transactionIds = { 9, 11 };
        card.showVoucher(data);
        QVERIFY(Hands::show(card));
        QStringList names;
        QSignalSpy preview(&card, &VoucherCard::previewRequested);
        QSignalSpy folder(&card, &VoucherCard::folderRequested);
        QSignalSpy edit(&card, &VoucherCard::editRequested);
        QSignalSpy remove(&card, &VoucherCard::deleteRequested);
        QSignalSpy unlink(&card, &VoucherCard::unlinkRequested);
        QList<QSignalSpy*> spies { &preview, &folder, &edit, &remove, &unlink };
        for (auto* button : card.findChildren<QPushButton*>()) {
            names += button->accessibleName();
            button->click();
            QCOMPARE(spies.takeFirst()->takeFirst().at(0).toLongLong(), 5);
        }
        QCOMPARE(names.join(u','),
            u"预览 电费发票,文件夹 电费发票,编辑 电费发票,删除 电费发票,移除关联 电费发票"_s);
        QSignalSpy quick(&card, &VoucherCard::quickPreviewRequested);
        card.findChild<QAbstractButton*>(u"thumbnail"_s)->click();
        QCOMPARE(quick.count(), 1);

        QSignalSpy projects(&card, &VoucherCard::projectLinkClicked);
        QSignalSpy entries(&card, &VoucherCard::txLinkClicked);
        auto* links = card.findChild<QLabel*>(u"links"_s);
        card.findChild<QPushButton*>()->setFocus();
        links->setFocus(Qt::TabFocusReason);
        QTest::keyClick(links, Qt::Key_Return);
        QTest::keyClick(links, Qt::Key_Tab);
        QTest::keyClick(links, Qt::Key_Return);
        QCOMPARE(projects.value(0).value(0).toLongLong(), 3);
        QCOMPARE(entries.value(0).value(0).toLongLong(), 9);
    }

    void linksOfAPageAreReadInTheirOrder()
    {
        const qint64 first = TestLedger::addProject(u"甲"_s);
        const qint64 second = TestLedger::addProject(u"乙"_s);
        const qint64 contract = TestLedger::addContract(first, u"合同"_s);
        const qint64 linked = ArchiveSample::add(u"凭证"_s, 3, second);
        const qint64 entry = TestLedger::add(
            TestLedger::entry(u"2026-02-03"_s, Category::BusinessIncome, Direction::In));
        LinkDao links;
        QVERIFY(links.link(SourceType::Voucher, linked, TargetType::Transaction, entry)
            && links.link(SourceType::Voucher, linked, TargetType::Project, first)
            && links.link(SourceType::Voucher, linked, TargetType::Contract, contract));
        const qint64 bare = ArchiveSample::add(u"另一张"_s, 3, first);
        QVERIFY(links.unlinkAllFromSource(SourceType::Voucher, bare));
        const auto page = VoucherLinkSummaries::of(VoucherDao().search({}));
        QCOMPARE(page.size(), 2);
        QCOMPARE(VoucherLinkSummaries::text(page.at(0)), u"未关联"_s);
        QCOMPARE(
            VoucherLinkSummaries::text(page.at(1)), u"项目：乙；项目：甲；合同：合同；流水 1 笔"_s);
        QCOMPARE(page.at(1).transactionIds, QList<qint64> { entry });
    }

    void linksThatCannotBeReadAreNotCalledMissing()
    {
        ArchiveSample::add(u"凭证"_s, 3, TestLedger::addProject(u"甲"_s));
        const QList<Voucher> vouchers = VoucherDao().search({});
        QCOMPARE(TestDatabase::run({ u"ALTER TABLE contracts RENAME TO gone"_s }), u""_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"SQL error: .*contracts"_s));
        const auto page = VoucherLinkSummaries::of(vouchers);
        QVERIFY(!page.at(0).isUnlinked());
        QCOMPARE(VoucherLinkSummaries::text(page.at(0)), u"读取失败"_s);
    }

    void aLargeGridHasOnlyTheCardsInSight()
    {
        QList<VoucherCardData> vouchers;
        for (int i = 1; i <= 5000; ++i)
            vouchers += sample(i, u"凭证 %1"_s.arg(i));
        VoucherCardGrid grid;
        grid.resize(700, 500);
        grid.setVouchers(vouchers);
        QVERIFY(Hands::show(grid));
        const auto visibleNames = [&] {
            QStringList names;
            for (const auto* card : grid.findChildren<VoucherCard*>()) {
                if (!card->visibleRegion().isEmpty())
                    names += card->accessibleName();
            }
            return names;
        };
        grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum());
        QTRY_VERIFY(visibleNames().contains(u"凭证 5000"_s));
        QVERIFY(grid.findChildren<VoucherCard*>().size() < 30);
        grid.verticalScrollBar()->setValue(0);
        QTRY_VERIFY(visibleNames().contains(u"凭证 1"_s));

        // Tab walks on through cards that were not there before, in their order.
        grid.setFocus();
        QStringList walked;
        for (int stop = 0; stop < 100; ++stop) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const QString name = QApplication::focusWidget()->accessibleName();
            if (name.startsWith(u"预览"_s))
                walked += name;
        }
        QCOMPARE(walked.size(), 20);
        for (int i = 0; i < walked.size(); ++i)
            QCOMPARE(walked.at(i), u"预览 凭证 %1"_s.arg(i + 1));
    }
};

static const RegisteredTest<TestVoucherCards> registered;

#include "TestVoucherCards.moc"
