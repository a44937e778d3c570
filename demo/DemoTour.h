#pragma once

#include "DemoCompany.h"
#include "DemoDocuments.h"
#include "DemoLedger.h"
#include "DemoReceipts.h"
#include "DialogGuide.h"
#include "Pictures.h"
#include "theme/ThemeTokens.h"
#include "TourStops.h"
#include "WarningWatch.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class MainWindow;

/// The demo from the first start to the last picture: a table of steps, run one after the other in
/// the event loop of the real program. The first step that does not do what it should ends it.
class DemoTour final : public QObject {
    Q_OBJECT

public:
    /// Everything that the demo makes besides the program's data goes into `folder`.
    DemoTour(const QString& folder, DemoSize size);

    /// Waits for the gates of the first start, and runs the steps once the main window shows.
    void begin();

    /// Tells how it ended and what was made; the exit status of the demo.
    [[nodiscard]] int conclude(int programStatus);

private:
    struct Step {
        QString name; // English
        std::function<Problem()> act;
    };

    void expectGates();
    void lookForWindow();
    QList<Step> steps();
    QList<Step> fillingSteps();
    QList<Step> visitingSteps(ThemeMode theme);
    void run();

    Problem passDisclaimer(QDialog& dialog);
    Problem passWizard(QDialog& dialog);
    Problem checkFirstStart();
    Problem showEmptyPages();
    Problem fillArchive();
    Problem backUp();
    Problem chooseTheme(ThemeMode theme);
    Problem goTo(PageId page, const NavParams& params);
    Problem visitPage(const TourStops::PageStop& stop);
    Problem visitDialog(const TourStops::DialogStop& stop);
    Problem checkStoredData();

    const QString m_folder;
    const DemoSize m_size;
    const WarningWatch m_warnings;
    DialogGuide m_guide;
    Pictures m_pictures;
    DemoCompany m_company;
    std::optional<DemoLedger> m_ledger; // once the projects are stored
    DemoReceipts m_receipts;
    DemoDocuments m_documents;

    QTimer m_watch;
    MainWindow* m_window = nullptr;
    QString m_step; // the one at work
    Problem m_problem;
    bool m_done = false;
};
