#include "pages/documents/DocumentPage.h"

#include "core/Codes.h"
#include "db/ProfileDao.h"
#include "pages/documents/AnnualForm.h"
#include "pages/documents/DocumentArchive.h"
#include "pages/documents/FundForm.h"
#include "pages/documents/IndependenceForm.h"
#include "widgets/Banner.h"
#include "widgets/SegmentedControl.h"

#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

DocumentPage::DocumentPage(QWidget* parent)
    : IPage(u"文书中心"_s, parent)
    , m_profile(new Banner(BannerKind::Warning, this))
    , m_segments(new SegmentedControl(u"文书类型"_s, this))
    , m_stack(new QStackedWidget(this))
    , m_annual(new AnnualForm(m_stack))
    , m_fund(new FundForm(m_stack))
    , m_independence(new IndependenceForm(m_stack))
    , m_archive(new DocumentArchive(m_stack))
{
    setObjectName(u"DocumentPage"_s);
    for (const DocType kind : allValues<DocType>())
        m_segments->addSegment(labelOf(kind));
    m_segments->addSegment(u"文书档案"_s);
    for (QWidget* view : { static_cast<QWidget*>(m_annual), static_cast<QWidget*>(m_fund),
             static_cast<QWidget*>(m_independence), static_cast<QWidget*>(m_archive) })
        m_stack->addWidget(view);
    m_profile->setAction(u"填写公司档案"_s);
    m_profile->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 16, 24, 16);
    column->setSpacing(12);
    column->addWidget(m_profile);
    column->addWidget(m_segments, 0, Qt::AlignLeft);
    column->addWidget(m_stack, 1);

    connect(m_segments, &SegmentedControl::currentChanged, this, [this](int segment) {
        m_stack->setCurrentIndex(segment);
        refreshSegment();
    });
    connect(m_profile, &Banner::actionTriggered, this,
        [this] { emit navigateRequested(PageId::Settings, {}); });
    connect(m_archive, &DocumentArchive::entriesRequested, this, &DocumentPage::showEntries);
}

void DocumentPage::refresh()
{
    ProfileDao profiles;
    const auto profile = profiles.find();
    const QString problem = profile ? DocumentRules::firstProblem(*profile)
                                    : u"公司档案无法读取：%1"_s.arg(profiles.lastError());
    m_profile->setText(problem);
    m_profile->setVisible(!problem.isEmpty());
    refreshSegment();
}

void DocumentPage::refreshSegment()
{
    switch (m_segments->currentIndex()) {
    case Annual:
        return m_annual->refresh();
    case Fund:
        return m_fund->refresh();
    case Independence:
        return m_independence->refresh();
    default:
        return m_archive->refresh();
    }
}

void DocumentPage::applyNavParams(const NavParams& params)
{
    // Switching first: what is asked for is for the refresh that follows.
    if (params.value(u"fund"_s).toBool()) {
        QList<qint64> ids;
        for (const QVariant& id : params.value(u"txIds"_s).toList())
            ids += id.toLongLong();
        m_segments->setCurrentIndex(Fund);
        m_fund->request(ids);
        m_fund->focusFirstField();
    } else if (params.contains(u"year"_s)) {
        m_annual->setYear(params.value(u"year"_s).toInt());
        m_segments->setCurrentIndex(Annual);
        m_annual->focusFirstField();
    } else if (params.contains(u"docId"_s)) {
        m_segments->setCurrentIndex(Archive);
        m_archive->request(params.value(u"docId"_s).toLongLong());
    } else if (params.contains(u"kind"_s)) {
        const auto kind = fromCode<DocType>(params.value(u"kind"_s).toString());
        m_segments->setCurrentIndex(static_cast<int>(kind));
        if (auto* form = qobject_cast<DocumentForm*>(m_stack->currentWidget()))
            form->focusFirstField();
    }
}

void DocumentPage::showEntries(const QList<qint64>& entryIds)
{
    QVariantList ids;
    for (const qint64 id : entryIds)
        ids += id;
    emit navigateRequested(PageId::Ledger, { { u"txIds"_s, ids } });
}
