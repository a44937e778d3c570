#include "pages/vouchers/VoucherFilterBar.h"

#include "db/ProjectDao.h"
#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/CodeChoice.h"
#include "widgets/FieldLabel.h"
#include "widgets/SegmentedControl.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldGap = 12;
constexpr int gridIndex = 0;
constexpr int listIndex = 1;
constexpr int widestList = 480;

QComboBox* makeCombo(const QString& objectName, int characters, QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(objectName);
    // Long names must not widen the bar.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(characters);
    return combo;
}

void widenList(QComboBox* combo)
{
    constexpr int surroundings = 40;
    combo->view()->setMinimumWidth(
        std::min(combo->view()->sizeHintForColumn(0) + surroundings, widestList));
}

} // namespace

VoucherFilterBar::VoucherFilterBar(QWidget* parent)
    : QWidget(parent)
    , m_type(makeCombo(u"typeFilter"_s, 7, this))
    , m_linkState(makeCombo(u"linkFilter"_s, 4, this))
    , m_project(makeCombo(u"projectFilter"_s, 7, this))
    , m_keyword(new QLineEdit(this))
    , m_mode(new SegmentedControl(u"显示方式"_s, this))
{
    setObjectName(u"VoucherFilterBar"_s);
    auto* card = new Card({}, this);
    card->setAccessibleName(u"筛选条件"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(card);

    setUpFields();
    card->body()->addLayout(buildLine(card));
    connect(m_keyword, &QLineEdit::returnPressed, this, &VoucherFilterBar::searchRequested);
    connect(m_mode, &SegmentedControl::currentChanged, this,
        [this](int index) { emit gridChosen(index == gridIndex); });
}

void VoucherFilterBar::setUpFields()
{
    fillChoices<VoucherType>(m_type, u"全部类型"_s);
    m_linkState->addItems({ u"全部"_s, u"已关联"_s, u"未关联"_s });
    m_project->addItem(u"全部项目"_s, QVariant::fromValue<qint64>(0));
    m_keyword->setObjectName(u"keyword"_s);
    m_keyword->setPlaceholderText(u"名称/备注关键字"_s);
    m_keyword->setAccessibleName(u"名称/备注关键字"_s);
    m_keyword->setClearButtonEnabled(true);
    m_keyword->setMinimumWidth(132);
    // Wide windows do not need wide fields.
    m_keyword->setMaximumWidth(360);
    m_project->setMaximumWidth(280);
    m_mode->addSegment(u"网格"_s);
    m_mode->addSegment(u"列表"_s);
}

QLayout* VoucherFilterBar::buildLine(QWidget* parent)
{
    QPushButton* search = makeButton(u"查询"_s, ButtonRole::Primary, parent);
    search->setObjectName(u"search"_s);
    QPushButton* reset = makeButton(u"重置"_s, ButtonRole::Default, parent);
    reset->setObjectName(u"reset"_s);
    connect(search, &QPushButton::clicked, this, &VoucherFilterBar::searchRequested);
    connect(reset, &QPushButton::clicked, this, &VoucherFilterBar::resetRequested);

    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    addField(line, u"类型"_s, m_type);
    addField(line, u"关联状态"_s, m_linkState);
    addField(line, u"所属项目"_s, m_project, 2);
    line->addSpacing(fieldGap - line->spacing());
    line->addWidget(m_keyword, 3);
    line->addWidget(search);
    line->addWidget(reset);
    line->addStretch(1);
    line->addWidget(m_mode);
    return line;
}

void VoucherFilterBar::addField(QBoxLayout* line, const QString& label, QWidget* field, int stretch)
{
    if (line->count() > 0)
        line->addSpacing(fieldGap - line->spacing());
    auto* caption = new FieldLabel(label, Required::No, this);
    caption->nameField(field);
    line->addWidget(caption);
    line->addWidget(field, stretch);
}

VoucherFilter VoucherFilterBar::filter() const
{
    return { .type = choiceOf<VoucherType>(m_type),
        .linkState = static_cast<VoucherFilter::LinkState>(m_linkState->currentIndex()),
        .projectId = m_project->currentData().toLongLong(),
        .keyword = m_keyword->text().trimmed() };
}

bool VoucherFilterBar::restricts() const
{
    const VoucherFilter asked = filter();
    return asked.type || asked.linkState != VoucherFilter::LinkState::All || asked.projectId > 0
        || !asked.keyword.isEmpty();
}

void VoucherFilterBar::setLinkState(VoucherFilter::LinkState state)
{
    m_linkState->setCurrentIndex(static_cast<int>(state));
}

void VoucherFilterBar::setProjectId(qint64 id)
{
    m_project->setCurrentIndex(std::max(0, m_project->findData(id)));
}

void VoucherFilterBar::clear()
{
    m_type->setCurrentIndex(0);
    m_linkState->setCurrentIndex(0);
    m_project->setCurrentIndex(0);
    m_keyword->clear();
}

void VoucherFilterBar::reloadProjects()
{
    ProjectDao projects;
    const QList<Project> found = projects.list();
    // A list that cannot be read must not take the chosen project away.
    if (!projects.lastError().isEmpty())
        return;
    const qint64 chosen = m_project->currentData().toLongLong();
    const QSignalBlocker silent(m_project);
    while (m_project->count() > 1)
        m_project->removeItem(m_project->count() - 1);
    for (const Project& project : found)
        m_project->addItem(project.name, project.id);
    setProjectId(chosen);
    widenList(m_project);
}

void VoucherFilterBar::focusKeyword()
{
    m_keyword->setFocus(Qt::ShortcutFocusReason);
    m_keyword->selectAll();
}

bool VoucherFilterBar::isGrid() const
{
    return m_mode->currentIndex() == gridIndex;
}

void VoucherFilterBar::setGrid(bool grid)
{
    m_mode->setCurrentIndex(grid ? gridIndex : listIndex);
}
