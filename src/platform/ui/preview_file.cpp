#include "platform/ui/preview_file.h"

#include "platform/foundation/file_name.h"
#include "platform/foundation/file_reader.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QStringDecoder>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

constexpr qint64 headSize = 16 * 1024;

/// Opens without waiting for the other end of a pipe. Returns -1 with the state set.
int openRegular(const QString &path, PreviewFile &file)
{
    const int fd = ::open(encodeFileName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        file.state = errno == EACCES || errno == EPERM ? PreviewFile::State::denied
                                                       : PreviewFile::State::missing;
        return -1;
    }
    struct stat status = {};
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(fd);
        file.state = PreviewFile::State::notAFile;
        return -1;
    }
    file.size = status.st_size;
    return fd;
}

/// UTF-16 without a mark, as far as mostly Latin text can tell: its zero bytes are on one side.
std::optional<QStringConverter::Encoding> utf16Encoding(const QByteArray &bytes)
{
    const qsizetype pairs = std::min<qsizetype>(bytes.size(), headSize) / 2;
    if (pairs < 4)
        return std::nullopt;
    qsizetype zeros[2] = {0, 0};
    for (qsizetype i = 0; i < 2 * pairs; ++i)
        zeros[i % 2] += bytes.at(i) == '\0';
    if (zeros[0] == 0 && zeros[1] > pairs / 2)
        return QStringConverter::Utf16LE;
    if (zeros[1] == 0 && zeros[0] > pairs / 2)
        return QStringConverter::Utf16BE;
    return std::nullopt;
}

QString withBrokenLines(const QString &text)
{
    constexpr qsizetype longest = 4096;
    QString result;
    result.reserve(text.size() + text.size() / longest);
    qsizetype column = 0;
    for (const QChar character : text) {
        if (character == u'\n')
            column = 0;
        else if (++column > longest && !character.isLowSurrogate()) {
            result.append(u'\n');
            column = 1;
        }
        // A zero would end the line in a text view.
        result.append(character.isNull() ? QChar(QChar::ReplacementCharacter) : character);
    }
    return result;
}

} // namespace

PreviewFile openPreviewFile(const std::optional<URL> &url)
{
    PreviewFile file;
    const auto path = url ? localPath(*url) : std::nullopt;
    if (!path)
        return file;
    file.path = *path;
    file.name = QFileInfo(*path).fileName();
    const int fd = openRegular(*path, file);
    if (fd < 0)
        return file;
    auto device = std::make_shared<QFile>();
    if (!device->open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        file.state = PreviewFile::State::denied;
        return file;
    }
    file.head = device->read(headSize);
    if (!device->seek(0) || (file.head.isEmpty() && file.size > 0)) {
        file.state = PreviewFile::State::denied;
        return file;
    }
    file.type = QMimeDatabase().mimeTypeForFileNameAndData(file.name, file.head);
    file.device = std::move(device);
    file.state = PreviewFile::State::readable;
    return file;
}

bool looksLikeText(const QByteArray &head)
{
    if (QStringConverter::encodingForData(head) || utf16Encoding(head))
        return true;
    const auto isControl = [](char byte) {
        const auto value = static_cast<uchar>(byte);
        return value < 32 && byte != '\n' && byte != '\r' && byte != '\t' && byte != '\f' &&
               byte != '\x1b';
    };
    const auto controls = std::count_if(head.cbegin(), head.cend(), isControl);
    return !head.contains('\0') && controls * 50 <= head.size();
}

QString decodeText(const QByteArray &bytes)
{
    auto encoding = QStringConverter::encodingForData(bytes);
    if (!encoding)
        encoding = utf16Encoding(bytes);
    if (encoding)
        return withBrokenLines(QStringDecoder(*encoding).decode(bytes));

    QStringDecoder utf8(QStringConverter::Utf8);
    const QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return withBrokenLines(text);
    QStringDecoder windows("windows-1252");
    return withBrokenLines(windows.isValid() ? QString(windows.decode(bytes))
                                             : QString::fromLatin1(bytes));
}

} // namespace zelkam
