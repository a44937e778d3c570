#include "core/AppPaths.h"
#include "pages/documents/DocumentModel.h"
#include "PageUnderTest.h"
#include "services/documents/DocumentService.h"
#include "services/documents/DocumentTexts.h"
#include "support/DatabaseTestCase.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDesktopServices>
#include <QFile>
#include <QSignalSpy>
#include <QUrl>

using namespace Qt::StringLiterals;

class TestDocumentArchive final : public DatabaseTestCase {
    Q_OBJECT

public slots:
    void openUrl(const QUrl& url) { m_opened += url.toLocalFile(); }

private slots:
    void init()
    {
        DatabaseTestCase::init();
        QVERIFY(TestLedger::storeCompany());
        m_opened.clear();
        QDesktopServices::setUrlHandler(u"file"_s, this, "openUrl");
        const qint64 entry = Sample::entry(u"2026-01-01"_s, u"备用金"_s, Direction::Out);
        DocumentService service;
        QVERIFY(service
                    .generateAnnualDecision(
                        { 2024, DocumentTexts::annualReportItems(2024), QDate(2025, 3, 1) })
                    .ok);
        m_fund = service.generateFundDecision(
            { Direction::Out, u"备用金"_s, { entry }, QDate(2026, 1, 5), {}, u"差旅"_s });
        QVERIFY(m_fund.ok);
        m_entry = entry;
    }

    void cleanup()
    {
        QDesktopServices::unsetUrlHandler(u"file"_s);
        DatabaseTestCase::cleanup();
    }

