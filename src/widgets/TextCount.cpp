#include "widgets/TextCount.h"

#include "core/TextRules.h"
#include "widgets/TextRole.h"

using namespace Qt::StringLiterals;

TextCount::TextCount(int limit, QWidget* parent)
    : QLabel(parent)
    , m_limit(limit)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setCounted({});
    // Wide enough from the start, so that the field beside it keeps its width.
    ensurePolished();
    setMinimumWidth(fontMetrics().horizontalAdvance(u"%1 / %1"_s.arg(m_limit)));
}

void TextCount::setCounted(const QString& text)
{
    const qsizetype count = TextRules::characterCount(QStringView(text).trimmed());
    setText(u"%1 / %2"_s.arg(QString::number(count), QString::number(m_limit)));
    setTextRole(this, count > m_limit ? TextRole::Danger : TextRole::Meta);
}
