#include "app/command_line.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <array>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

struct Option
{
    const char *name;
    const char *value; ///< null for a switch
    const char *description;
};

constexpr std::array options{
    Option{"real-server-url", "URL",
           "base for relative addresses (default: the calling page's origin)"},
    Option{"allow-origin", "ORIGIN", "a further origin that may call (repeatable)"},
    Option{"max-download", "MIB", "refuse larger files (default: 16384, 4096 of them unpacked)"},
    Option{"allow-unsafe-redirects", nullptr,
           "downloads may be redirected to private networks and to http; for development"},
    Option{"temp-dir", "DIR", "the application's temporary directory"},
    Option{"pictures-dir", "DIR", "photo library and album (default: the user's pictures folder)"},
    Option{"camera-image", "FILE", "a picture before a virtual camera (default: a real camera)"},
    Option{"device", "phone|tablet", "interface idiom and window size"},
    Option{"size", "WxH", "window size in points, each side from 200 to 8192"},
    Option{"color-scheme", "light|dark", "default: the system's; the page sees it too"},
    Option{"system-version", "N.N", "platform version (default: newest)"},
    Option{"no-url-transformer", nullptr, "local addresses stay bare paths"},
    Option{"language", "TAG",
           "language of the application and of the page (default: the system's)"},
    Option{"offscreen", nullptr, "needs no display; keeps no cookies and no data of pages"},
    Option{"screenshots", "DIR", "save the window as PNG after each reply and each screen"},
    Option{"tour", nullptr, "play the built-in demo unattended and quit"},
    Option{"answer-picker", "FILE[,FILE...]",
           "pick these in the next picker; photo takes one, cancel cancels (repeatable)"},
    Option{"remote-debugging-port", "PORT", "let a browser's developer tools connect"},
    Option{"help", nullptr, "show this text"},
    Option{"version", nullptr, "show the version"},
};

QString helpText()
{
    QString text = u"Usage: zelkam-mobile [options] [page]\n\n"
                   "Shows a web page that can call the application.\n\n"
                   "  page  a URL (http, https) or a local HTML file; without one, the built-in"
                   " demo\n\nOptions:\n"_s;
    for (const Option &option : options) {
        QString head = u"  --"_s + QLatin1String(option.name);
        if (option.value)
            head += u' ' + QLatin1String(option.value);
        text += head.leftJustified(34) + QLatin1String(option.description) + u'\n';
    }
    return text.chopped(1);
}

/// Reads the values one after another; the first fault stays.
class Reader
{
public:
    explicit Reader(const QCommandLineParser &parser) : m_parser(parser) {}

    HostOptions result;
    std::optional<QString> fault;

    void read()
    {
        for (const Option &option : options) {
            const QString name = QLatin1String(option.name);
            if (option.value && m_parser.isSet(name) && m_parser.values(name).contains(QString()))
                refuse(name, u"needs a value"_s);
        }
        readServer();
        readDownloads();
        readFolders();
        readDevice();
        readSystem();
        readPickerAnswers();
        readCamera();
        readPage();
        result.urlTransformer = !m_parser.isSet(u"no-url-transformer"_s);
        result.offscreen = m_parser.isSet(u"offscreen"_s);
        result.tour = m_parser.isSet(u"tour"_s);
        if (result.tour && !m_parser.positionalArguments().isEmpty())
            refuse(u"tour"_s, u"plays the built-in demo and takes no page"_s);
    }

private:
    void refuse(const QString &option, const QString &why)
    {
        if (!fault)
            fault = u"--%1 %2"_s.arg(option, why);
    }

    std::optional<QString> value(const QString &option) const
    {
        return m_parser.isSet(option) ? std::optional(m_parser.value(option)) : std::nullopt;
    }

    void readServer()
    {
        if (const auto url = value(u"real-server-url"_s)) {
            if (!WebOrigin::fromUrl(QUrl(*url, QUrl::StrictMode)) || !url->startsWith(u"http"))
                refuse(u"real-server-url"_s, u"is not an http or https URL: %1"_s.arg(*url));
            result.realServerUrl = *url;
        }
        const QStringList origins = m_parser.values(u"allow-origin"_s);
        for (const QString &text : origins) {
            const auto origin = WebOrigin::fromText(text);
            if (origin)
                result.allowedOrigins.append(*origin);
            else
                refuse(u"allow-origin"_s,
                       u"is not an origin such as https://example.org:8443: %1"_s.arg(text));
        }
    }

    void readDownloads()
    {
        result.allowUnsafeRedirects = m_parser.isSet(u"allow-unsafe-redirects"_s);
        if (const auto limit = value(u"max-download"_s)) {
            bool isNumber = false;
            result.maximumDownload = qint64(limit->toUInt(&isNumber)) << 20;
            if (!isNumber || *result.maximumDownload == 0)
                refuse(u"max-download"_s, u"is a number of mebibytes: %1"_s.arg(*limit));
        }
    }

    void readFolders()
    {
        const auto folder = [this](const QString &option) {
            const auto path = value(option);
            return path ? QDir::cleanPath(QDir::current().absoluteFilePath(*path)) : QString();
        };
        result.temporaryDirectory = folder(u"temp-dir"_s);
        result.picturesDirectory = folder(u"pictures-dir"_s);
        result.screenshotsDirectory = folder(u"screenshots"_s);
        // The path of a saved file is percent-decoded as a whole, so it would be another one.
        if (result.temporaryDirectory.contains(u'%'))
            refuse(u"temp-dir"_s, u"must not contain \"%\": %1"_s.arg(result.temporaryDirectory));
    }

