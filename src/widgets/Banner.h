#pragma once

#include "widgets/BannerKind.h"

#include <QFrame>

class IconLabel;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;

/// A message inside a page or dialog that stays until its reason is gone. The text wraps, can be
/// selected and is never read as markup.
class Banner final : public QFrame {
    Q_OBJECT

public:
    explicit Banner(BannerKind kind, QWidget* parent = nullptr);

    BannerKind kind() const { return m_kind; }
    void setKind(BannerKind kind);

    QString text() const;
    void setText(const QString& text);

    /// The button at the end of the text; an empty text takes it away.
    void setAction(const QString& text);

    /// A further button at the end of the text, which the caller connects.
    QPushButton* addButton(const QString& text);

    /// Shows a close button. It hides the banner and emits `closed`.
    void setClosable(bool closable);

signals:
    void actionTriggered();
    void closed();

private:
    void updateAccessibleName();

    BannerKind m_kind;
    QHBoxLayout* m_row = nullptr;
    IconLabel* m_icon;
    QLabel* m_label;
    QPushButton* m_action;
    QToolButton* m_close;
};
