#include "dialogs/ProfileDialog.h"

#include "db/ProfileDao.h"
#include "dialogs/ProfileForm.h"
#include "services/ProfileRules.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"

#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ProfileDialog::ProfileDialog(const CompanyProfile& profile, QWidget* parent)
    : FormDialog(u"公司档案"_s, parent)
    , m_profile(profile)
{
    setObjectName(u"ProfileDialog"_s);
    buildForm();
    m_form->show(m_profile);
    // What counts as unchanged is what the form makes of the stored texts.
    m_profile = m_form->edited(m_profile);
    resize(560, sizeHint().height());
}

void ProfileDialog::buildForm()
{
    auto* rows = new FormRows;
    m_form = new ProfileForm(this);
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows)
        m_form->addRow(rows, row.field);
    body()->addLayout(rows);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"保存"_s), &QPushButton::clicked, this, &ProfileDialog::onSave);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this,
        &ProfileDialog::onSave);
}

bool ProfileDialog::hasUnsavedInput() const
{
    return m_form->edited(m_profile) != m_profile;
}

void ProfileDialog::onSave()
{
    const CompanyProfile edited = m_form->edited(m_profile);
    if (const auto problem = ProfileRules::firstProblem(edited)) {
        MessageBox::warn(this, problem->title, problem->text);
        m_form->focus(problem->field);
        return;
    }
    ProfileDao profiles;
    if (!profiles.save(edited)) {
        MessageBox::warn(this, u"保存失败"_s, u"公司档案无法保存：%1"_s.arg(profiles.lastError()));
        return;
    }
    accept();
}
