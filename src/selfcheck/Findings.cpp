#include "selfcheck/Findings.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostNamed = 4;

} // namespace

bool Findings::expect(bool met, const QString& problem)
{
    if (!met)
        m_problems += problem;
    return met;
}

void Findings::remark(const QString& text)
{
    m_remarks += text;
}

QString Findings::text() const
{
    if (m_problems.isEmpty())
        return m_remarks.isEmpty() ? u"正常"_s : u"正常（%1）"_s.arg(m_remarks.join(u"；"));
    QString text = m_problems.first(std::min(mostNamed, m_problems.size())).join(u"；");
    if (m_problems.size() > mostNamed)
        text += u"；等共 %1 项"_s.arg(m_problems.size());
    return text;
}