    void readDevice()
    {
        const QString device = value(u"device"_s).value_or(u"phone"_s);
        if (device == u"tablet") {
            result.idiom = UIUserInterfaceIdiom::pad;
            result.size = QSize(1024, 1366);
        } else if (device != u"phone") {
            refuse(u"device"_s, u"is phone or tablet, not %1"_s.arg(device));
        }
        if (const auto size = value(u"size"_s)) {
            static const QRegularExpression form(u"^([1-9]\\d{2,3})x([1-9]\\d{2,3})$"_s);
            const auto match = form.match(*size);
            result.size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
            // Nothing fits into less, and more cannot be painted.
            const auto isUsable = [](int side) { return side >= 200 && side <= 8192; };
            if (!isUsable(result.size.width()) || !isUsable(result.size.height()))
                refuse(u"size"_s, u"is WIDTHxHEIGHT in points, such as 390x844: %1"_s.arg(*size));
        }
        if (const auto scheme = value(u"color-scheme"_s)) {
            if (scheme != u"light" && scheme != u"dark")
                refuse(u"color-scheme"_s, u"is light or dark, not %1"_s.arg(*scheme));
            result.colorScheme = scheme == u"dark" ? ColorScheme::dark : ColorScheme::light;
        }
    }

    void readSystem()
    {
        if (const auto version = value(u"system-version"_s)) {
            static const QRegularExpression form(u"^\\d{1,4}(\\.\\d{1,4}){0,2}$"_s);
            if (!form.match(*version).hasMatch())
                refuse(u"system-version"_s, u"is a version such as 16.0: %1"_s.arg(*version));
            result.systemVersion = QVersionNumber::fromString(*version);
        }
        if (const auto tag = value(u"language"_s)) {
            const QLocale locale(*tag);
            if (locale.language() == QLocale::C)
                refuse(u"language"_s, u"is not a language tag such as de or pt-BR: %1"_s.arg(*tag));
            result.language = locale;
        }
        if (const auto port = value(u"remote-debugging-port"_s)) {
            bool isNumber = false;
            result.remoteDebuggingPort = port->toUShort(&isNumber);
            if (!isNumber || result.remoteDebuggingPort == 0)
                refuse(u"remote-debugging-port"_s, u"is a port number: %1"_s.arg(*port));
        }
    }

    void readCamera()
    {
        const auto path = value(u"camera-image"_s);
        if (!path)
            return;
        if (!QFileInfo(*path).isFile())
            refuse(u"camera-image"_s, u"names no file: %1"_s.arg(*path));
        result.cameraImage = QDir::cleanPath(QDir::current().absoluteFilePath(*path));
    }

    void readPickerAnswers()
    {
        const QStringList values = m_parser.values(u"answer-picker"_s);
        for (const QString &value : values) {
            if (value == u"cancel") {
                result.pickerAnswers.append(std::nullopt);
                continue;
            }
            if (value == u"photo") {
                result.pickerAnswers.append(QStringList());
                continue;
            }
            // A file may well have a comma in its name.
            QStringList paths = QFileInfo(value).isFile() ? QStringList{value} : value.split(u',');
            for (QString &path : paths) {
                if (!QFileInfo(path).isFile())
                    refuse(u"answer-picker"_s, u"names no file: %1"_s.arg(path));
                path = QDir::cleanPath(QDir::current().absoluteFilePath(path));
            }
            result.pickerAnswers.append(paths);
        }
    }

    void readPage()
    {
        const QStringList pages = m_parser.positionalArguments();
        if (pages.isEmpty() || fault)
            return;
        const QString &page = pages.first();
        const QUrl url(page, QUrl::StrictMode);
        if (pages.size() > 1) {
            fault = u"one page at most, but there are %1"_s.arg(pages.size());
        } else if (url.scheme() == u"http" || url.scheme() == u"https") {
            if (WebOrigin::fromUrl(url))
                result.page = url;
            else
                fault = u"not a URL with a host: %1"_s.arg(page);
        } else {
            const bool isFileUrl = page.startsWith(u"file:", Qt::CaseInsensitive);
            const QFileInfo file(isFileUrl ? QUrl(page).toLocalFile() : page);
            if (file.isFile() && file.isReadable())
                result.localPage = file.canonicalFilePath();
            else
                fault = u"no such page, neither an http or https URL nor a file: %1"_s.arg(page);
        }
    }

    const QCommandLineParser &m_parser;
};

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const Option &option : options) {
        parser.addOption(option.value ? QCommandLineOption(QLatin1String(option.name), QString(),
                                                           QLatin1String(option.value))
                                      : QCommandLineOption(QLatin1String(option.name)));
    }
    if (!parser.parse(arguments))
        return UsageError{parser.errorText().remove(u'\n')};
    if (parser.isSet(u"help"_s))
        return PrintAndQuit{helpText()};
    if (parser.isSet(u"version"_s))
        return PrintAndQuit{u"zelkam-mobile " ZELKAM_VERSION ""_s};
    Reader reader(parser);
    reader.read();
    if (reader.fault)
        return UsageError{*reader.fault};
    return reader.result;
}

} // namespace zelkam
