#pragma once

#include "platform/ui/preview_file.h"

#include <QImage>
#include <QMediaPlayer>
#include <QWidget>

class QAbstractButton;
class QLabel;
class QSlider;
class QVideoSink;

namespace zelkam {

/// Plays an audio or video file: the picture, or the file's icon and name, above a bar with
/// play, position and time. Nothing plays before the user asks.
class MediaView : public QWidget
{
    Q_OBJECT

public:
    explicit MediaView(PreviewFile file, QWidget *parent = nullptr);
    ~MediaView() override;

    void pause();

signals:
    /// The file cannot be played on this machine; the sentence is for the user.
    void failed(const QString &problem);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void toggle();
    void updateControls();

    PreviewFile m_file;
    QMediaPlayer m_player;
    QVideoSink *m_sink;
    QWidget *m_info;
    QAbstractButton *m_play;
    QSlider *m_position;
    QLabel *m_time;
};

} // namespace zelkam
