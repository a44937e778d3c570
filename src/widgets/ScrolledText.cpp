#include "widgets/ScrolledText.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

namespace ScrolledText {

namespace {

// A word without blanks, such as a path, may be somewhat wider than the text was meant to be.
constexpr int widestWord = 2;

} // namespace

QWidget* bounded(QLabel* label, int width, int mostHeight)
{
    label->ensurePolished();
    const bool isLow
        = (label->wordWrap() ? label->heightForWidth(width) : label->sizeHint().height())
        <= mostHeight;
    if (isLow && label->minimumSizeHint().width() <= widestWord * width)
        return label;
    auto* frame = new QScrollArea(label->parentWidget());
    frame->setFrameShape(QFrame::NoFrame);
    frame->setWidgetResizable(true);
    frame->setAccessibleName(label->text().left(qsizetype(widestWord) * 100));
    // The label gets what the bar leaves of the frame.
    label->setMinimumWidth(0);
    frame->setMinimumWidth(width + frame->verticalScrollBar()->sizeHint().width());
    frame->setFixedHeight(mostHeight);
    frame->setWidget(label);
    return frame;
}

} // namespace ScrolledText
