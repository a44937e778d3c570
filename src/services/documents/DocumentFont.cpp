#include "services/documents/DocumentFont.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace DocumentFont {

QFont text()
{
    return sized(10.5);
}

QFont sized(qreal points)
{
    registerSubstitutes();
    QFont font(u"Microsoft YaHei"_s);
    font.setPointSizeF(points);
    return font;
}

void registerSubstitutes()
{
    // The first two in this order: in a PDF, glyphs of the first keep their own code points, so
    // that a document's text can be searched and copied.
    const QStringList substitutes { u"WenQuanYi Micro Hei"_s, u"Noto Sans CJK SC"_s,
        u"PingFang SC"_s };
    QFont::insertSubstitutions(u"Microsoft YaHei"_s, substitutes);
    QFont::insertSubstitutions(
        u"Microsoft YaHei UI"_s, QStringList { u"Microsoft YaHei"_s } + substitutes);
}

} // namespace DocumentFont