    void theDocumentsAreListedFilteredAndFoundPastTheFilters()
    {
        QVERIFY(TestFile::put(AppPaths::exportsDir() + u"/旧.pdf"_s, "%PDF"));
        PageUnderTest test;
        test.press(u"文书档案"_s);
        QVERIFY(test.shows(u"有 1 个 PDF 不属于任何文书（如 旧.pdf）"_s));
        QAbstractItemModelTester tester(test.page.findChild<DocumentModel*>(),
            QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(test.cells(DocumentModel::Title),
            QStringList({ u"公私资金往来决定书（备用金）"_s, u"2024年度股东决定书"_s }));
        QCOMPARE(test.cells(DocumentModel::Covered), QStringList({ u"1 笔"_s, u"—"_s }));
        QCOMPARE(test.cells(DocumentModel::File), QStringList({ u"正常"_s, u"正常"_s }));
        test.type(u"关键字"_s, u" 差旅 "_s);
        QCOMPARE(test.cells(DocumentModel::Number), QStringList { u"KYR-FD-2026-0001"_s });
        qobject_cast<QComboBox*>(test.field(u"年份"_s))->setCurrentText(u"2024 年"_s);
        QVERIFY(test.shows(u"没有符合条件的文书"_s));
        test.press(u"清除筛选"_s);
        QCOMPARE(test.cells(DocumentModel::Number).size(), 2);
        qobject_cast<QComboBox*>(test.field(u"类型"_s))->setCurrentIndex(1);
        QCOMPARE(test.cells(DocumentModel::Number), QStringList { u"KYR-ND-2024-0001"_s });
        test.navigate({ { u"docId"_s, m_fund.docId } });
        QCOMPARE(test.table()->currentIndex().siblingAtColumn(0).data().toString(), m_fund.docNo);
        test.navigate({ { u"docId"_s, 99 } });
        QVERIFY(test.shows(u"要查看的文书已不存在。"_s));
    }

    void theCoveredEntriesOpenInTheLedger()
    {
        PageUnderTest test;
        test.navigate({ { u"docId"_s, m_fund.docId } });
        QSignalSpy asked(&test.page, &IPage::navigateRequested);
        test.press(u"查看覆盖流水"_s);
        QCOMPARE(asked.first().at(0).value<PageId>(), PageId::Ledger);
        QCOMPARE(asked.first().at(1).toMap().value(u"txIds"_s).toList(),
            QVariantList { QVariant(m_entry) });
        QCOMPARE(TestDatabase::run({ u"DELETE FROM transactions"_s }), QString());
        test.navigate({});
        QCOMPARE(test.cells(DocumentModel::Covered).first(), u"0 笔（已删 1）"_s);
        QVERIFY(!test.button(u"查看覆盖流水"_s)->isEnabled());
    }

    void aMissingFileIsWrittenAgainAndOpened()
    {
        QVERIFY(QFile::remove(m_fund.filePath));
        PageUnderTest test;
        test.navigate({ { u"docId"_s, m_fund.docId } });
        QCOMPARE(test.cells(DocumentModel::File).first(), u"缺失"_s);
        ModalAnswerer answers(u"取消"_s);
        answers.expectButton(u"重新写出"_s);
        QTest::keyClick(test.table(), Qt::Key_Return);
        QVERIFY(m_opened.isEmpty());
        test.press(u"打开"_s);
        QCOMPARE(m_opened, QStringList { m_fund.filePath });
        QCOMPARE(test.cells(DocumentModel::File).first(), u"正常"_s);
    }

    void aFileThatShowsSomethingElseIsAskedAbout()
    {
        QVERIFY(TestFile::put(m_fund.filePath, "%PDF of another document"));
        PageUnderTest test;
        test.navigate({ { u"docId"_s, m_fund.docId } });
        ModalAnswerer answers(u"取消"_s);
        answers.expectButton(u"仍然打开"_s);
        test.press(u"打开"_s);
        QCOMPARE(answers.seen().first().title, u"文件与存档不一致"_s);
        QVERIFY(m_opened.isEmpty());
        test.press(u"打开"_s);
        QCOMPARE(m_opened, QStringList { m_fund.filePath });
    }

    void theConsequencesAreToldBeforeADocumentIsRemoved()
    {
        PageUnderTest test;
        test.navigate({ { u"docId"_s, m_fund.docId } });
        ModalAnswerer answers(u"取消"_s);
        answers.expectButton(u"删除"_s);
        QTest::keyClick(test.table(), Qt::Key_Delete);
        QVERIFY(QFile::exists(m_fund.filePath));
        const QString told = answers.seen().first().text;
        QVERIFY(told.contains(u"已经签名的文书请勿删除"_s));
        QVERIFY(told.contains(u"覆盖的 1 笔流水"_s));
        QVERIFY(told.contains(u"编号 KYR-FD-2026-0001 会被下一份同类文书再次使用"_s));
        QVERIFY(TestDatabase::refuse(u"DELETE ON documents"_s));
        answers.expectButton(u"确定"_s);
        test.press(u"删除"_s);
        QCOMPARE(answers.seen().last().title, u"无法删除"_s);
        QVERIFY(QFile::exists(m_fund.filePath));
        QCOMPARE(test.cells(DocumentModel::Number).size(), 2);
        QCOMPARE(TestDatabase::run({ u"DROP TRIGGER refuse"_s }), QString());
        answers.expectButton(u"删除"_s);
        test.press(u"删除"_s);
        QVERIFY(!QFile::exists(m_fund.filePath));
        QCOMPARE(test.cells(DocumentModel::Number), QStringList { u"KYR-ND-2024-0001"_s });
    }

    void aDocumentIsDrawnUpAgainAfterAQuestion()
    {
        QCOMPARE(TestDatabase::run({ u"UPDATE company_profile SET shareholder_name = '王敏'"_s }),
            QString());
        PageUnderTest test;
        test.navigate({ { u"docId"_s, m_fund.docId } });
        ModalAnswerer answers(u"重新生成"_s);
        test.press(u"重新生成"_s);
        QVERIFY(answers.seen().first().text.contains(u"已经签名的文书请勿重新生成"_s));
        QVERIFY(TestDatabase::row(u"SELECT content_html FROM documents ORDER BY id DESC"_s)
                    .contains(u"王敏"_s));
    }

private:
    QStringList m_opened;
    DocumentResult m_fund;
    qint64 m_entry = 0;
};

static const RegisteredTest<TestDocumentArchive> registered;

#include "TestDocumentArchive.moc"
