#include "pages/DateRangeFields.h"

#include "theme/Icons.h"
#include "widgets/ButtonRole.h"
#include "widgets/DateEditor.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {

DateEditor* makeEditor(const QString& objectName, const QString& name, QWidget* parent)
{
    auto* editor = new DateEditor(DateEditor::Empty::Allowed, parent);
    editor->setObjectName(objectName);
    editor->setAccessibleName(name);
    editor->setPlaceholderText(u"不限"_s);
    return editor;
}

} // namespace

DateRangeFields::DateRangeFields(QWidget* parent)
    : QWidget(parent)
    , m_from(makeEditor(u"dateFrom"_s, u"开始日期"_s, this))
    , m_to(makeEditor(u"dateTo"_s, u"结束日期"_s, this))
{
    QPushButton* presets = makeButton(u"快捷"_s, ButtonRole::Default, this);
    presets->setObjectName(u"datePresets"_s);
    presets->setIcon(Icons::icon(u"chevron-down"));
    presets->setLayoutDirection(Qt::RightToLeft);
    presets->setToolTip(u"选择常用日期范围"_s);
    m_presets = presets;

    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    line->addWidget(m_from);
    line->addWidget(new QLabel(u"至"_s, this));
    line->addWidget(m_to);
    line->addWidget(presets);
    setFocusProxy(m_from);

    connect(presets, &QPushButton::clicked, this, &DateRangeFields::showPresets);
    for (const DateEditor* editor : { m_from, m_to }) {
        connect(editor, &DateEditor::dateChanged, this, &DateRangeFields::rangeChanged);
        connect(editor, &QLineEdit::returnPressed, this, &DateRangeFields::returnPressed);
    }
}

DateRange DateRangeFields::range() const
{
    return { .from = m_from->date(), .to = m_to->date() };
}

void DateRangeFields::setRange(const DateRange& range)
{
    const bool changes = range != this->range();
    {
        // Half of a change is a range that nobody asked for.
        const QSignalBlocker silent(this);
        m_from->setDate(range.from);
        m_to->setDate(range.to);
    }
    if (changes)
        emit rangeChanged();
}

QString DateRangeFields::problem() const
{
    if (!m_from->isAcceptable())
        return u"开始日期不是有效日期，请按 2025-02-03 的格式填写，或留空表示不限。"_s;
    if (!m_to->isAcceptable())
        return u"结束日期不是有效日期，请按 2025-02-03 的格式填写，或留空表示不限。"_s;
    if (range().isInverted())
        return u"开始日期晚于结束日期，请调整后再查询。"_s;
    return {};
}

QWidget* DateRangeFields::firstField() const
{
    return m_from;
}

void DateRangeFields::showPresets()
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Period period : allValues<Period>()) {
        connect(menu->addAction(labelOf(period)), &QAction::triggered, this,
            [this, period] { setRange(rangeOf(period, QDate::currentDate())); });
    }
    menu->popup(m_presets->mapToGlobal(QPoint(0, m_presets->height() + 2)));
}
