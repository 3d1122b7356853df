#pragma once

#include "host/command_status.h"
#include "host/plugin_reference.h"
#include "platform/foundation/url.h"

#include <QList>
#include <QMap>
#include <QMetaObject>
#include <QString>
#include <QVariantMap>
#include <memory>
#include <mutex>
#include <optional>

namespace zelkam {

class HTTPCookie;
class URLRequest;
class URLResponse;

/// One download: from a page's options to a request, a transfer, a file in the Download folder,
/// and what is to be done with the file.
///
/// Make one with std::make_shared for each download, set pluginObj and call startDownload() once.
/// The engine then keeps itself alive until it has replied for the last time.
///
/// A download whose plug-in is invalidated ends: its transfer is cancelled, and nothing is replied
/// or shown any more.
///
/// Replies go to the call that the plug-in holds at the moment of the reply, and are dropped when
/// there is no plug-in or no call. They come from the main thread, except for the errors between
/// the end of the transfer and the moving of the file: these come from the background queue of
/// the transfer's session. Every reply passes keepCallback false.
///
/// | what happened                                     | reply                                    |
/// |---------------------------------------------------|------------------------------------------|
/// | all went well                                     | success without data, after the preview  |
/// |                                                   | has come up, or at once with "open" off  |
/// | the JSON body cannot be written                   | INVALID_PARAM, twice                     |
/// | the transfer failed                               | NETWORK_RESPONSE_ERROR, a sentence       |
/// | a status other than 200, by GET                   | "2043"                                   |
/// | a status other than 200, by POST                  | "2044", the message ends in the status   |
/// | no folder, an old file that stays, no move        | "2043"                                   |
/// | "saveAlbum", and the file is no image             | INVALID_PARAM, twice; the file is saved  |
/// | nothing to present the preview from, or no URL    | OBJECT_REFERENCE_FAILED                  |
class ZelkamMobileFileDownloadUtil
    : public std::enable_shared_from_this<ZelkamMobileFileDownloadUtil>
{
public:
    ZelkamMobileFileDownloadUtil();
    ~ZelkamMobileFileDownloadUtil();
    ZelkamMobileFileDownloadUtil(const ZelkamMobileFileDownloadUtil &) = delete;
    ZelkamMobileFileDownloadUtil &operator=(const ZelkamMobileFileDownloadUtil &) = delete;

    /// The plug-in on whose behalf the file is fetched.
    PluginReference pluginObj;

    /// Starts the download and returns at once. Main thread.
    ///
    /// Options, each replaced by its default when it is missing or of another type: "progress",
    /// "open" (both true), "notify", "share", "saveAlbum" (false), "dataType"
    /// ("application/json"), "fileName" (none), "requestType" ("get"), "httpHeaders" (text to
    /// text, none) and "data" (none). "requestType" selects POST when it is "post" in any case,
    /// and GET otherwise; "data" is the body of a POST, as a form when "dataType" is
    /// "application/x-www-form-urlencoded" and as JSON for every other type.
    void startDownload(const URL &url, const QVariantMap &options);

    // The options, as the last startDownload() has read them; before it, the defaults.
    bool fileOpen() const { return m_fileOpen; }
    bool showProgress() const
    {
        return m_showProgress;
    } ///< kept; the network activity always shows
    bool showNotify() const { return m_showNotify; }
    bool shareFile() const { return m_shareFile; }
    bool saveAlbum() const { return m_saveAlbum; }
    const std::optional<QString> &fileName() const { return m_fileName; }
    const QString &dataType() const { return m_dataType; }
    const QString &requestType() const { return m_requestType; }
    const QMap<QString, QString> &httpHeaders() const { return m_httpHeaders; }
    const QVariantMap &requestData() const { return m_requestData; }

private:
    // zelkam_mobile_file_download_util.cpp: options and replies
    void readOptions(const QVariantMap &options);
    bool isPost() const;
    bool isAbandoned() const; ///< main thread
    void replySuccess() const;
    void replyError(CommandStatus status) const;
    void replyError(CommandStatus status, const QString &error) const;
    void replyError(const QString &status, const QString &error) const;
    void replyGetFailure() const;

    // download_request.cpp
    std::optional<URLRequest> makeRequest(const URL &url) const;
    std::optional<QByteArray> makeBody() const;
    URLRequest setRequestCookie(const URLRequest &request, const QList<HTTPCookie> &cookies) const;

    // download_cookies.cpp
    QString getRootURL(const std::optional<URL> &url) const;
    void saveCookieStore(const QList<HTTPCookie> &cookies, const QString &host) const;
    void saveResponseCookies(const URL &temporaryFile, const URLResponse &response) const;

    // download_transfer.cpp
    void sendRequest(const URLRequest &request);
    bool checkResponse(const URLResponse &response) const;

    // download_saving.cpp: on the session's queue
    void saveFile(const URL &url, const std::shared_ptr<const URLResponse> &response);
    QString targetPath(const QString &folder, const URLResponse &response) const;
    bool saveToAlbum(const QString &path) const;

    // post_download_actions.cpp: on the main queue
    void showActivityIndicator() const;
    void hideActivityIndicator() const;
    void showNotify(const QString &name);
    void showPreViewFile(const QString &name, const QString &path);
    void presentToast(const QString &name) const;
    void presentPreview(const QString &name, const QString &path);

    /// Held while the download is started. The completion takes it first, so that a transfer that
    /// ends at once cannot turn the activity indicator off before it was turned on.
    std::mutex m_starting;
    QMetaObject::Connection m_ending; ///< cancels the transfer with its document
    bool m_fileOpen = true;
    bool m_showProgress = true;
    bool m_showNotify = false;
    bool m_shareFile = false;
    bool m_saveAlbum = false;
    std::optional<QString> m_fileName;
    QString m_dataType = QStringLiteral("application/json");
    QString m_requestType = QStringLiteral("get");
    QMap<QString, QString> m_httpHeaders;
    QVariantMap m_requestData;
};

} // namespace zelkam
