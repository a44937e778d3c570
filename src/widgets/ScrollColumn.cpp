#include "widgets/ScrollColumn.h"

#include <QVBoxLayout>

namespace {

// Texts that wrap name a least height that holds for a narrow column. The height that the real
// width asks for is the only one that counts.
class Column final : public QWidget {
public:
    using QWidget::QWidget;

    QSize minimumSizeHint() const override { return { QWidget::minimumSizeHint().width(), 0 }; }
};

} // namespace

ScrollColumn::ScrollColumn(QWidget* parent)
    : QScrollArea(parent)
{
    auto* content = new Column;
    m_column = new QVBoxLayout(content);
    m_column->setContentsMargins(24, 20, 24, 24);
    m_column->setSpacing(16);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(content);
}
