#pragma once

#include "services/vouchers/VoucherRules.h"
#include "widgets/FieldLabel.h"

#include <QObject>

class DateEditor;
class FormRows;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

/// The editors of a voucher's description, as rows of a form.
class VoucherFields final : public QObject {
    Q_OBJECT

public:
    explicit VoucherFields(QWidget* parent);

    /// `typeAndDate` says whether those two are marked as required like the name.
    void addTo(FormRows* rows, Required typeAndDate);

    void show(const VoucherDescription& description);
    /// As it stands in the form; the date is unset when there is none to be read.
    VoucherDescription edited() const;
    void focus(VoucherRules::Field field);

    QLineEdit* nameEdit() const { return m_name; }

private:
    QWidget* withCount(QPlainTextEdit* note);

    QLineEdit* m_name;
    QComboBox* m_type;
    DateEditor* m_date;
    QPlainTextEdit* m_note;
};
