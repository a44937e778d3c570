#pragma once

#include <QAbstractButton>

/// The picture of a voucher's file. A click on it means to see the file at once, in the program.
class VoucherThumbnail final : public QAbstractButton {
    Q_OBJECT

public:
    static constexpr int side = 76;

    explicit VoucherThumbnail(QWidget* parent = nullptr);

    /// The file's absolute path; empty when it is missing.
    void setFile(const QString& path);

    QSize sizeHint() const override { return { side, side }; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void onReady(const QString& path);

    QString m_path;
};
