#include "widgets/TextCount.h"

#include "core/TextRules.h"
#include "widgets/Painting.h"
#include "widgets/TextRole.h"

#include <QFontMetrics>

using namespace Qt::StringLiterals;

TextCount::TextCount(int limit, QWidget* parent)
    : QLabel(parent)
    , m_limit(limit)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setCounted({});
    // Wide enough for the larger mark of too much, so that the field beside it keeps its width.
    const QFontMetrics metrics(Painting::sized(font(), 13));
    setMinimumWidth(metrics.horizontalAdvance(u"%1 / %1"_s.arg(m_limit)) + 2);
}

void TextCount::setCounted(const QString& text)
{
    const qsizetype count = TextRules::characterCount(TextRules::asStored(text));
    setText(u"%1 / %2"_s.arg(QString::number(count), QString::number(m_limit)));
    setTextRole(this, count > m_limit ? TextRole::Danger : TextRole::Meta);
}
