#include "app/screenshots.h"

#include "platform/foundation/console.h"
#include "platform/ui/ui_window.h"

#include <QRegularExpression>
#include <chrono>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

/// A web view without a GPU takes some frames to show what a script has changed.
constexpr auto settleTime = 350ms;

} // namespace

Screenshots::Screenshots(const QString &directory, QWidget *device, UIWindow *window)
    : m_directory(directory), m_device(device), m_window(window)
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(settleTime);
    connect(&m_settle, &QTimer::timeout, this, &Screenshots::takeNext);
}

void Screenshots::request(const QString &name)
{
    static const QRegularExpression odd(QStringLiteral("[^\\w.-]+"),
                                        QRegularExpression::UseUnicodePropertiesOption);
    constexpr qsizetype longestName = 60;
    m_names.append(QString(name).replace(odd, QStringLiteral("-")).left(longestName));
    if (!m_settle.isActive())
        m_settle.start();
}

void Screenshots::takeNext()
{
    if (m_window && m_window->isInTransition()) {
        m_settle.start();
        return;
    }
    if (m_device) {
        const QPixmap picture = m_device->grab();
        // Several requests of one moment share the picture, but each gets its file.
        for (const QString &name : std::as_const(m_names)) {
            ++m_number;
            const QString path = QStringLiteral("%1/%2-%3.png")
                                     .arg(m_directory)
                                     .arg(m_number, 3, 10, QLatin1Char('0'))
                                     .arg(name);
            if (picture.save(path))
                print(u"screenshot: "_s + path);
            else
                qWarning("The screenshot %s cannot be written.", qUtf8Printable(path));
        }
    }
    m_names.clear();
    emit idle();
}

} // namespace zelkam
