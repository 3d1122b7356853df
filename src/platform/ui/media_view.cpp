#include "platform/ui/media_view.h"

#include "platform/ui/file_info_view.h"
#include "platform/ui/theme.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLibraryInfo>
#include <QMediaDevices>
#include <QPainter>
#include <QSlider>
#include <QTime>
#include <QToolButton>
#include <QUrl>
#include <QVideoFrame>
#include <QVideoSink>

namespace zelkam {

namespace {

constexpr int barHeight = metrics::row;

QString clock(qint64 milliseconds)
{
    const QTime time =
        QTime::fromMSecsSinceStartOfDay(int(qBound(0LL, milliseconds, 86'399'999LL)));
    return time.toString(time.hour() > 0 ? QStringLiteral("h:mm:ss") : QStringLiteral("m:ss"));
}

/// Qt 6.4's GStreamer backend, its default, crashes on a machine that lacks one of GStreamer's
/// many plug-ins; the FFmpeg backend has all it needs in itself. Whoever sets the variable decides.
/// It is set while there is one thread only.
void preferFfmpegBackend()
{
    const QString plugin = QLibraryInfo::path(QLibraryInfo::PluginsPath) +
                           QStringLiteral("/multimedia/libffmpegmediaplugin.so");
    if (!qEnvironmentVariableIsSet("QT_MEDIA_BACKEND") && QFileInfo::exists(plugin))
        qputenv("QT_MEDIA_BACKEND", "ffmpeg");
}
Q_COREAPP_STARTUP_FUNCTION(preferFfmpegBackend)

} // namespace

MediaView::MediaView(PreviewFile file, QWidget *parent)
    : QWidget(parent),
      m_file(std::move(file)),
      m_sink(new QVideoSink(this)),
      m_info(new FileInfoView(m_file, {}, this)),
      m_play(new QToolButton(this)),
      m_position(new QSlider(Qt::Horizontal, this)),
      m_time(new QLabel(this))
{
    // Qt 6.4 crashes where it plays to a device that is not there.
    if (!QMediaDevices::defaultAudioOutput().isNull())
        m_player.setAudioOutput(new QAudioOutput(this));
    m_player.setVideoSink(m_sink);

    auto *button = static_cast<QToolButton *>(m_play);
    button->setAutoRaise(true);
    button->setFixedSize(metrics::tapTarget, metrics::tapTarget);
    button->setIconSize({metrics::icon, metrics::icon});
    m_position->setFixedHeight(metrics::tapTarget);
    m_position->setAccessibleName(tr("Position"));
    setFocusProxy(m_play);
    m_time->setFont(themeFont(TextRole::caption, font()));
    m_time->setTextFormat(Qt::PlainText);

    connect(m_play, &QAbstractButton::clicked, this, &MediaView::toggle);
    connect(m_position, &QSlider::sliderMoved, this,
            [this](int value) { m_player.setPosition(value); });
    connect(&m_player, &QMediaPlayer::positionChanged, this, &MediaView::updateControls);
    connect(&m_player, &QMediaPlayer::durationChanged, this, &MediaView::updateControls);
    connect(&m_player, &QMediaPlayer::playbackStateChanged, this, &MediaView::updateControls);
    connect(&m_player, &QMediaPlayer::errorOccurred, this,
            [this] { emit failed(tr("The file cannot be played on this device.")); });
    connect(m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame &frame) {
        if (frame.isValid())
            m_info->hide();
        update();
    });
    updateControls();
    // A player that cannot work says so while the source is set; whoever waits for it connects
    // after this constructor.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_player.isAvailable())
                m_player.setSource(QUrl::fromLocalFile(m_file.path));
            else
                emit failed(tr("The file cannot be played on this device."));
        },
        Qt::QueuedConnection);
}

MediaView::~MediaView()
{
    m_player.stop();
}

void MediaView::pause()
{
    if (m_player.playbackState() == QMediaPlayer::PlayingState)
        m_player.pause();
}

void MediaView::toggle()
{
    if (m_player.playbackState() == QMediaPlayer::PlayingState)
        m_player.pause();
    else
        m_player.play();
}

void MediaView::updateControls()
{
    const bool playing = m_player.playbackState() == QMediaPlayer::PlayingState;
    m_play->setIcon(tintedIcon(playing ? QStringLiteral("media-playback-pause")
                                       : QStringLiteral("media-playback-start"),
                               metrics::icon, accentColor(palette()), devicePixelRatioF()));
    m_play->setAccessibleName(playing ? tr("Pause") : tr("Play"));
    const qint64 duration = m_player.duration();
    m_position->setRange(0, int(qMin<qint64>(duration, INT_MAX)));
    if (!m_position->isSliderDown())
        m_position->setValue(int(qMin<qint64>(m_player.position(), INT_MAX)));
    m_time->setText(clock(m_player.position()) + QStringLiteral(" / ") + clock(duration));
}

void MediaView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF room(0, 0, width(), height() - barHeight);
    painter.fillRect(QRectF(0, room.bottom(), width(), 1), separatorColor(palette()));
    QVideoFrame frame = m_sink->videoFrame();
    if (!frame.isValid())
        return;
    painter.fillRect(room, Qt::black);
    frame.paint(&painter, room, {});
}

void MediaView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int top = height() - barHeight + (barHeight - metrics::tapTarget) / 2;
    const int timeWidth =
        m_time->fontMetrics().horizontalAdvance(QStringLiteral("00:00:00 / 00:00:00"));
    m_info->setGeometry(0, 0, width(), height() - barHeight);
    m_play->move(metrics::grid, top);
    const int left = metrics::grid + metrics::tapTarget + metrics::grid;
    const int right = width() - 2 * metrics::grid;
    m_time->setGeometry(right - timeWidth, top, timeWidth, metrics::tapTarget);
    m_time->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_position->setGeometry(left, top,
                            qMax(metrics::tapTarget, right - timeWidth - 2 * metrics::grid - left),
                            metrics::tapTarget);
}

void MediaView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        updateControls();
}

} // namespace zelkam
