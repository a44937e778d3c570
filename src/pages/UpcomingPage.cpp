#include "pages/UpcomingPage.h"

#include "widgets/EmptyState.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

UpcomingPage::UpcomingPage(const Content& content, QWidget* parent)
    : IPage(content.title, parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new EmptyState(content.icon, u"%1尚未开放"_s.arg(content.title),
        u"%1\n此功能将在后续版本中提供。"_s.arg(content.text), this));
}
