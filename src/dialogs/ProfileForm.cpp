#include "dialogs/ProfileForm.h"

#include "widgets/FormRows.h"
#include "widgets/TextRole.h"

#include <QLabel>
#include <QLineEdit>
#include <QValidator>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;
using ProfileRules::Field;

namespace {

struct EditorRow {
    QStringView objectName;
    QStringView placeholder;
    Required required;
};

// In the order of the fields.
constexpr auto editorRows = std::to_array<EditorRow>({
    { u"companyName", u"营业执照上的全称，如：杭州山岚设计有限公司", Required::Yes },
    { u"creditCode", u"18 位，见营业执照", Required::No },
    { u"shareholderName", u"与身份证一致", Required::Yes },
    { u"bankName", u"如：招商银行杭州文三支行", Required::No },
    { u"bankAccount", u"公司基本户账号", Required::No },
    { u"address", u"注册地址或经营地址", Required::No },
    { u"phone", u"手机或座机", Required::No },
});
static_assert(editorRows.size() == ProfileRules::fieldRows.size());

const EditorRow& editorRow(Field field)
{
    return editorRows.at(static_cast<std::size_t>(field));
}

// Changes the letters as they are typed, so that undoing stays possible.
class Capitals final : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& input, int&) const override
    {
        input = input.toUpper();
        return Acceptable;
    }
};

} // namespace

ProfileForm::ProfileForm(QWidget* parent)
    : QObject(parent)
{
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows) {
        auto* edit = new QLineEdit(parent);
        edit->setObjectName(editorRow(row.field).objectName.toString());
        edit->setPlaceholderText(editorRow(row.field).placeholder.toString());
        m_edits.insert(row.field, edit);
    }
    m_edits.value(Field::CreditCode)->setValidator(new Capitals(this));
}

void ProfileForm::addRow(FormRows* rows, Field field)
{
    const QString label
        = ProfileRules::fieldRows.at(static_cast<std::size_t>(field)).label.toString();
    QLineEdit* edit = m_edits.value(field);
    if (field == Field::CreditCode)
        rows->addWrappedRow(label, withRemark(edit), edit, editorRow(field).required);
    else
        rows->addRow(label, edit, editorRow(field).required);
}

QWidget* ProfileForm::withRemark(QLineEdit* edit)
{
    auto* column = new QWidget(edit->parentWidget());
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    m_creditCodeRemark = new QLabel(column);
    m_creditCodeRemark->setObjectName(u"creditCodeRemark"_s);
    m_creditCodeRemark->setWordWrap(true);
    m_creditCodeRemark->setTextFormat(Qt::PlainText);
    setTextRole(m_creditCodeRemark, TextRole::Warning);
    m_creditCodeRemark->hide();
    layout->addWidget(edit);
    layout->addWidget(m_creditCodeRemark);
    connect(edit, &QLineEdit::textChanged, this, &ProfileForm::checkCreditCode);
    return column;
}

void ProfileForm::checkCreditCode(const QString& code)
{
    const QString remark = ProfileRules::creditCodeRemark(code);
    m_creditCodeRemark->setText(remark);
    m_creditCodeRemark->setVisible(!remark.isEmpty());
}

void ProfileForm::show(const CompanyProfile& profile)
{
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows)
        m_edits.value(row.field)->setText(profile.*row.text);
}

CompanyProfile ProfileForm::edited(CompanyProfile profile) const
{
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows)
        profile.*row.text = m_edits.value(row.field)->text();
    return ProfileRules::normalized(std::move(profile));
}

void ProfileForm::focus(Field field)
{
    QLineEdit* edit = m_edits.value(field);
    edit->setFocus();
    edit->selectAll();
}
