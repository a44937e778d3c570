#include "pages/IPage.h"

IPage::IPage(const QString& title, QWidget* parent)
    : QWidget(parent)
    , m_title(title)
{
}

void IPage::refresh() { }

void IPage::applyNavParams(const NavParams&) { }

QWidget* IPage::headerActions()
{
    return nullptr;
}
