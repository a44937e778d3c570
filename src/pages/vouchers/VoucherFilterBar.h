#pragma once

#include "db/Voucher.h"

#include <QWidget>

class QBoxLayout;
class QComboBox;
class QLineEdit;
class SegmentedControl;

/// What the archive is searched for, and how the result is shown. Nothing is searched before the
/// user asks for it.
class VoucherFilterBar final : public QWidget {
    Q_OBJECT

public:
    explicit VoucherFilterBar(QWidget* parent = nullptr);

    VoucherFilter filter() const;
    /// Whether the filter leaves anything out.
    bool restricts() const;

    void setLinkState(VoucherFilter::LinkState state);
    /// One that is not offered means all projects.
    void setProjectId(qint64 id);
    void clear();

    /// Offers the projects that there are now; the chosen one stays.
    void reloadProjects();
    void focusKeyword();

    bool isGrid() const;
    void setGrid(bool grid);

signals:
    void searchRequested();
    void resetRequested();
    void gridChosen(bool grid);

private:
    void setUpFields();
    QLayout* buildLine(QWidget* parent);
    void addField(QBoxLayout* line, const QString& label, QWidget* field, int stretch = 0);

    QComboBox* m_type;
    QComboBox* m_linkState;
    QComboBox* m_project;
    QLineEdit* m_keyword;
    SegmentedControl* m_mode;
};
