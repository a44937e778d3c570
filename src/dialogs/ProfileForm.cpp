#include "dialogs/ProfileForm.h"

#include "widgets/FormRows.h"
#include "widgets/TextRole.h"

#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

struct TextRow {
    QString CompanyProfile::*member;
    QStringView objectName;
    QStringView label;
    QStringView placeholder;
    Required required;
};

// In the order of ProfileForm::Text.
constexpr auto textRows = std::to_array<TextRow>({
    { &CompanyProfile::companyName, u"companyName", u"公司名称",
        u"营业执照上的全称，如：杭州山岚设计有限公司", Required::Yes },
    { &CompanyProfile::creditCode, u"creditCode", u"统一社会信用代码", u"18 位，见营业执照",
        Required::No },
    { &CompanyProfile::shareholderName, u"shareholderName", u"股东姓名", u"与身份证一致",
        Required::Yes },
    { &CompanyProfile::bankName, u"bankName", u"开户银行", u"如：招商银行杭州文三支行",
        Required::No },
    { &CompanyProfile::bankAccount, u"bankAccount", u"对公账号", u"公司基本户账号", Required::No },
    { &CompanyProfile::address, u"address", u"公司地址", u"注册地址或经营地址", Required::No },
    { &CompanyProfile::phone, u"phone", u"联系电话", u"手机或座机", Required::No },
});

} // namespace

ProfileForm::ProfileForm(QWidget* parent)
    : QObject(parent)
{
    static_assert(textRows.size() == textCount);
    for (std::size_t i = 0; i < textCount; ++i) {
        auto* edit = new QLineEdit(parent);
        edit->setObjectName(textRows.at(i).objectName.toString());
        edit->setPlaceholderText(textRows.at(i).placeholder.toString());
        m_edits.at(i) = edit;
    }
}

void ProfileForm::addRow(FormRows* rows, Text text)
{
    const TextRow& row = textRows.at(static_cast<std::size_t>(text));
    QLineEdit* field = edit(text);
    if (text == Text::CreditCode)
        rows->addWrappedRow(row.label.toString(), withRemark(field), field, row.required);
    else
        rows->addRow(row.label.toString(), field, row.required);
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

void ProfileForm::checkCreditCode(const QString& typed)
{
    QLineEdit* field = edit(Text::CreditCode);
    if (const QString capitals = typed.toUpper(); capitals != typed) {
        const QSignalBlocker silent(field);
        const int cursor = field->cursorPosition();
        field->setText(capitals);
        field->setCursorPosition(cursor);
    }
    const QString remark = ProfileRules::creditCodeRemark(typed);
    m_creditCodeRemark->setText(remark);
    m_creditCodeRemark->setVisible(!remark.isEmpty());
}

void ProfileForm::show(const CompanyProfile& profile)
{
    for (std::size_t i = 0; i < textCount; ++i)
        m_edits.at(i)->setText(profile.*textRows.at(i).member);
}

CompanyProfile ProfileForm::edited(CompanyProfile profile) const
{
    for (std::size_t i = 0; i < textCount; ++i)
        profile.*textRows.at(i).member = m_edits.at(i)->text();
    return ProfileRules::normalized(profile);
}

void ProfileForm::focus(ProfileRules::Field field)
{
    QLineEdit* target = edit(
        field == ProfileRules::Field::CompanyName ? Text::CompanyName : Text::ShareholderName);
    target->setFocus();
    target->selectAll();
}
