#pragma once

#include <QStringList>

/// What one suite of the self-check found wrong. Texts are Chinese and plain.
class Findings final {
public:
    /// Notes the problem unless the expectation is met; returns whether it is.
    bool expect(bool met, const QString& problem);

    /// Something that is no fault but limits what the suite has proved.
    void remark(const QString& text);

    bool isOk() const { return m_problems.isEmpty(); }

    /// The problems, the first few of many; the remarks when there are none.
    QString text() const;

private:
    QStringList m_problems;
    QStringList m_remarks;
};
