#pragma once

#include <QCollator>

/// Sorts texts as a Chinese reader looks for them: by pinyin, and numbers within by their value.
inline QCollator chineseCollator()
{
    QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
    collator.setNumericMode(true);
    return collator;
}
