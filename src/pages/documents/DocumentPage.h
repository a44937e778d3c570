#pragma once

#include "pages/IPage.h"

class AnnualForm;
class Banner;
class DocumentArchive;
class FundForm;
class IndependenceForm;
class QStackedWidget;
class SegmentedControl;

/// Draws up the statutory documents and keeps them. Reads `fund` with `txIds`, `year`, `docId`,
/// and `kind` (the code of a kind, to show its form).
class DocumentPage final : public IPage {
    Q_OBJECT

public:
    explicit DocumentPage(QWidget* parent = nullptr);

    void refresh() override;
    void applyNavParams(const NavParams& params) override;

private:
    enum Segment { Annual, Fund, Independence, Archive };

    void refreshSegment();
    void showEntries(const QList<qint64>& entryIds);

    Banner* m_profile;
    SegmentedControl* m_segments;
    QStackedWidget* m_stack;
    AnnualForm* m_annual;
    FundForm* m_fund;
    IndependenceForm* m_independence;
    DocumentArchive* m_archive;
};
