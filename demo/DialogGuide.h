#pragma once

#include "Problem.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>

/// Visits the modal dialogs and boxes that pages open, in the order in which they were announced,
/// and closes those that a visit leaves open. A dialog that nobody announced, one of another name
/// and one that stays open are problems.
class DialogGuide final : public QObject {
    Q_OBJECT

public:
    using Visit = std::function<Problem(QDialog&)>;

    DialogGuide();

    /// The next dialog is the one of this object name, or of any when empty.
    void expect(const QString& objectName, Visit visit);

    /// The first problem since the last call; announced dialogs that never opened are one.
    [[nodiscard]] Problem takeProblem();

private:
    struct Expected {
        QString objectName;
        Visit visit;
    };

    void look();
    void visit(QDialog& dialog);
    void note(const Problem& problem);

    std::deque<Expected> m_expected;
    Problem m_problem;
    QList<QPointer<QDialog>> m_visited;
    QElapsedTimer m_sinceVisit;
    QTimer m_timer;
};
