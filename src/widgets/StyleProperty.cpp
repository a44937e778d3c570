#include "widgets/StyleProperty.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

void setStyleProperty(QWidget* widget, const char* name, QStringView value)
{
    if (widget->property(name).toString() == value)
        return;
    widget->setProperty(name, value.toString());
    QStyle* style = widget->style();
    style->unpolish(widget);
    style->polish(widget);
    widget->update();
}
