#pragma once

#include <QAbstractButton>

namespace zelkam {

/// The white round button that takes a photo.
class ShutterButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ShutterButton(QWidget *parent);
    QSize sizeHint() const override { return {72, 72}; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A white word, or an icon in a dark circle, on the camera's black.
class CameraTextButton : public QAbstractButton
{
    Q_OBJECT

public:
    CameraTextButton(const QString &text, const QString &iconName, QWidget *parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_iconName;
};

} // namespace zelkam
