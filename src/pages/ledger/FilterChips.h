#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QHBoxLayout;

/// A line of the restrictions that are in force, each of which can be taken away. Hidden while
/// there are none.
class FilterChips final : public QWidget {
    Q_OBJECT

public:
    struct Chip {
        QString key; // what `removed` names it by
        QString text;

        bool operator==(const Chip&) const = default;
    };

    explicit FilterChips(QWidget* parent = nullptr);

    void setChips(const QList<Chip>& chips);

signals:
    void removed(const QString& key);

private:
    QList<Chip> m_chips;
    QHBoxLayout* m_line;
};
