#include "app/host_scheme_handler.h"

#include "app/container_address.h"
#include "app/reply_body.h"
#include "app/script_bridge.h"

#include <QFile>
#include <QMimeDatabase>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

namespace zelkam {

namespace {

const QLatin1String repliesPath("/replies/");

/// The web engine reads the device on a thread of its own until the job is gone.
void reply(QWebEngineUrlRequestJob *job, const QByteArray &type, std::unique_ptr<QIODevice> device)
{
    QObject::connect(job, &QObject::destroyed, device.get(), &QObject::deleteLater);
    job->reply(type, device.release());
}

void replyPieces(QWebEngineUrlRequestJob *job, QList<QByteArray> pieces)
{
    auto device = std::make_unique<PiecesDevice>(std::move(pieces));
    device->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    reply(job, QByteArrayLiteral("text/plain"), std::move(device));
}

void replyPart(QWebEngineUrlRequestJob *job, const TextPart &part)
{
    auto device = std::make_unique<PiecesDevice>(QList<QByteArray>{part.text});
    device->setStretch(part.start, part.size);
    device->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    reply(job, QByteArrayLiteral("text/plain"), std::move(device));
}

void replyFile(QWebEngineUrlRequestJob *job, const QString &name, std::unique_ptr<QFile> file)
{
    const QMimeType kind = QMimeDatabase().mimeTypeForFileNameAndData(name, file.get());
    file->seek(0);
    QByteArray type = kind.name().toLatin1();
    if (kind.inherits(QStringLiteral("text/plain")) && type.startsWith("text/"))
        type += ";charset=utf-8";
    reply(job, type, std::move(file));
}

} // namespace

void HostSchemeHandler::registerScheme()
{
    QWebEngineUrlScheme scheme(hostScheme);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    // Secure, so that an https page may read it; without regard to a page's content security
    // policy, which the bridge must work under.
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled |
                    QWebEngineUrlScheme::ContentSecurityPolicyIgnored);
    QWebEngineUrlScheme::registerScheme(scheme);
}

HostSchemeHandler::HostSchemeHandler(ScriptBridge &bridge, std::optional<LocalPage> localPage)
    : m_bridge(bridge), m_localPage(std::move(localPage))
{
}

void HostSchemeHandler::requestStarted(QWebEngineUrlRequestJob *job)
{
    const QString host = job->requestUrl().host();
    const auto initiator = WebOrigin::fromUrl(job->initiator());
    if (job->requestMethod() != "GET")
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
    else if (host == u"bridge")
        answerBridge(job, initiator);
    else if (host == u"container")
        answerContainer(job, initiator);
    else if (host == u"app")
        answerApp(job, initiator);
    else
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
}

void HostSchemeHandler::answerBridge(QWebEngineUrlRequestJob *job,
                                     const std::optional<WebOrigin> &initiator)
{
    const QString path = job->requestUrl().path();
    if (path == u"/session") {
        if (const auto token = m_bridge.openSession(initiator)) {
            replyPieces(job, {*token});
            return;
        }
    } else if (path.startsWith(repliesPath)) {
        const QStringList parts = path.mid(repliesPath.size()).split(u'/');
        const QByteArray token = parts.first().toLatin1();
        if (parts.size() == 3) {
            const auto part =
                m_bridge.takePart(token, parts.at(1).toInt(), parts.at(2).toInt(), initiator);
            if (part) {
                replyPart(job, *part);
                return;
            }
        } else if (auto body = m_bridge.takeReplies(token, initiator)) {
            replyPieces(job, std::move(*body));
            return;
        }
    }
    job->fail(QWebEngineUrlRequestJob::RequestDenied);
}

void HostSchemeHandler::answerContainer(QWebEngineUrlRequestJob *job,
                                        const std::optional<WebOrigin> &initiator)
{
    if (!m_bridge.isAllowed(initiator)) {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    const auto path = containerPath(job->requestUrl());
    auto file = path ? openContainerFile(*path) : nullptr;
    if (file)
        replyFile(job, *path, std::move(file));
    else
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
}

void HostSchemeHandler::answerApp(QWebEngineUrlRequestJob *job,
                                  const std::optional<WebOrigin> &initiator)
{
    // No initiator is the host itself, which loads or reloads the page.
    const bool isOwn =
        job->initiator().isEmpty() ||
        (initiator && m_localPage && initiator == WebOrigin::fromUrl(m_localPage->address()));
    if (!isOwn) {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    auto file = m_localPage ? m_localPage->open(job->requestUrl()) : nullptr;
    if (file)
        replyFile(job, job->requestUrl().path(), std::move(file));
    else
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
}

} // namespace zelkam
