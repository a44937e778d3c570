#include "widgets/SectionTitle.h"

#include "widgets/TextRole.h"

SectionTitle::SectionTitle(const QString& text, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setTextRole(this, TextRole::SectionTitle);
}
