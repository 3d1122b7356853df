#pragma once

#include "platform/photos/ph_asset.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <map>
#include <optional>

namespace zelkam {

/// How an asset's data is to be read.
class PHImageRequestOptions
{
public:
    /// Whether what lies elsewhere may be fetched. All assets of a folder are at hand, also those
    /// of a mounted network folder, which the system reads like any other: it decides nothing.
    bool isNetworkAccessAllowed = false;
};

/// How the data of an asset is to be turned to be seen upright (the values are Exif's).
enum class CGImagePropertyOrientation : quint32 { up = 1 };

using PHImageRequestID = qint32;

/// Reads assets on worker threads. Results are delivered on the main thread, from the event loop,
/// in the order of the requests: the handler of the last request is the last to run. A request
/// is never lost; an asset that cannot be read is delivered without data.
///
/// Main thread only.
class PHImageManager : public QObject
{
    Q_OBJECT

public:
    /// Without data when the file is gone, cannot be read or is no picture's. The orientation is
    /// always up, as it lies in the data itself, where a decoder applies it; the information is
    /// empty.
    using ResultHandler = std::function<void(
        const std::optional<QByteArray> &imageData, const std::optional<QString> &dataUTI,
        CGImagePropertyOrientation orientation, const QVariantMap &info)>;

    /// Runs on a worker thread as soon as the data is there, and returns what is to run on the
    /// main thread when it is the request's turn. For work that would hold up the screens.
    using Preparation = std::function<std::function<void()>(
        const std::optional<QByteArray> &imageData, const std::optional<QString> &dataUTI)>;

    static PHImageManager &defaultManager();

    explicit PHImageManager(QObject *parent = nullptr);
    ~PHImageManager() override;

    PHImageRequestID requestImageDataAndOrientation(const PHAsset &forAsset,
                                                    const PHImageRequestOptions &options,
                                                    ResultHandler resultHandler);

    /// The same, with the work of the handler split in two: most of it beside the main thread.
    PHImageRequestID requestPreparedImageData(const PHAsset &forAsset,
                                              const PHImageRequestOptions &options,
                                              Preparation preparation);

private:
    void deliver(PHImageRequestID request, std::function<void()> delivery);

    PHImageRequestID m_lastRequest = 0;
    PHImageRequestID m_nextDelivery = 1;
    std::map<PHImageRequestID, std::function<void()>> m_early; ///< done before their turn
};

} // namespace zelkam
