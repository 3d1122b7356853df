#pragma once

#include "platform/foundation/regular_file.h"
#include "platform/images/decode_wish.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <memory>

namespace zelkam {

/// What a decoder process made of a file.
struct Decoded
{
    /// Without `done` there is nothing else in here. What a process was stopped at counts as
    /// `damaged`, whether it took too long, too much memory, or did what it may not.
    DecodeReply reply;
    QImage image; ///< 32 bits a pixel, in sRGB, upright; of the tasks and forms that give pixels
    QByteArray bytes; ///< of all others

    bool isDone() const { return reply.outcome == DecodeReply::Outcome::done; }
};

/// Ends a job that its person has lost interest in, before it begins or in the middle. One for
/// each job, or for several, one after another. Any thread.
class DecodeCancel
{
public:
    DecodeCancel();
    void cancel() const;

private:
    friend class DecoderPool;
    struct State;
    std::shared_ptr<State> m_state;
};

// Opens what comes from anywhere, pictures, drawings, documents and text, in processes that can do
// nothing else: the program zelkam-decode, started when it is first needed, two at most, gone with
// the application however that ends.
//
// A job may use two seconds of processor time, and more for what is honestly large; time in which
// it waits for its turn, or the machine does something else, does not count. A process that
// crashes, or is stopped for its time, its memory or what it tried to do, costs its own job and is
// replaced.

enum class DecodeUrgency { waitedFor, background };

/// Does a job on a file; its size is that at its opening. Waits for the result: any thread but the
/// main one.
Decoded decode(const DecodeWish &wish, const RegularFile &file,
               DecodeUrgency urgency = DecodeUrgency::waitedFor, const DecodeCancel &cancel = {});
/// Likewise, on bytes.
Decoded decode(const DecodeWish &wish, const QByteArray &bytes,
               DecodeUrgency urgency = DecodeUrgency::waitedFor, const DecodeCancel &cancel = {});

/// Starts the processes if they do not run, and does not wait for them. For a screen that is about
/// to need them. Any thread.
void warmUpDecoders();

/// Where the program lies. Set it before the first picture when it lies neither beside the
/// application nor where it was installed. Any thread.
void setDecoderProgram(const QString &path);

/// A number for DecodeWish::document that nobody else has. Any thread.
quint64 newDecodedDocument();

} // namespace zelkam
