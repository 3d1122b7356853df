#pragma once

#include "platform/foundation/memory_file.h"
#include "platform/images/decode_wish.h"

#include <QByteArray>
#include <QImage>
#include <functional>
#include <memory>

namespace zelkam {

/// What became of a wish: pixels, or bytes, as far as the reply says that it is done.
struct DecodeOutcome
{
    DecodeReply reply;
    QImage pixels;
    QByteArray bytes;
};

/// Is called with the size of a picture as soon as that is known.
using DecodeProgress = std::function<void(const DecodeReply &working)>;

/// Something that stays open between two wishes: a document, an animation.
class OpenFile
{
public:
    virtual ~OpenFile() = default;
    virtual DecodeOutcome perform(const DecodeWish &wish, const DecodeProgress &progress) = 0;
};

/// Opens what a wish is about; null for what is no such thing, which is damaged then.
std::unique_ptr<OpenFile> openAnimation(const FileMapping &file);

/// The frames of an animation whose frames are small enough to be played; 1 for all others.
int playableFrames(const QByteArray &file);
std::unique_ptr<OpenFile> openDocument(const FileMapping &file);

/// All that is done with a file's content. In the decoder process only: nothing here bounds its
/// time or its memory. One thread.
class DecodeWork
{
public:
    /// Loads what cannot be loaded any more once the process is locked in: codecs, fonts.
    DecodeWork();

    DecodeOutcome perform(const DecodeWish &wish, const FileMapping &file,
                          const DecodeProgress &progress);

private:
    std::unique_ptr<OpenFile> m_open;
    quint64 m_document = 0; ///< that is open
};

/// A picture with the wished size and form.
DecodeOutcome decodePictureWish(const DecodeWish &wish, const QByteArray &file,
                                const DecodeProgress &progress);

/// Text of unknown encoding, as UTF-16: by its byte order mark, otherwise UTF-8 when it is valid,
/// UTF-16 when every other byte is zero, else Windows-1252. It is cut into lines, and the whole to
/// a length, that a text view can lay out in reasonable time.
DecodeOutcome decodeTextWish(const QByteArray &file);

} // namespace zelkam
