#pragma once

#include "platform/images/decoder.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <memory>

namespace zelkam {

/// Plays the frames of an animation, again and again, until it goes. It stops on the last frame
/// that came when one cannot be read, or when they cost more than watching is worth.
///
/// A frame stands for as long as its file says, as browsers have it: what asks for a hundredth of a
/// second or less gets a tenth, and nothing is faster than 50 frames a second.
///
/// Main thread only.
class AnimationPlayer : public QObject
{
    Q_OBJECT

public:
    AnimationPlayer(std::shared_ptr<const RegularFile> file, int frames, QObject *parent);
    ~AnimationPlayer() override;

    void start() { fetch(0, 0); }

signals:
    void frameChanged(const QImage &frame);

private:
    struct Source
    {
        std::shared_ptr<const RegularFile> file;
        quint64 document;
        DecodeCancel cancel;
    };

    void fetch(int index, int delay);
    void take(const Decoded &frame, int index, int delay);

    Source m_source;
    const int m_frames;
    QElapsedTimer m_sinceAsked;
    int m_slowFrames = 0;
};

} // namespace zelkam
