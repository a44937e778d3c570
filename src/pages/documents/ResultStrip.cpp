#include "pages/documents/ResultStrip.h"

#include "db/DocumentDao.h"
#include "pages/documents/DocumentActions.h"
#include "services/documents/DocumentService.h"
#include "widgets/Banner.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ResultStrip::ResultStrip(QWidget* parent)
    : QWidget(parent)
    , m_banner(new Banner(BannerKind::Success, this))
{
    setObjectName(u"ResultStrip"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_banner);
    m_banner->setClosable(true);
    connect(m_banner, &Banner::closed, this, &QWidget::hide);

    using Action = void (*)(QWidget*, qint64);
    const auto add = [this](const QString& text, Action action) {
        connect(m_banner->addButton(text), &QPushButton::clicked, this,
            [this, action] { action(this, m_docId); });
    };
    add(u"打开"_s, DocumentActions::open);
    add(u"打印"_s, DocumentActions::print);
    add(u"文件夹"_s, DocumentActions::showInFolder);
    hide();
}

void ResultStrip::showResult(const DocumentResult& result)
{
    m_docId = result.docId;
    m_banner->setText(
        u"已生成文书 %1。请打印并由股东签名，再把签名件扫描上传到「凭证归档」。"_s.arg(
            result.docNo));
    m_banner->show();
    show();
}

void ResultStrip::refresh()
{
    DocumentDao documents;
    if (m_docId > 0 && !documents.findById(m_docId) && documents.lastError().isEmpty())
        hide();
}
