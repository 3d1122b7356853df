#pragma once

#include <QtGlobal>
#include <array>
#include <type_traits>

namespace zelkam {

// What the application and its decoder process say to each other. Both are built together, which
// `protocol` checks, and run on the same machine: the values are sent as they lie in memory.

/// What is wanted of a file's content.
struct DecodeWish
{
    enum class Task : quint32 {
        picture,   ///< a raster or vector image
        thumbnail, ///< a picture of the desktop's thumbnail cache, if it is the one that `key`
                   ///< names
        frame,     ///< one of an animation, by `index`
        document,  ///< the sizes of a PDF's pages
        page,      ///< one of them, by `index`, as large as `width` and `height`
        text       ///< text of any encoding, cut into lines
    };
    /// How large a picture is to be.
    enum class Size : quint32 {
        own,
        stretched, ///< exactly `width` by `height`
        within,    ///< in its shape; smaller than its own where an edge is longer than `width`
        filling,   ///< in its shape; its longer edge is `width`. For what has no pixels of its own
        stored     ///< as a thumbnail that covers a square of `width`: see storedThumbnailSize()
    };
    enum class Form : quint32 { pixels, jpeg, png };

    Task task = Task::picture;
    Size size = Size::own;
    Form form = Form::pixels;
    qint32 width = 0;
    qint32 height = 0;
    qint32 index = 0;
    quint32 countsFrames = 0; ///< whether the frames of an animation that can be played are counted
    double quality = 1.0;     ///< of a JPEG, from 0.0 to 1.0
    /// Names the file: what is open of it stays open for the next wish that has the same number.
    /// 0 for none.
    quint64 document = 0;
    std::array<char, 32> key{};
    quint64 job = 0; ///< that nobody can guess; set as the wish is sent

    static constexpr quint32 protocol = 2;
};

/// The answer to a wish, or what the process says before.
struct DecodeReply
{
    enum class Outcome : quint32 {
        ready,    ///< of the process itself: it can be given wishes
        working,  ///< the size is known, the work begins; another reply follows
        done,     ///< `bytes` lie in the memory file that comes along
        unknown,  ///< the content is of another kind
        damaged,  ///< cut short, or not as its kind has to be
        tooLarge, ///< has more pixels than are read, or than were asked for
        locked    ///< a document that needs a password
    };
    /// What the kernel could not do for the process, as bits of `value`.
    enum Lack : qint64 { noFileRules = 1, noCallFilter = 2, noMemoryLimit = 4 };

    Outcome outcome = Outcome::damaged;
    quint32 protocol = DecodeWish::protocol;
    qint32 width = 0; ///< of the result, in pixels
    qint32 height = 0;
    qint32 ownWidth = 0; ///< of the picture, upright
    qint32 ownHeight = 0;
    qint32 bytesPerLine = 0;
    qint32 isTransparent = 0; ///< 32-bit pixels with alpha that is not multiplied in
    quint64 job = 0;          ///< of the wish that it answers: others are not listened to
    qint64 bytes = 0;
    qint64 value = 0; ///< the frames of an animation, the delay of one in milliseconds, a Lack
};

static_assert(std::is_trivially_copyable_v<DecodeWish> &&
              std::is_trivially_copyable_v<DecodeReply>);

} // namespace zelkam
