#include "pages/documents/FreeItemList.h"

#include "theme/Icons.h"
#include "widgets/ButtonRole.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

FreeItemList::FreeItemList(const QString& itemName, QWidget* parent)
    : QWidget(parent)
    , m_itemName(itemName)
    , m_column(new QVBoxLayout(this))
    , m_add(makeButton(u"添加%1"_s.arg(itemName), ButtonRole::Link, this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(8);
    m_add->setIcon(Icons::icon(u"plus", Token::Link));
    m_column->addWidget(m_add, 0, Qt::AlignLeft);
    connect(m_add, &QPushButton::clicked, this, &FreeItemList::addLine);
}

QStringList FreeItemList::texts() const
{
    QStringList texts;
    for (const Line& line : m_lines)
        texts += line.edit->text();
    return texts;
}

void FreeItemList::clear()
{
    for (const Line& line : m_lines)
        line.row->deleteLater();
    m_lines.clear();
    emit changed();
}

QToolButton* FreeItemList::makeTool(const QString& icon, QWidget* row)
{
    auto* tool = new QToolButton(row);
    tool->setIcon(Icons::icon(icon));
    tool->setFocusPolicy(Qt::StrongFocus);
    row->layout()->addWidget(tool);
    return tool;
}

void FreeItemList::addLine()
{
    auto* row = new QWidget(this);
    auto* cells = new QHBoxLayout(row);
    cells->setContentsMargins(0, 0, 0, 0);
    cells->setSpacing(4);
    Line line { .row = row, .edit = new QLineEdit(row) };
    line.edit->setPlaceholderText(u"例如：聘任财务负责人，任期一年。"_s);
    cells->addWidget(line.edit, 1);
    line.up = makeTool(u"chevron-up"_s, row);
    line.remove = makeTool(u"trash"_s, row);
    connect(line.edit, &QLineEdit::textChanged, this, &FreeItemList::changed);
    connect(line.up, &QToolButton::clicked, this, [this, row] { moveUp(row); });
    connect(line.remove, &QToolButton::clicked, this, [this, row] { removeLine(row); });

    m_column->insertWidget(m_column->count() - 1, row);
    m_lines += line;
    renumber();
    setTabOrder(line.remove, m_add);
    row->show(); // at once, or it could not take the keyboard yet
    line.edit->setFocus();
}

void FreeItemList::removeLine(QWidget* row)
{
    const qsizetype index = indexOf(row);
    m_lines.removeAt(index);
    // Hidden at once: a line that is only about to go would still take the keyboard.
    row->hide();
    row->deleteLater();
    renumber();
    if (m_lines.isEmpty())
        m_add->setFocus();
    else
        m_lines.at(std::min(index, m_lines.size() - 1)).edit->setFocus();
    emit changed();
}

void FreeItemList::moveUp(QWidget* row)
{
    const qsizetype index = indexOf(row);
    if (index <= 0)
        return;
    QLineEdit* upper = m_lines.at(index - 1).edit;
    QLineEdit* lower = m_lines.at(index).edit;
    const QString text = lower->text();
    lower->setText(upper->text());
    upper->setText(text);
    upper->setFocus();
}

qsizetype FreeItemList::indexOf(QWidget* row) const
{
    const auto found = std::find_if(
        m_lines.begin(), m_lines.end(), [row](const Line& line) { return line.row == row; });
    return found - m_lines.begin();
}

void FreeItemList::renumber()
{
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const Line& line = m_lines.at(i);
        const QString name = u"%1 %2"_s.arg(m_itemName, QString::number(i + 1));
        const auto nameTool = [&](QToolButton* tool, const QString& action) {
            tool->setAccessibleName(u"%1 %2"_s.arg(action, name));
            tool->setToolTip(tool->accessibleName());
        };
        line.edit->setAccessibleName(name);
        nameTool(line.up, u"上移"_s);
        nameTool(line.remove, u"删除"_s);
        line.up->setEnabled(i > 0);
    }
}
