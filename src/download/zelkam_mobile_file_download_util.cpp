#include "download/zelkam_mobile_file_download_util.h"

#include "host/argument_values.h"
#include "platform/foundation/console.h"
#include "platform/network/http_cookie_storage.h"
#include "platform/network/url_request.h"

namespace zelkam {

ZelkamMobileFileDownloadUtil::ZelkamMobileFileDownloadUtil() = default;
ZelkamMobileFileDownloadUtil::~ZelkamMobileFileDownloadUtil() = default;

void ZelkamMobileFileDownloadUtil::startDownload(const URL &url, const QVariantMap &options)
{
    print(QStringLiteral("startDownload(url:options:)"));
    readOptions(options);
    const auto request = makeRequest(url);
    if (!request) {
        replyError(CommandStatus::INVALID_PARAM);
        return;
    }
    const std::lock_guard starting(m_starting);
    // Every cookie goes along, not only those that match the server: the store is the
    // application's session with its web content, whichever server the file lies on.
    if (const auto cookies = HTTPCookieStorage::shared().cookies())
        sendRequest(setRequestCookie(*request, *cookies));
    else
        sendRequest(*request);
    showActivityIndicator();
}

void ZelkamMobileFileDownloadUtil::readOptions(const QVariantMap &options)
{
    m_showProgress = boolArgument(options, QStringLiteral("progress")).value_or(true);
    m_fileOpen = boolArgument(options, QStringLiteral("open")).value_or(true);
    m_showNotify = boolArgument(options, QStringLiteral("notify")).value_or(false);
    m_shareFile = boolArgument(options, QStringLiteral("share")).value_or(false);
    m_saveAlbum = boolArgument(options, QStringLiteral("saveAlbum")).value_or(false);
    m_dataType = stringArgument(options, QStringLiteral("dataType"))
                     .value_or(QStringLiteral("application/json"));
    m_fileName = stringArgument(options, QStringLiteral("fileName"));
    m_requestType =
        stringArgument(options, QStringLiteral("requestType")).value_or(QStringLiteral("get"));
    m_httpHeaders = textDictionaryArgument(options, QStringLiteral("httpHeaders"))
                        .value_or(QMap<QString, QString>());
    m_requestData = dictionaryArgument(options, QStringLiteral("data")).value_or(QVariantMap());
}

bool ZelkamMobileFileDownloadUtil::isPost() const
{
    return m_requestType.toLower() == u"post";
}

bool ZelkamMobileFileDownloadUtil::isAbandoned() const
{
    const auto *plugin = pluginObj.get();
    return plugin && plugin->isInvalidated();
}

void ZelkamMobileFileDownloadUtil::replySuccess() const
{
    const auto call = pluginObj.currentCallBack();
    if (call)
        call->success(false);
}

void ZelkamMobileFileDownloadUtil::replyError(CommandStatus status) const
{
    const auto call = pluginObj.currentCallBack();
    if (call)
        call->error(status, false);
}

void ZelkamMobileFileDownloadUtil::replyError(CommandStatus status, const QString &error) const
{
    const auto call = pluginObj.currentCallBack();
    if (call)
        call->error(status, error, false);
}

void ZelkamMobileFileDownloadUtil::replyError(const QString &status, const QString &error) const
{
    const auto call = pluginObj.currentCallBack();
    if (call)
        call->error(status, error, false);
}

void ZelkamMobileFileDownloadUtil::replyGetFailure() const
{
    replyError(QStringLiteral("2043"), QStringLiteral("Failed to download file using GET method"));
}

} // namespace zelkam
