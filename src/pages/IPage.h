#pragma once

#include "pages/PageId.h"

#include <QWidget>

/// A page of the main window. It lives as long as the window and is refreshed at every switch to
/// it; it never switches pages itself but asks for it.
class IPage : public QWidget {
    Q_OBJECT

public:
    explicit IPage(const QString& title, QWidget* parent = nullptr);

    /// Shown in the page header.
    QString title() const { return m_title; }

    /// Reloads what the page shows from the stores.
    virtual void refresh();

    /// Takes the parameters of a navigation request; a refresh follows.
    virtual void applyNavParams(const NavParams& params);

    /// A fresh widget with the page's buttons for the page header, or none. The caller owns it.
    virtual QWidget* headerActions();

signals:
    void navigateRequested(PageId target, const NavParams& params);
    /// Something that the status bar shows has changed.
    void statusChanged();

private:
    const QString m_title;
};
