#pragma once

#include "support/DatabaseTestCase.h"

#include <QUrl>

class TestVoucherFiles final : public DatabaseTestCase {
    Q_OBJECT

public slots:
    /// Stands in for the desktop: keeps what it is asked to open.
    void openUrl(const QUrl& url) { m_opened += url; }

private slots:
    void init();
    void cleanup();
    void theFileIsOpenedByTheDesktop();
    void theFolderIsOpenedWithoutAFileManagerThatSelects();
    void theFileManagerSelectsTheFile();
    void whatCannotBeShownIsToldInABox_data();
    void whatCannotBeShownIsToldInABox();
    void aDesktopWithoutViewerIsToldInABox();

private:
    QList<QUrl> m_opened;
};
