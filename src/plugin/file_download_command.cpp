#include "plugin/zelkam_mobile_contents_plugin.h"

#include "download/zelkam_mobile_file_download_util.h"
#include "host/argument_values.h"
#include "host/zelkam_mobile_data.h"
#include "host/zlog.h"
#include "platform/foundation/console.h"
#include "platform/foundation/percent_encoding.h"

namespace zelkam {

void ZelkamMobileContentsPlugin::fileDownload(CallBackManagerPtr callBack)
{
    ZLog::debug(QStringLiteral("fileDownload(_:)"));
    setCurrentCallBack(callBack);
    const auto arguments = callBack->argumentDic();
    const auto given = arguments ? stringArgument(*arguments, QStringLiteral("url")) : std::nullopt;
    if (!given) {
        callBack->error(CommandStatus::INVALID_PARAM, false);
        return;
    }
    // Decoded first and then encoded, an address comes out encoded exactly once, however it came.
    const QString decoded = removingPercentEncoding(getNomalizedURL(*given)).value_or(QString());
    const auto encoded = addingPercentEncodingForUrlQuery(decoded);
    const auto url = encoded ? URL::fromString(*encoded) : std::nullopt;
    if (!url) {
        callBack->error(CommandStatus::INVALID_PARAM, false);
        return;
    }
    const auto download = std::make_shared<ZelkamMobileFileDownloadUtil>();
    download->pluginObj = this;
    download->startDownload(*url, *arguments);
}

QString ZelkamMobileContentsPlugin::getNomalizedURL(const QString &url) const
{
    print(QStringLiteral("getNomalizedURL(_:)"));
    // Only the first letters count, as they are written: capitals make an address relative, and a
    // path that happens to begin with these letters is absolute. The second test says what is
    // meant.
    if (url.startsWith(u"http") || url.startsWith(u"https"))
        return url;
    const HostWebView *view = webView();
    const auto options =
        ZelkamMobileData::shared().getOptions(view ? view->webViewId() : QString());
    if (!options)
        return {};
    // The two are simply joined: a base that ends in "/" gives a double slash.
    if (url.startsWith(u'/'))
        return options->realServerUrl + url;
    return options->realServerUrl + u'/' + url;
}

} // namespace zelkam
