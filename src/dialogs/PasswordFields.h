#pragma once

#include <QWidget>

class FormRows;
class QCheckBox;
class QLineEdit;

/// Password editors that one check box shows in plain text.
class PasswordFields final : public QObject {
    Q_OBJECT

public:
    explicit PasswordFields(QWidget* parent);

    QLineEdit* addRow(FormRows* rows, const QString& label, const QString& objectName);
    void addRevealRow(FormRows* rows);

private:
    void reveal(bool visible);

    QList<QLineEdit*> m_edits;
    QCheckBox* m_reveal = nullptr;
};
