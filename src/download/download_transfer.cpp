// The transfer and the check of what came back.

#include "download/zelkam_mobile_file_download_util.h"

#include "host/zelkam_mobile_data.h"
#include "host/zelkam_mobile_plugin.h"
#include "host/zlog.h"
#include "platform/foundation/console.h"
#include "platform/network/url_session.h"

namespace zelkam {

namespace {

/// The server that the page came from, as far as its web view is known.
std::optional<URL> serverOfPage(const ZelkamMobilePlugin *plugin)
{
    const HostWebView *view = plugin ? plugin->webView() : nullptr;
    const auto options =
        view ? ZelkamMobileData::shared().getOptions(view->webViewId()) : std::nullopt;
    return options ? URL::fromString(options->realServerUrl) : std::nullopt;
}

} // namespace

void ZelkamMobileFileDownloadUtil::sendRequest(const URLRequest &request)
{
    print(QStringLiteral("sendRequest(_:)"));
    auto configuration = URLSessionConfiguration::defaultConfiguration();
    configuration.waitsForConnectivity = true;
    configuration.timeoutIntervalForResource = std::chrono::seconds(60);
    configuration.timeoutIntervalForRequest = std::chrono::seconds(60);
    configuration.ownServer = serverOfPage(pluginObj.get());
    URLSession session(configuration);
    const auto task = session.downloadTask(
        request, [self = shared_from_this()](std::optional<URL> location,
                                             const std::shared_ptr<const URLResponse> &response,
                                             std::optional<URLError> error) {
            {
                const std::lock_guard started(self->m_starting);
            }
            QObject::disconnect(self->m_ending);
            if (error) {
                ZLog::debug(QStringLiteral("error:Optional(%1)").arg(error->debugDescription()));
                self->replyError(CommandStatus::NETWORK_RESPONSE_ERROR,
                                 error->localizedDescription());
            } else if (location && response) {
                self->saveFile(*location, response);
            } else {
                self->replyError(CommandStatus::UNKNOWN, QStringLiteral("Check netowork response"));
            }
        });
    // Whoever called is gone then: nobody waits for the file, nor for the indicator to go off.
    if (auto *plugin = pluginObj.get()) {
        m_ending = QObject::connect(plugin, &ZelkamMobilePlugin::invalidated, plugin,
                                    [task, self = weak_from_this()] {
                                        task->cancel();
                                        if (const auto download = self.lock())
                                            download->hideActivityIndicator();
                                    });
    }
    task->resume();
}

bool ZelkamMobileFileDownloadUtil::checkResponse(const URLResponse &response) const
{
    const auto *http = dynamic_cast<const HTTPURLResponse *>(&response);
    const int statusCode = http ? http->statusCode() : 0;
    if (statusCode == 200)
        return true;
    hideActivityIndicator();
    if (isPost()) {
        replyError(QStringLiteral("2044"),
                   QStringLiteral("Failed to download file using POST method.-httpStatus:%1")
                       .arg(statusCode));
    } else {
        replyGetFailure();
    }
    return false;
}

} // namespace zelkam
